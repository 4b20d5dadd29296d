#pragma once
#include "simhost/scene/entity.h"
#include "simhost/script/value.h"

namespace simhost::script {

/// A parameter as a whole; a table is a live list.
[[nodiscard]] Value ReadParam(Entity& entity, ParamPlace place);
/// Throws the host's conversion error for what the type cannot hold.
void SetParam(Entity& entity, ParamPlace place, const Value& value);

} // namespace simhost::script
