#include "simhost/files/fbx_property.h"

namespace simhost {

namespace {

struct TypeTexts {
    const char* type;
    const char* label;
    const char* flags;
};

TypeTexts TextsOf(FbxType type) {
    // clang-format off
    switch (type) {
    case FbxType::Compound:              return {"Compound", "", ""};
    case FbxType::Bool:                  return {"bool", "", ""};
    case FbxType::Int:                   return {"int", "Integer", ""};
    case FbxType::Enum:                  return {"enum", "", ""};
    case FbxType::Double:                return {"double", "Number", ""};
    case FbxType::Vector:                return {"Vector3D", "Vector", ""};
    case FbxType::Color:                 return {"ColorRGB", "Color", ""};
    case FbxType::Text:                  return {"KString", "", ""};
    case FbxType::Url:                   return {"KString", "XRefUrl", ""};
    case FbxType::Time:                  return {"KTime", "Time", ""};
    case FbxType::Number:                return {"Number", "", "A"};
    case FbxType::FieldOfView:           return {"FieldOfView", "", "A"};
    case FbxType::AnyBool:               return {"Bool", "", "A"};
    case FbxType::AnyInteger:            return {"Integer", "", "A"};
    case FbxType::AnyFloat:              return {"Float", "", "A"};
    case FbxType::AnyVector:             return {"Vector", "", "A"};
    case FbxType::AnyColor:              return {"Color", "", "A"};
    case FbxType::AnyColorAndAlpha:      return {"ColorAndAlpha", "", "A"};
    case FbxType::AnyText:               return {"KString", "", "A"};
    case FbxType::AnyReference:          return {"Reference", "", "A"};
    case FbxType::UserInt:               return {"int", "Integer", "UH"};
    case FbxType::UserText:              return {"KString", "", "U"};
    case FbxType::LclTranslation:        return {"Lcl Translation", "", "A"};
    case FbxType::LclRotation:           return {"Lcl Rotation", "", "A"};
    case FbxType::LclScaling:            return {"Lcl Scaling", "", "A"};
    case FbxType::Visibility:            return {"Visibility", "", "A"};
    case FbxType::VisibilityInheritance: return {"Visibility Inheritance", "", ""};
    case FbxType::ObjectLink:            return {"object", "", ""};
    }
    // clang-format on
    return {"", "", ""};
}

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
    const TypeTexts texts = TextsOf(property.type);
    writer.BeginLeaf("P", property.name, texts.type, texts.label, texts.flags);
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
