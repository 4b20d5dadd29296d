#pragma once
#include "simhost/scene/entity.h"
#include "simhost/script/value.h"

namespace simhost::script {

/// How a parameter shows in scripts: colours 0..255, angles in degrees, fractions in percent,
/// indices from 1, things as values, null as undefined.
[[nodiscard]] Value FromScalar(ParamType2 type, const Scalar& scalar);
/// And back. Throws the host's conversion error for what the type cannot hold.
[[nodiscard]] Scalar ToScalar(ParamType2 type, const Value& value);

/// A parameter as a whole; a table is a live list.
[[nodiscard]] Value ReadParam(Entity& entity, ParamPlace place);
void WriteParam(Entity& entity, ParamPlace place, const Value& value);

[[nodiscard]] Value FromMatrix(const Matrix3& matrix);
[[nodiscard]] Matrix3 ToMatrix(const Value& value);
[[nodiscard]] Value FromPoint(const Point3& point);
[[nodiscard]] Point3 ToPoint(const Value& value);

} // namespace simhost::script
