#include "simhost/script/number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// Numbers are ASCII; anything else ends them.
std::string AsciiHead(std::wstring_view text) {
    std::string head;
    for (size_t i = 0; i < text.size() && text[i] < 0x80; ++i)
        head.push_back(static_cast<char>(text[i]));
    return head;
}

bool IsDigitAt(std::string_view text, size_t at) {
    return at < text.size() && IsDigit(static_cast<wchar_t>(text[at]));
}

size_t EndOfDigits(std::string_view text, size_t at) {
    while (IsDigitAt(text, at))
        ++at;
    return at;
}

size_t EndOfExponent(std::string_view text, size_t at) {
    if (at >= text.size() || (text[at] != 'e' && text[at] != 'E'))
        return at;
    const bool sign = at + 1 < text.size() && (text[at + 1] == '+' || text[at + 1] == '-');
    const size_t digits = at + (sign ? 2 : 1);
    return IsDigitAt(text, digits) ? EndOfDigits(text, digits) : at;
}

// Takes the letter of a 64-bit kind, unless it belongs to a word.
Value TakeSuffix(std::wstring_view text, size_t& length, int64_t whole, Type narrowest) {
    const wchar_t letter = length < text.size() ? LowerUnit(text[length]) : L'\0';
    const bool inWord = length + 1 < text.size() && IsWordUnit(text[length + 1]);
    if ((letter != L'l' && letter != L'p') || inWord)
        return Value::Whole(narrowest, whole);
    ++length;
    return Value::Whole(letter == L'l' ? Type::Integer64 : Type::IntegerPtr, whole);
}

std::optional<NumberText> FindHex(std::wstring_view text, std::string_view head) {
    uint64_t bits = 0;
    const char* const first = head.data() + 2;
    const auto [end, error] = std::from_chars(first, head.data() + head.size(), bits, 16);
    if (end == first)
        return std::nullopt;
    NumberText number;
    number.length = static_cast<size_t>(end - head.data());
    if (error != std::errc())
        bits = std::numeric_limits<uint64_t>::max();
    const Type narrowest = bits > 0xFFFFFFFFu ? Type::Integer64 : Type::Integer;
    number.value = TakeSuffix(text, number.length, static_cast<int64_t>(bits), narrowest);
    return number;
}

float ToFloat(std::string_view text) {
    double value = 0;
    const auto error = std::from_chars(text.data(), text.data() + text.size(), value).ec;
    if (error == std::errc::result_out_of_range) {
        return text.find("e-") != std::string_view::npos ||
                       text.find("E-") != std::string_view::npos
                   ? 0.0f
                   : std::numeric_limits<float>::infinity();
    }
    return static_cast<float>(value);
}

} // namespace

std::optional<NumberText> FindNumber(std::wstring_view text) {
    const std::string head = AsciiHead(text.substr(0, 400));
    if (head.size() > 2 && head[0] == '0' && (head[1] == 'x' || head[1] == 'X'))
        return FindHex(text, head);
    const size_t wholeEnd = EndOfDigits(head, 0);
    const bool point = wholeEnd < head.size() && head[wholeEnd] == '.';
    const size_t end = point ? EndOfDigits(head, wholeEnd + 1) : wholeEnd;
    if (end == (point ? 1u : 0u)) // no digit at all
        return std::nullopt;
    NumberText number;
    number.length = EndOfExponent(head, end);
    if (number.length > wholeEnd) {
        number.value = Value::Float(ToFloat(std::string_view(head).substr(0, number.length)));
        return number;
    }
    int64_t whole = 0;
    if (std::from_chars(head.data(), head.data() + wholeEnd, whole).ec != std::errc())
        whole = std::numeric_limits<int64_t>::max();
    const bool wide = whole > std::numeric_limits<int32_t>::max();
    number.value = TakeSuffix(text, number.length, whole, wide ? Type::Integer64 : Type::Integer);
    return number;
}

std::wstring SixDigitText(float value) {
    if (std::isnan(value))
        return L"nan";
    if (std::isinf(value))
        return value < 0 ? L"-inf" : L"inf";
    char buffer[64];
    char* const end = std::to_chars(buffer, buffer + sizeof(buffer), static_cast<double>(value),
                                    std::chars_format::general, 6)
                          .ptr;
    return std::wstring(&buffer[0], end);
}

std::wstring FloatText(float value) {
    if (std::fabs(value) < std::numeric_limits<float>::epsilon())
        return L"0.0";
    const std::wstring text = SixDigitText(value);
    return text.find_first_not_of(L"-0123456789") == std::wstring::npos ? text + L".0" : text;
}

} // namespace simhost::script
