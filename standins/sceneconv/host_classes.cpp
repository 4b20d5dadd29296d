#include "sceneconv/host_classes.h"

#include <algorithm>
#include <iterator>
#include <string_view>

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

struct NamedRow {
    std::uint32_t super;
    const char* name;
};

// Classes of which no file of the real host has shown the id. The stand-in numbers such classes by
// a hash of their name, so its own files tell them.
constexpr NamedRow kClassesByName[] = {
    {kMaterial, "CoronaMtl"},
    {kMaterial, "CoronaSkinMtl"},
    {kMaterial, "CoronaRaySwitchMtl"},
    {kMaterial, "CoronaBlendMtl"},
    {kMaterial, "CoronaSelectMtl"},
    {kMaterial, "CoronaVolumeMtl"},
    {kMaterial, "CoronaShadowCatcherMtl"},
    {kMaterial, "Shellac"},
    {kMaterial, "Toon"},
    {kMaterial, "Morpher"},
    {kMaterial, "Material Switcher"},
    {kMaterial, "PBR Material (Metal/Rough)"},
    {kMaterial, "PBR Material (Spec/Gloss)"},
    {kMaterial, "OpenPBR Material"},
    {kMaterial, "Material Output Selector"},
    {kMaterial, "Map to Material Conversion"},
    {kMaterial, "VRayLightMtl"},
    {kMaterial, "VRay2SidedMtl"},
    {kMaterial, "VRayBlendMtl"},
    {kMaterial, "VRayCarPaintMtl"},
    {kMaterial, "VRayCarPaintMtl2"},
    {kMaterial, "VRayFastSSS2"},
    {kMaterial, "VRayStochasticFlakesMtl"},
    {kMaterial, "VRayALSurfaceMtl"},
    {kLight, "CoronaSun"},
    {kLight, "VRayLight"},
    {kLight, "VRaySun"},
    {kLight, "VRayIES"},
    {kLight, "Free Light"},
    {kLight, "Target Light"},
    {kCamera, "CoronaCam"},
    {kCamera, "VRayPhysicalCamera"},
};

/// Both parts of the id, the first in the upper half.
constexpr std::uint64_t IdOfName(std::string_view name) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : name) {
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 1099511628211U;
    }
    return hash;
}

const char* NameOf(const HostClass& ids) {
    const auto* row = std::find_if(std::begin(kClasses), std::end(kClasses), [&](const Row& r) {
        return r.partA == ids.partA && r.partB == ids.partB && r.super == ids.super;
    });
    if (row != std::end(kClasses)) {
        return row->name;
    }
    const std::uint64_t id = (std::uint64_t{ids.partA} << 32U) | ids.partB;
    for (const NamedRow& named : kClassesByName) {
        if (named.super == ids.super && IdOfName(named.name) == id) {
            return named.name;
        }
    }
    return "";
}

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
    found.name = NameOf(found);
    return found;
}

} // namespace sceneconv
