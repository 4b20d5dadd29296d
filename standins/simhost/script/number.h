#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "simhost/script/value.h"

namespace simhost::script {

/// A number at the head of a text.
struct NumberText {
    Value value;       // Integer, Integer64 (also when 32 bits are too few), IntegerPtr or Float
    size_t length = 0; // in units
};
/// 12  1.5e3  .5  0xff  7L  9P; without a sign. Nothing when the text starts with no number.
[[nodiscard]] std::optional<NumberText> FindNumber(std::wstring_view text);

/// C's "%g" in the "C" locale: six significant digits.
[[nodiscard]] std::wstring SixDigitText(float value);
/// How a Float prints: the same, ".0" behind a bare whole number, "0.0" for the smallest ones.
[[nodiscard]] std::wstring FloatText(float value);

} // namespace simhost::script
