#pragma once
#include <functional>
#include <vector>

#include "simhost/scene/scene.h"
#include "simhost/script/value.h"

namespace simhost::script {

/// A live set of nodes: what `list` answers, asked anew whenever the scene has changed. `ofTree`:
/// the answer depends on nothing but the tree and its objects; else it is also asked at the start
/// of every loop. `text`: how the set prints.
[[nodiscard]] Value NodeSet(std::wstring text, std::function<std::vector<SceneNode*>()> list,
                            bool ofTree);

} // namespace simhost::script
