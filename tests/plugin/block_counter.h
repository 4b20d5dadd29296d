#pragma once

namespace brimwave::testing {

/// Blocks of memory that this program (not the libraries that it loads) holds at the moment.
[[nodiscard]] long LiveBlocks();

} // namespace brimwave::testing
