#pragma once
// The classes by families, each in a file of its own. A new class is one entry in one of them;
// docs/package-classes.md is printed from them.
#include "package/classes/class_entry.h"

namespace brimwave {

[[nodiscard]] const ClassList& HostMaterials();
[[nodiscard]] const ClassList& CoronaMaterials();
[[nodiscard]] const ClassList& VRayMaterials();
[[nodiscard]] const ClassList& HostMaps(); ///< and those of scatterers
[[nodiscard]] const ClassList& CoronaMaps();
[[nodiscard]] const ClassList& VRayMaps();

/// By the host's class names, letter case counting; each name is also the type that is written.
/// The last entry is that of all other lights that name a web file.
[[nodiscard]] const ClassList& Lights();

// What is not found by a class of materials, maps or lights.
[[nodiscard]] const ClassEntry& BitmapImage();        ///< of every map that shows a bitmap
[[nodiscard]] const ClassEntry& MapOutput();          ///< of every map that has an output
[[nodiscard]] const ClassEntry& CameraLens();         ///< of every camera
[[nodiscard]] const ClassEntry& CoronaDisplacement(); ///< of the modifiers of this kind
[[nodiscard]] const ClassEntry& VRayDisplacement();

enum class ClassKind { Material, Map, Other };

struct ClassFamily {
    std::wstring_view heading;
    ClassKind kind;
    std::span<const ClassEntry> classes;
};

/// All of the above, in the order of the documents.
[[nodiscard]] std::span<const ClassFamily> ClassFamilies();

} // namespace brimwave
