#pragma once
#include <string>

namespace simhost {

/// Names, tree, transforms, objects, materials, parameters and selection as lines of text. Two
/// equal snapshots mean that nothing a plug-in could see has changed.
[[nodiscard]] std::string SnapshotScene();

} // namespace simhost
