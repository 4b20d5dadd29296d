#pragma once
// What a script answers: fields with "|" between them, or a word and what belongs to it.
#include <cstdint>
#include <optional>
#include <string_view>

namespace brimwave {

/// The part before the first "|", which is cut off `rest` together with it. Without a "|" the
/// whole text.
[[nodiscard]] std::wstring_view TakeField(std::wstring_view& rest);

/// What follows `word` when the reply begins with it.
[[nodiscard]] std::optional<std::wstring_view> AfterWord(std::wstring_view reply,
                                                         std::wstring_view word);

/// ParseInteger; nothing for a number that does not fit.
[[nodiscard]] std::optional<std::int32_t> LeadingInteger(std::wstring_view text);

} // namespace brimwave
