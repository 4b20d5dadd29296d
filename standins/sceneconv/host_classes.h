// The host's classes by their ids, as its FBX files name them.
#pragma once

#include "sceneconv/fbx_document.h"

#include <cstdint>
#include <optional>
#include <string>

namespace sceneconv {

struct HostClass {
    std::uint32_t partA = 0;
    std::uint32_t partB = 0;
    std::uint32_t super = 0;
    std::string name; ///< display class name; empty for a class that the catalogue lacks

    [[nodiscard]] bool IsMaterial() const { return super == 0xc00; }
};

/// "material", "light" or "camera" as scene files name the kinds; empty for any other.
[[nodiscard]] const char* KindName(std::uint32_t super);

/// The class of which the host wrote this object, from its "3dsMax|ClassIDa" and so on.
[[nodiscard]] std::optional<HostClass> HostClassOf(const FbxObject& object);

} // namespace sceneconv
