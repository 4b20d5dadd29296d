#pragma once

namespace brimwave {

/// Length of one system unit in metres. A host that answers zero or less gives 0.0254, the
/// length of an inch, which is the host's own default unit.
[[nodiscard]] float MetresPerSystemUnit();

} // namespace brimwave
