#include "host/units.h"

#include "host/sdk_compat.h"

namespace brimwave {

float MetresPerSystemUnit() {
    const auto scale = static_cast<float>(SystemUnitScale(UNITS_METERS));
    return scale > 0.0f ? scale : 0.0254f; // the comparison also refuses NaN
}

} // namespace brimwave
