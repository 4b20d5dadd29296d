#pragma once
#include "simhost/classes/param_value.h"
#include "simhost/json/json_view.h"

#include <functional>

namespace simhost {

/// Makes a reference of what stands where one of the type is expected.
using ReferenceReader = std::function<ReferenceTarget*(const JsonView&, ParamType2)>;

/// The value of a parameter of that type. Without a reader only null references are understood.
[[nodiscard]] ParamValue ReadValue(const JsonView& view, ParamType2 type,
                                   const ReferenceReader& references = {});
[[nodiscard]] Point3 ReadPoint3(const JsonView& view);
/// Four rows.
[[nodiscard]] Matrix3 ReadMatrix(const JsonView& view);

} // namespace simhost
