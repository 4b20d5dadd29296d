#pragma once
// What script functions do to nodes beyond what the scene offers by itself.
#include "simhost/scene/scene.h"
#include "simhost/script/value.h"

namespace simhost {
class SceneModifier;
}

namespace simhost::script {

/// The result of a node's stack at the scene's time; null when it has none.
[[nodiscard]] ::Object* ResultOf(SceneNode& node);
/// The modifiers on a node's object, top first.
[[nodiscard]] std::vector<SceneModifier*> ModifiersOf(SceneNode& node);
/// The mesh of a node whose result is an editable mesh or poly; null for all others.
[[nodiscard]] const Mesh* EditableMeshOf(SceneNode& node);
/// The layer a node is on, with its name.
[[nodiscard]] Value LayerOf(SceneNode& node);
void SelectNode(SceneNode& node, bool on);

} // namespace simhost::script
