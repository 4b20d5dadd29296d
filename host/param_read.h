#pragma once
// One read of one parameter: the only place that knows which host type gives which value.
#include "host/param_value.h"

#include <max.h>

#include <iparamb2.h>

#include <optional>

namespace brimwave {

/// Kind that a scalar parameter of this type has; None for tables and types that are not read.
[[nodiscard]] ParamKind ScalarKindOf(ParamType2 type);
/// Kind of the elements of a table parameter; None for scalars and other tables.
[[nodiscard]] ParamKind TabKindOf(ParamType2 type);

/// False, with `value` untouched, when the type has no kind or the host does not answer.
[[nodiscard]] bool ReadScalar(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time,
                              ParamValue& value);
bool ReadElement(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time, int index,
                 ParamValue& value);

/// An element of a table of numbers of any type; nothing for other tables.
[[nodiscard]] std::optional<float> ReadNumber(IParamBlock2& block, ParamID id, ParamType2 type,
                                              TimeValue time, int index);

/// The reference of a TYPE_MTL, TYPE_TEXMAP or TYPE_REFTARG parameter; may be null.
[[nodiscard]] ReferenceTarget* ReadReference(IParamBlock2& block, ParamID id, ParamType2 type,
                                             TimeValue time);
[[nodiscard]] Texmap* ReadTexmap(IParamBlock2& block, ParamID id, TimeValue time, int index);

} // namespace brimwave
