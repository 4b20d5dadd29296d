#include "pipeline/script_reply.h"

#include <limits>

namespace brimwave {

std::optional<std::int32_t> LeadingInteger(std::wstring_view text) {
    const auto start = text.find_first_not_of(L" \t\n\v\f\r");
    if (start == std::wstring_view::npos)
        return std::nullopt;
    text.remove_prefix(start);
    const bool negative = text.front() == L'-';
    if (negative || text.front() == L'+')
        text.remove_prefix(1);

    using Limits = std::numeric_limits<std::int32_t>;
    std::int64_t value = 0;
    std::size_t digits = 0;
    for (; digits < text.size() && text[digits] >= L'0' && text[digits] <= L'9'; ++digits) {
        value = value * 10 + (text[digits] - L'0');
        if (value > std::int64_t{Limits::max()} + 1)
            return std::nullopt;
    }
    if (negative)
        value = -value;
    if (digits == 0 || value > Limits::max())
        return std::nullopt;
    return static_cast<std::int32_t>(value);
}

std::optional<std::wstring_view> AfterWord(std::wstring_view reply, std::wstring_view word) {
    if (!reply.starts_with(word))
        return std::nullopt;
    return reply.substr(word.size());
}

} // namespace brimwave
