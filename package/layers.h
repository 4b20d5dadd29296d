#pragma once
#include "package/package_context.h"

namespace brimwave {

/// One layer of a layered material.
struct Layer {
    Mtl* material = nullptr;
    std::optional<bool> enabled; // only of classes that switch their layers
    std::wstring amount;         // as written: a number, or "null" when the class has none
};

/// The layers of a material, in the order of its sub-materials; none for a class without layers.
/// Classes that keep amounts in a table "blendAmounts", CoronaLayeredMtl and VRayBlendMtl (whose
/// first sub-material is the base, of amount 1), and the Material Output Selector (one layer).
[[nodiscard]] std::vector<Layer> ReadLayers(PackageContext& package, Mtl& material,
                                            std::wstring_view className);

} // namespace brimwave
