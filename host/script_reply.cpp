#include "host/script_reply.h"

#include "host/number_text.h"

#include <algorithm>
#include <utility>

namespace brimwave {

std::wstring_view TakeField(std::wstring_view& rest) {
    const std::wstring_view field = rest.substr(0, rest.find(L'|'));
    rest.remove_prefix(std::min(field.size() + 1, rest.size()));
    return field;
}

std::optional<std::wstring_view> AfterWord(std::wstring_view reply, std::wstring_view word) {
    if (!reply.starts_with(word))
        return std::nullopt;
    return reply.substr(word.size());
}

std::optional<std::int32_t> LeadingInteger(std::wstring_view text) {
    const auto number = ParseInteger(text);
    if (!number || !std::in_range<std::int32_t>(*number))
        return std::nullopt;
    return static_cast<std::int32_t>(*number);
}

} // namespace brimwave
