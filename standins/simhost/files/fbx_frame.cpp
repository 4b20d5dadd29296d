#include "simhost/files/fbx_frame.h"

#include <string>

namespace simhost {

namespace {

using namespace std::string_view_literals;

constexpr auto mark = "Kaydara FBX Binary  \0\x1a\0"sv;
constexpr auto endMark = "\xf8\x5a\x8c\x6a\xde\xf5\xd9\x7e\xec\xe9\x0c\xe3\x75\x8f\x29\x0b"sv;

// A file's id and the code in its footer are a function of its creation time; readers that
// check them need the three to fit each other. These fit.
constexpr auto creationTime = "1970-01-01 10:00:00:000"sv;
constexpr auto fileId = "\x28\xb3\x2a\xeb\xb6\x24\xcc\xc2\xbf\xc8\xb0\x2a\xa9\x2b\xfc\xf1"sv;
constexpr auto footerCode = "\xfa\xbc\xab\x09\xd0\xc8\xd4\x66\xb1\x76\xfb\x83\x1c\xf7\x26\x7e"sv;

constexpr auto creator = "Brimwave stand-in host";

void AppendVersion(std::string& out) {
    out.append(reinterpret_cast<const char*>(&FbxRecordWriter::version),
               sizeof FbxRecordWriter::version);
}

void WriteTimeStamp(FbxRecordWriter& w) {
    w.Begin("CreationTimeStamp");
    w.Leaf("Version", 1000);
    w.Leaf("Year", 1970);
    w.Leaf("Month", 1);
    w.Leaf("Day", 1);
    w.Leaf("Hour", 10);
    w.Leaf("Minute", 0);
    w.Leaf("Second", 0);
    w.Leaf("Millisecond", 0);
    w.End();
}

void WriteSceneInfo(FbxRecordWriter& w, const FbxSettings& settings) {
    w.Begin("SceneInfo", "GlobalInfo\0\x01SceneInfo"sv, "UserData");
    w.Leaf("Type", "UserData");
    w.Leaf("Version", 100);
    w.Begin("MetaData");
    w.Leaf("Version", 100);
    for (const char* field : {"Title", "Subject", "Author", "Keywords", "Revision", "Comment"})
        w.Leaf(field, "");
    w.End();
    WriteFbxProperties(w, {{"Original", FbxTypes::compound, {}},
                           {"Original|ApplicationVendor", FbxTypes::text, std::string("Brimwave")},
                           {"Original|ApplicationName", FbxTypes::text, std::string(creator)},
                           {"Original|ApplicationNativeFile", FbxTypes::text, settings.sceneFile}});
    w.End();
}

void WriteHeader(FbxRecordWriter& w, const FbxSettings& settings) {
    w.Begin("FBXHeaderExtension");
    w.Leaf("FBXHeaderVersion", 1003);
    w.Leaf("FBXVersion", static_cast<std::int32_t>(FbxRecordWriter::version));
    w.Leaf("EncryptionType", 0);
    WriteTimeStamp(w);
    w.Leaf("Creator", creator);
    WriteSceneInfo(w, settings);
    w.End();
    w.Leaf("FileId", FbxRaw{fileId});
    w.Leaf("CreationTime", creationTime);
    w.Leaf("Creator", creator);
}

void WriteGlobalSettings(FbxRecordWriter& w, const FbxSettings& settings) {
    w.Begin("GlobalSettings");
    w.Leaf("Version", 1000);
    WriteFbxProperties(w, {{"UpAxis", FbxTypes::integer, 2},
                           {"UpAxisSign", FbxTypes::integer, 1},
                           {"FrontAxis", FbxTypes::integer, 1},
                           {"FrontAxisSign", FbxTypes::integer, -1},
                           {"CoordAxis", FbxTypes::integer, 0},
                           {"CoordAxisSign", FbxTypes::integer, 1},
                           {"OriginalUpAxis", FbxTypes::integer, 2},
                           {"OriginalUpAxisSign", FbxTypes::integer, 1},
                           {"UnitScaleFactor", FbxTypes::real, settings.unitCentimetres},
                           {"OriginalUnitScaleFactor", FbxTypes::real, settings.unitCentimetres},
                           {"AmbientColor", FbxTypes::color, settings.ambient},
                           {"DefaultCamera", FbxTypes::text, std::string("Producer Perspective")},
                           {"TimeMode", FbxTypes::enumeration, 6}, // 30 frames a second
                           {"TimeSpanStart", FbxTypes::time, std::int64_t{0}},
                           {"TimeSpanStop", FbxTypes::time, std::int64_t{0}},
                           {"CustomFrameRate", FbxTypes::real, -1.0}});
    w.End();
}

void WriteDocuments(FbxRecordWriter& w) {
    w.Begin("Documents");
    w.Leaf("Count", 1);
    w.Begin("Document", std::int64_t{1}, "", "Scene");
    WriteFbxProperties(w, {{"SourceObject", FbxTypes::objectLink, {}},
                           {"ActiveAnimStackName", FbxTypes::text, std::string()}});
    w.Leaf("RootNode", std::int64_t{0});
    w.End();
    w.End();
    w.Begin("References");
    w.End();
}

/// What holds for a property that an object does not write.
struct Template {
    FbxObjectKind kind;
    const char* objectType;
    const char* name; // null: no template, objects write all they have
    FbxProperties properties;
};

const std::vector<Template>& Templates() {
    static const FbxVec3 zero{0, 0, 0};
    static const FbxVec3 one{1, 1, 1};
    static const std::vector<Template> templates{
        {FbxObjectKind::NodeAttribute, "NodeAttribute", nullptr, {}},
        {FbxObjectKind::Geometry,
         "Geometry",
         "FbxMesh",
         {{"Color", FbxTypes::color, FbxVec3{0.8, 0.8, 0.8}},
          {"Primary Visibility", FbxTypes::boolean, 1},
          {"Casts Shadows", FbxTypes::boolean, 1},
          {"Receive Shadows", FbxTypes::boolean, 1}}},
        {FbxObjectKind::Model,
         "Model",
         "FbxNode",
         {{"RotationOrder", FbxTypes::enumeration, 0},
          {"InheritType", FbxTypes::enumeration, 0},
          {"GeometricTranslation", FbxTypes::vector, zero},
          {"GeometricRotation", FbxTypes::vector, zero},
          {"GeometricScaling", FbxTypes::vector, one},
          {"Show", FbxTypes::boolean, 1},
          {"DefaultAttributeIndex", FbxTypes::integer, -1},
          {"Freeze", FbxTypes::boolean, 0},
          {"Lcl Translation", FbxTypes::lclTranslation, zero},
          {"Lcl Rotation", FbxTypes::lclRotation, zero},
          {"Lcl Scaling", FbxTypes::lclScaling, one},
          {"Visibility", FbxTypes::visibility, 1.0},
          {"Visibility Inheritance", FbxTypes::visibilityInheritance, 1}}},
        {FbxObjectKind::Material,
         "Material",
         "FbxSurfaceMaterial",
         {{"ShadingModel", FbxTypes::text, std::string("Unknown")},
          {"MultiLayer", FbxTypes::boolean, 0}}},
        {FbxObjectKind::Texture,
         "Texture",
         "FbxFileTexture",
         {{"TextureTypeUse", FbxTypes::enumeration, 0},
          {"CurrentMappingType", FbxTypes::enumeration, 0},
          {"WrapModeU", FbxTypes::enumeration, 0},
          {"WrapModeV", FbxTypes::enumeration, 0},
          {"UVSwap", FbxTypes::boolean, 0},
          {"Translation", FbxTypes::anyVector, zero},
          {"Rotation", FbxTypes::anyVector, zero},
          {"Scaling", FbxTypes::anyVector, one},
          {"UVSet", FbxTypes::text, std::string("default")},
          {"UseMaterial", FbxTypes::boolean, 0}}},
        {FbxObjectKind::Video,
         "Video",
         "FbxVideo",
         {{"Path", FbxTypes::url, std::string()}, {"ImageSequence", FbxTypes::boolean, 0}}},
    };
    return templates;
}

FbxObjectCounts WriteDefinitions(FbxRecordWriter& w) {
    FbxObjectCounts counts;
    w.Begin("Definitions");
    w.Leaf("Version", 100);
    counts.total = w.LeafSlot("Count");
    w.Begin("ObjectType", "GlobalSettings");
    w.Leaf("Count", 1);
    w.End();
    for (const Template& entry : Templates()) {
        w.Begin("ObjectType", entry.objectType);
        counts.slots[static_cast<std::size_t>(entry.kind)] = w.LeafSlot("Count");
        if (entry.name) {
            w.Begin("PropertyTemplate", entry.name);
            WriteFbxProperties(w, entry.properties);
            w.End();
        }
        w.End();
    }
    w.End();
    return counts;
}

} // namespace

void WriteFbxMark(std::string& out) {
    out += mark;
    AppendVersion(out);
}

FbxObjectCounts WriteFbxFront(FbxRecordWriter& writer, const FbxSettings& settings) {
    WriteHeader(writer, settings);
    WriteGlobalSettings(writer, settings);
    WriteDocuments(writer);
    return WriteDefinitions(writer);
}

void FillFbxCounts(FbxRecordWriter& writer, const FbxObjectCounts& counts) {
    std::int32_t total = 1; // the global settings
    for (std::size_t i = 0; i < fbxObjectKinds; ++i) {
        writer.Fill(counts.slots[i], counts.counts[i]);
        total += counts.counts[i];
    }
    writer.Fill(counts.total, total);
}

void WriteFbxEnd(std::string& out, FbxRecordWriter& writer) {
    writer.Begin("Takes");
    writer.Leaf("Current", "");
    writer.End();
    writer.Null();

    out += footerCode;
    out.append(16 - out.size() % 16, '\0'); // never none
    out.append(4, '\0');
    AppendVersion(out);
    out.append(120, '\0');
    out += endMark;
}

} // namespace simhost
