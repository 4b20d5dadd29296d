#pragma once
#include <cstdint>
#include <string_view>

namespace brimwave {

// The C library's wide string-to-int conversion (`_wtoi`) with the same answer on every platform:
// leading white space is skipped, one sign is read, then ASCII digits up to the first other
// character. No digits give 0. A value out of range becomes the nearest 32-bit number.
[[nodiscard]] std::int32_t WideToInt(std::wstring_view text);

} // namespace brimwave
