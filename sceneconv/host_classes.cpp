#include "sceneconv/host_classes.h"

#include <algorithm>
#include <iterator>

namespace sceneconv {

namespace {

struct Row {
    std::uint32_t partA;
    std::uint32_t partB;
    std::uint32_t super;
    const char* name;
};

constexpr std::uint32_t kCamera = 0x20;
constexpr std::uint32_t kLight = 0x30;
constexpr std::uint32_t kMaterial = 0xc00;

// clang-format off
constexpr Row kClasses[] = {
    // materials
    {0x00000002, 0x00000000, kMaterial, "Standard (Legacy)"},
    {0x00000100, 0x00000000, kMaterial, "Top/Bottom"},
    {0x00000200, 0x00000000, kMaterial, "Multi/Sub-Object"},
    {0x00000210, 0x00000000, kMaterial, "Double Sided"},
    {0x00000250, 0x00000000, kMaterial, "Blend"},
    {0x00000255, 0x00000000, kMaterial, "Shell Material"},
    {0x00000260, 0x00000000, kMaterial, "Matte/Shadow"},
    {0x27190ff4, 0x329b106e, kMaterial, "Raytrace"},
    {0x272c0d4b, 0x432a414b, kMaterial, "XRef Material"},
    {0x3d6b1cec, 0xdeadc001, kMaterial, "Physical Material"},
    {0x61dc0cd7, 0x13640af6, kMaterial, "Composite"},
    {0x6912ab89, 0x87151720, kMaterial, "\rCoronaPhysicalMtl"},
    {0x70be6506, 0x448931dd, kMaterial, "CoronaLegacyMtl"},
    {0x53b7717a, 0x500d5093, kMaterial, "CoronaLightMtl"},
    {0x65486584, 0x8425554e, kMaterial, "CoronaLayeredMtl"},
    {0x37bf3f2f, 0x7034695c, kMaterial, "VRayMtl"},
    {0x38420192, 0x45fe4e1b, kMaterial, "glTF Material"},
    // lights
    {0x00001011, 0x00000000, kLight, "Omni"},
    {0x00001012, 0x00000000, kLight, "Target Spot"},
    {0x00001013, 0x00000000, kLight, "Free Direct"},
    {0x00001014, 0x00000000, kLight, "Free Spot"},
    {0x00001015, 0x00000000, kLight, "Target Direct"},
    {0x7bf61478, 0x522e4705, kLight, "Skylight"},
    {0x423045e5, 0x294c5879, kLight, "CoronaLight"},
    // cameras
    {0x00001001, 0x00000000, kCamera, "Free"},
    {0x00001002, 0x00000000, kCamera, "Target"},
    {0x46697218, 0x28e8008d, kCamera, "Physical"},
};
// clang-format on

} // namespace

std::optional<HostClass> HostClassOf(const FbxObject& object) {
    const FbxProperty* a = object.FindOwn("3dsMax|ClassIDa");
    const FbxProperty* b = object.FindOwn("3dsMax|ClassIDb");
    if (!a || !b) {
        return std::nullopt;
    }
    HostClass found;
    found.partA = static_cast<std::uint32_t>(a->Integer());
    found.partB = static_cast<std::uint32_t>(b->Integer());
    found.super = static_cast<std::uint32_t>(object.Integer("3dsMax|SuperClassID", 0));
    const auto* row = std::find_if(std::begin(kClasses), std::end(kClasses), [&](const Row& r) {
        return r.partA == found.partA && r.partB == found.partB && r.super == found.super;
    });
    if (row != std::end(kClasses)) {
        found.name = row->name;
    }
    return found;
}

} // namespace sceneconv
