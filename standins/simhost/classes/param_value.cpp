#include "simhost/classes/param_value.h"

#include <iterator>

namespace simhost {

namespace {

struct TypeRow {
    std::string_view name;
    ParamType2 type;
    Storage storage;
};

constexpr TypeRow types[] = {
    {"float", TYPE_FLOAT, Storage::Number},
    {"angle", TYPE_ANGLE, Storage::Number},
    {"pcnt_frac", TYPE_PCNT_FRAC, Storage::Number},
    {"world", TYPE_WORLD, Storage::Number},
    {"color_channel", TYPE_COLOR_CHANNEL, Storage::Number},
    {"int", TYPE_INT, Storage::Integer},
    {"bool", TYPE_BOOL, Storage::Integer},
    {"timevalue", TYPE_TIMEVALUE, Storage::Integer},
    {"radiobtn_index", TYPE_RADIOBTN_INDEX, Storage::Integer},
    {"index", TYPE_INDEX, Storage::Integer},
    {"rgba", TYPE_RGBA, Storage::Three},
    {"point3", TYPE_POINT3, Storage::Three},
    {"hsv", TYPE_HSV, Storage::Three},
    {"point2", TYPE_POINT2, Storage::Three},
    {"frgba", TYPE_FRGBA, Storage::Four},
    {"point4", TYPE_POINT4, Storage::Four},
    {"string", TYPE_STRING, Storage::String},
    {"filename", TYPE_FILENAME, Storage::String},
    {"mtl", TYPE_MTL, Storage::Reference},
    {"texmap", TYPE_TEXMAP, Storage::Reference},
    {"inode", TYPE_INODE, Storage::Reference},
    {"reftarg", TYPE_REFTARG, Storage::Reference},
    {"matrix3", TYPE_MATRIX3, Storage::Matrix},
};

const TypeRow* RowOf(ParamType2 element) {
    for (const TypeRow& row : types)
        if (row.type == element)
            return &row;
    return nullptr;
}

} // namespace

Storage StorageOf(ParamType2 type) {
    const TypeRow* row = RowOf(ElementType(type));
    return row ? row->storage : Storage::Unsupported;
}

Scalar ZeroOf(ParamType2 type) {
    switch (StorageOf(type)) {
    case Storage::Integer:
        return 0;
    case Storage::Three:
        return Point3();
    case Storage::Four:
        return Point4(0, 0, 0, 1);
    case Storage::String:
        return Text();
    case Storage::Reference:
        return Ref<ReferenceTarget>();
    case Storage::Matrix:
        return Matrix3();
    case Storage::Number:
    case Storage::Unsupported:
        break;
    }
    return 0.0f;
}

ParamValue DefaultOf(ParamType2 type) {
    if (IsTable(type))
        return Table();
    return ZeroOf(type);
}

std::optional<ParamType2> TypeOfName(std::string_view name) {
    constexpr std::string_view suffix = "_tab";
    int table = 0;
    if (name.ends_with(suffix)) {
        name.remove_suffix(suffix.size());
        table = TYPE_TAB;
    }
    for (const TypeRow& row : types)
        if (row.name == name)
            return static_cast<ParamType2>(row.type | table);
    return std::nullopt;
}

std::string NameOfType(ParamType2 type) {
    const TypeRow* row = RowOf(ElementType(type));
    std::string name(row ? row->name : "unsupported");
    return IsTable(type) ? name + "_tab" : name;
}

} // namespace simhost
