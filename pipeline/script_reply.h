#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace brimwave {

/// The base-10 integer at the start of `text`, after blanks and a sign; what follows its digits
/// does not matter. Nothing when there is none or it does not fit.
[[nodiscard]] std::optional<std::int32_t> LeadingInteger(std::wstring_view text);

/// What follows `word` when the reply begins with it.
[[nodiscard]] std::optional<std::wstring_view> AfterWord(std::wstring_view reply,
                                                         std::wstring_view word);

} // namespace brimwave
