#pragma once
// Numbers as text, and at the head of a text.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

/// Appends a finite number: six significant digits in general notation, with a point as decimal
/// mark, as a stream in the classic locale writes it.
void AppendNumber(std::wstring& out, float value);
void AppendNumber(std::wstring& out, std::int64_t value);

/// Decimal number, leading blanks skipped and whatever follows ignored; always with a point as
/// decimal mark. False when there is none.
bool ParseFloat(std::wstring_view text, float& value);

/// Whole number in base 10: white space is skipped, one sign is read, then ASCII digits;
/// whatever follows is ignored. Nothing when there is no digit. One that does not fit becomes the
/// nearest that does.
[[nodiscard]] std::optional<std::int64_t> ParseInteger(std::wstring_view text);

} // namespace brimwave
