#include "simhost/files/fbx_property.h"

namespace simhost {

namespace {

struct ValueWriter {
    FbxRecordWriter& writer;
    void operator()(std::monostate /*none*/) const {}
    template <std::size_t N>
    void operator()(const std::array<double, N>& numbers) const {
        for (const double number : numbers)
            writer.Value(number);
    }
    template <class T>
    void operator()(const T& value) const {
        writer.Value(value);
    }
};

} // namespace

void WriteFbxProperty(FbxRecordWriter& writer, const FbxProperty& property) {
    const FbxType& type = property.type;
    writer.BeginLeaf("P", property.name, type.name, type.label, type.flags);
    std::visit(ValueWriter{writer}, property.value);
    writer.EndLeaf();
}

void WriteFbxProperties(FbxRecordWriter& writer, const FbxProperties& properties) {
    if (properties.empty())
        return;
    writer.Begin("Properties70");
    for (const FbxProperty& property : properties)
        WriteFbxProperty(writer, property);
    writer.End();
}

} // namespace simhost
