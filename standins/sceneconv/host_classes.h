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
    std::string name; ///< display class name; empty for a class that is not in the table
};

/// The class of which the host wrote this object, from its "3dsMax|ClassIDa" and so on.
[[nodiscard]] std::optional<HostClass> HostClassOf(const FbxObject& object);

} // namespace sceneconv
