#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "simhost/script/value.h"

namespace simhost::script {

/// Value of a whole Number token: Integer, Integer64 (also when 32 bits are too few), IntegerPtr,
/// Float or Double.
[[nodiscard]] Value NumberLiteral(std::wstring_view text);
/// Value of a whole Time token.
[[nodiscard]] Value TimeLiteral(std::wstring_view text, int frameRate);

/// The number that a text starts with (blanks before it allowed); nothing when it starts with none.
[[nodiscard]] std::optional<double> LeadingReal(std::wstring_view text);
[[nodiscard]] std::optional<int64_t> LeadingWhole(std::wstring_view text);

/// C's "%g" in the "C" locale with `digits` significant digits.
[[nodiscard]] std::wstring GeneralText(double value, int digits);
/// How a Float prints: six digits, ".0" behind a bare whole number, "0.0" for the smallest ones.
[[nodiscard]] std::wstring FloatText(float value);
[[nodiscard]] std::wstring DoubleText(double value);

} // namespace simhost::script
