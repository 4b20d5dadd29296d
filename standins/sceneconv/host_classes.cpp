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

constexpr std::uint32_t cameraClass = 0x20;
constexpr std::uint32_t lightClass = 0x30;
constexpr std::uint32_t materialClass = 0xc00;

// clang-format off
constexpr Row knownClasses[] = {
    // materials
    {0x00000002, 0x00000000, materialClass, "Standard (Legacy)"},
    {0x00000100, 0x00000000, materialClass, "Top/Bottom"},
    {0x00000200, 0x00000000, materialClass, "Multi/Sub-Object"},
    {0x00000210, 0x00000000, materialClass, "Double Sided"},
    {0x00000250, 0x00000000, materialClass, "Blend"},
    {0x00000255, 0x00000000, materialClass, "Shell Material"},
    {0x00000260, 0x00000000, materialClass, "Matte/Shadow"},
    {0x27190ff4, 0x329b106e, materialClass, "Raytrace"},
    {0x272c0d4b, 0x432a414b, materialClass, "XRef Material"},
    {0x3d6b1cec, 0xdeadc001, materialClass, "Physical Material"},
    {0x61dc0cd7, 0x13640af6, materialClass, "Composite"},
    {0x6912ab89, 0x87151720, materialClass, "\rCoronaPhysicalMtl"},
    {0x70be6506, 0x448931dd, materialClass, "CoronaLegacyMtl"},
    {0x53b7717a, 0x500d5093, materialClass, "CoronaLightMtl"},
    {0x65486584, 0x8425554e, materialClass, "CoronaLayeredMtl"},
    {0x37bf3f2f, 0x7034695c, materialClass, "VRayMtl"},
    {0x38420192, 0x45fe4e1b, materialClass, "glTF Material"},
    // lights
    {0x00001011, 0x00000000, lightClass, "Omni"},
    {0x00001012, 0x00000000, lightClass, "Target Spot"},
    {0x00001013, 0x00000000, lightClass, "Free Direct"},
    {0x00001014, 0x00000000, lightClass, "Free Spot"},
    {0x00001015, 0x00000000, lightClass, "Target Direct"},
    {0x7bf61478, 0x522e4705, lightClass, "Skylight"},
    {0x423045e5, 0x294c5879, lightClass, "CoronaLight"},
    // cameras
    {0x00001001, 0x00000000, cameraClass, "Free"},
    {0x00001002, 0x00000000, cameraClass, "Target"},
    {0x46697218, 0x28e8008d, cameraClass, "Physical"},
};
// clang-format on

struct NamedRow {
    std::uint32_t super;
    const char* name;
};

// Classes of which no file of the real host has shown the id. The stand-in numbers such classes by
// a hash of their name, so its own files tell them.
constexpr NamedRow classesKnownByName[] = {
    {materialClass, "CoronaMtl"},
    {materialClass, "CoronaSkinMtl"},
    {materialClass, "CoronaRaySwitchMtl"},
    {materialClass, "CoronaBlendMtl"},
    {materialClass, "CoronaSelectMtl"},
    {materialClass, "CoronaVolumeMtl"},
    {materialClass, "CoronaShadowCatcherMtl"},
    {materialClass, "Shellac"},
    {materialClass, "Toon"},
    {materialClass, "Morpher"},
    {materialClass, "Material Switcher"},
    {materialClass, "PBR Material (Metal/Rough)"},
    {materialClass, "PBR Material (Spec/Gloss)"},
    {materialClass, "OpenPBR Material"},
    {materialClass, "Material Output Selector"},
    {materialClass, "Map to Material Conversion"},
    {materialClass, "VRayLightMtl"},
    {materialClass, "VRay2SidedMtl"},
    {materialClass, "VRayBlendMtl"},
    {materialClass, "VRayCarPaintMtl"},
    {materialClass, "VRayCarPaintMtl2"},
    {materialClass, "VRayFastSSS2"},
    {materialClass, "VRayStochasticFlakesMtl"},
    {materialClass, "VRayALSurfaceMtl"},
    {lightClass, "CoronaSun"},
    {lightClass, "VRayLight"},
    {lightClass, "VRaySun"},
    {lightClass, "VRayIES"},
    {lightClass, "Free Light"},
    {lightClass, "Target Light"},
    {cameraClass, "CoronaCam"},
    {cameraClass, "VRayPhysicalCamera"},
};

/// Both parts of the id, the first in the upper half.
constexpr std::uint64_t IdOfName(std::string_view name) {
    std::uint64_t hash = 14695981039346656037U;
    for (const char c : name)
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 1099511628211U;
    return hash;
}

const char* NameOf(const HostClass& ids) {
    const auto* row =
        std::find_if(std::begin(knownClasses), std::end(knownClasses), [&](const Row& r) {
            return r.partA == ids.partA && r.partB == ids.partB && r.super == ids.super;
        });
    if (row != std::end(knownClasses))
        return row->name;
    const std::uint64_t id = (std::uint64_t{ids.partA} << 32U) | ids.partB;
    for (const NamedRow& named : classesKnownByName) {
        if (named.super == ids.super && IdOfName(named.name) == id)
            return named.name;
    }
    return "";
}

} // namespace

std::optional<HostClass> HostClassOf(const FbxObject& object) {
    const FbxProperty* a = object.FindOwn("3dsMax|ClassIDa");
    const FbxProperty* b = object.FindOwn("3dsMax|ClassIDb");
    if (!a || !b)
        return std::nullopt;
    HostClass found;
    found.partA = static_cast<std::uint32_t>(a->Integer());
    found.partB = static_cast<std::uint32_t>(b->Integer());
    found.super = static_cast<std::uint32_t>(object.Integer("3dsMax|SuperClassID", 0));
    found.name = NameOf(found);
    return found;
}

} // namespace sceneconv
