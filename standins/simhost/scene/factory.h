#pragma once
#include "simhost/scene/entity.h"

namespace simhost {

/// A new thing of the class, with its defaults, its default sub-objects and the class's display
/// name as name.
[[nodiscard]] std::unique_ptr<ReferenceTarget> MakeThing(const ClassPtr& info);

/// Gives `target` copies of the sub-objects of `source`, which is of the same class.
void CopySubObjects(const Entity& source, Entity& target);

} // namespace simhost
