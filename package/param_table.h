#pragma once
#include "host/params.h"

namespace brimwave {

/// One class's table: which parameters are written under which keys, in the order of writing.
using ParamTable = std::span<const ParamRow>;

} // namespace brimwave
