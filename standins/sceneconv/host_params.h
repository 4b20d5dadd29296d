// The host's own parameters in an FBX file that it wrote: "3dsMax|<block>|<name>".
#pragma once

#include "sceneconv/fbx_document.h"
#include "sceneconv/host_classes.h"
#include "sceneconv/scene_json.h"

#include <functional>

namespace sceneconv {

/// The scene file's reference to a material or texture that fills a parameter.
using Reference = std::function<Json(const FbxObject&)>;

/// An entry of that class with its name (left out when empty) and explicit `blocks`: every
/// parameter with its own spelling and type. A class that the catalogue lacks is named by its ids
/// and gets slots for its texture parameters.
[[nodiscard]] Json HostEntry(const FbxObject& object, const HostClass& hostClass,
                             const std::string& name, const Reference& reference);

} // namespace sceneconv
