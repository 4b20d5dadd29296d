#pragma once
// Parameters of scene things as scripts see them: colours 0..255, angles in degrees, fractions in
// percent, indices from 1, things as values, null as undefined, tables as live lists.
#include "simhost/scene/entity.h"
#include "simhost/script/object.h"

namespace simhost::script {

/// By name, in any case: a sub-object, a parameter (of the shader, too), a ramp's flag. Nothing
/// when the thing has none of that name.
[[nodiscard]] std::optional<Value> FindEntityProperty(Entity& entity, const std::wstring& name);
/// False when the thing has no parameter of that name. Throws the host's conversion error for what
/// the parameter cannot hold.
bool SetEntityProperty(Entity& entity, const std::wstring& name, const Value& value);
/// The names of all parameters, in their order.
void CollectEntityProperties(const Entity& entity, std::vector<std::wstring>& names);

/// A name as scripts spell it: without blanks and marks.
[[nodiscard]] std::wstring ScriptWord(std::wstring_view name);

} // namespace simhost::script
