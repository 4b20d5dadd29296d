#include "service/number.h"

#include <algorithm>
#include <limits>

namespace brimwave {

std::int32_t WideToInt(std::wstring_view text) {
    const auto start = text.find_first_not_of(L" \t\n\v\f\r");
    if (start == std::wstring_view::npos)
        return 0;
    text.remove_prefix(start);
    const bool negative = text.front() == L'-';
    if (negative || text.front() == L'+')
        text.remove_prefix(1);

    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    const std::int64_t limit = negative ? most + 1 : most;
    std::int64_t value = 0;
    for (const wchar_t c : text) {
        if (c < L'0' || c > L'9')
            break;
        value = std::min(limit, value * 10 + (c - L'0'));
    }
    return static_cast<std::int32_t>(negative ? -value : value);
}

} // namespace brimwave
