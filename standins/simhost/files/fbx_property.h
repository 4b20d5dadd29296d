#pragma once
// Properties of an FBX object: named, typed values in its "Properties70" record.
#include "simhost/files/fbx_record.h"
#include "simhost/files/fbx_vector.h"

#include <variant>

namespace simhost {

/// How a property is typed in the file.
struct FbxType {
    const char* name = "";
    const char* label = "";
    const char* flags = "";
};

/// The types in use. The names are those of the format; the "any" ones are the animatable kind,
/// as the host writes its own parameters.
struct FbxTypes {
    static constexpr FbxType compound{"Compound"};
    static constexpr FbxType boolean{"bool"};
    static constexpr FbxType integer{"int", "Integer"};
    static constexpr FbxType enumeration{"enum"};
    static constexpr FbxType real{"double", "Number"};
    static constexpr FbxType vector{"Vector3D", "Vector"};
    static constexpr FbxType color{"ColorRGB", "Color"};
    static constexpr FbxType text{"KString"};
    static constexpr FbxType url{"KString", "XRefUrl"};
    static constexpr FbxType time{"KTime", "Time"};
    static constexpr FbxType number{"Number", "", "A"};
    static constexpr FbxType fieldOfView{"FieldOfView", "", "A"};
    static constexpr FbxType anyBool{"Bool", "", "A"};
    static constexpr FbxType anyInteger{"Integer", "", "A"};
    static constexpr FbxType anyFloat{"Float", "", "A"};
    static constexpr FbxType anyVector{"Vector", "", "A"};
    static constexpr FbxType anyColor{"Color", "", "A"};
    static constexpr FbxType anyColorAndAlpha{"ColorAndAlpha", "", "A"};
    static constexpr FbxType anyText{"KString", "", "A"};
    static constexpr FbxType anyReference{"Reference", "", "A"};
    static constexpr FbxType userInt{"int", "Integer", "UH"};
    static constexpr FbxType userText{"KString", "", "U"};
    static constexpr FbxType lclTranslation{"Lcl Translation", "", "A"};
    static constexpr FbxType lclRotation{"Lcl Rotation", "", "A"};
    static constexpr FbxType lclScaling{"Lcl Scaling", "", "A"};
    static constexpr FbxType visibility{"Visibility", "", "A"};
    static constexpr FbxType visibilityInheritance{"Visibility Inheritance"};
    static constexpr FbxType objectLink{"object"};
};

using FbxVec4 = std::array<double, 4>;
using FbxValue = std::variant<std::monostate, std::int32_t, std::int64_t, float, double, FbxVec3,
                              FbxVec4, std::string>;

struct FbxProperty {
    std::string name; // UTF-8
    FbxType type;
    FbxValue value;
};
using FbxProperties = std::vector<FbxProperty>;

void WriteFbxProperty(FbxRecordWriter& writer, const FbxProperty& property);
/// The whole "Properties70" record; nothing for an empty list.
void WriteFbxProperties(FbxRecordWriter& writer, const FbxProperties& properties);

} // namespace simhost
