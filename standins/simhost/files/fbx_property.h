#pragma once
// Properties of an FBX object: named, typed values in its "Properties70" record.
#include "simhost/files/fbx_record.h"

#include <array>
#include <variant>

namespace simhost {

/// How a property is typed in the file. The names are those of the format; the "Any" ones are
/// the animatable kind, as the host writes its own parameters.
enum class FbxType {
    Compound,
    Bool,
    Int,
    Enum,
    Double,
    Vector,
    Color,
    Text,
    Url,
    Time,
    Number, // animatable double
    FieldOfView,
    AnyBool,
    AnyInteger,
    AnyFloat,
    AnyVector,
    AnyColor,
    AnyColorAndAlpha,
    AnyText,
    AnyReference,
    UserInt,
    UserText,
    LclTranslation,
    LclRotation,
    LclScaling,
    Visibility,
    VisibilityInheritance,
    ObjectLink,
};

using FbxVec3 = std::array<double, 3>;
using FbxVec4 = std::array<double, 4>;
using FbxValue = std::variant<std::monostate, std::int32_t, std::int64_t, float, double, FbxVec3,
                              FbxVec4, std::string>;

struct FbxProperty {
    std::string name; // UTF-8
    FbxType type = FbxType::Compound;
    FbxValue value;
};
using FbxProperties = std::vector<FbxProperty>;

void WriteFbxProperty(FbxRecordWriter& writer, const FbxProperty& property);
/// The whole "Properties70" record; nothing for an empty list.
void WriteFbxProperties(FbxRecordWriter& writer, const FbxProperties& properties);

} // namespace simhost
