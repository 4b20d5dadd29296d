#pragma once
// What stands around the objects of an FBX file: the file's mark, header and settings before
// them, and the footer behind. Nothing in it depends on the time of writing, so that the same
// scene always makes the same bytes.
#include "simhost/files/fbx_property.h"

namespace simhost {

struct FbxSettings {
    /// Length of one unit of the file in centimetres.
    double unitCentimetres = 1;
    FbxVec3 ambient{0, 0, 0};
    std::string sceneFile; // full path of the scene, UTF-8; may be empty
};

/// Kinds of objects in the file.
enum class FbxObjectKind { NodeAttribute, Geometry, Model, Material, Texture, Video };
inline constexpr std::size_t fbxObjectKinds = 6;

/// How many objects of each kind there are: announced before the objects, known after them.
struct FbxObjectCounts {
    FbxInt32Slot total;
    std::array<FbxInt32Slot, fbxObjectKinds> slots;
    std::array<std::int32_t, fbxObjectKinds> counts{};
    void Add(FbxObjectKind kind) { ++counts[static_cast<std::size_t>(kind)]; }
};

/// The mark of a binary file with its version.
void WriteFbxMark(std::string& out);
/// Everything from the header to the definitions. Up is +z, as in the host.
[[nodiscard]] FbxObjectCounts WriteFbxFront(FbxRecordWriter& writer, const FbxSettings& settings);
void FillFbxCounts(FbxRecordWriter& writer, const FbxObjectCounts& counts);
/// The last records and the footer.
void WriteFbxEnd(std::string& out, FbxRecordWriter& writer);

} // namespace simhost
