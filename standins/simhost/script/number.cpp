#include "simhost/script/number.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// Script numbers are ASCII; anything else ends them.
std::string Narrow(std::wstring_view text) {
    std::string narrow;
    for (const wchar_t unit : text) {
        if (unit >= 0x80)
            break;
        narrow.push_back(static_cast<char>(unit));
    }
    return narrow;
}

double Real(std::string text) {
    for (char& c : text)
        c = c == 'd' || c == 'D' ? 'e' : c;
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        const size_t mark = text.find_first_of("eE");
        const bool tiny =
            mark != std::string::npos && mark + 1 < text.size() && text[mark + 1] == '-';
        return tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return value;
}

Value Hex(std::string text) {
    wchar_t suffix = 0;
    if (text.back() == 'L' || text.back() == 'l' || text.back() == 'P' || text.back() == 'p') {
        suffix = LowerUnit(static_cast<wchar_t>(text.back()));
        text.pop_back();
    }
    uint64_t bits = 0;
    for (const char c : text.substr(2))
        bits = bits << 4 | static_cast<uint64_t>(HexDigit(static_cast<wchar_t>(c)));
    if (suffix == L'p')
        return Value::IntegerPtr(static_cast<int64_t>(bits));
    if (suffix == L'l' || bits > 0xFFFFFFFFu)
        return Value::Integer64(static_cast<int64_t>(bits));
    return Value::Integer(static_cast<int32_t>(bits));
}

} // namespace

Value NumberLiteral(std::wstring_view text) {
    std::string narrow = Narrow(text);
    if (narrow.size() > 2 && narrow[0] == '0' && (narrow[1] == 'x' || narrow[1] == 'X'))
        return Hex(std::move(narrow));
    const wchar_t suffix = LowerUnit(text.back());
    if (suffix == L'l' || suffix == L'p')
        narrow.pop_back();
    const bool isDouble = narrow.find_first_of("dD") != std::string::npos;
    const bool isReal = narrow.find_first_of(".eEdD") != std::string::npos;
    if (suffix == L'l' || suffix == L'p' || !isReal) {
        int64_t whole = 0;
        if (isReal)
            whole = static_cast<int64_t>(std::fmin(Real(narrow), 9.2e18));
        else if (std::from_chars(narrow.data(), narrow.data() + narrow.size(), whole).ec !=
                 std::errc())
            whole = std::numeric_limits<int64_t>::max();
        if (suffix == L'p')
            return Value::IntegerPtr(whole);
        if (suffix == L'l' || whole > std::numeric_limits<int32_t>::max())
            return Value::Integer64(whole);
        return Value::Integer(static_cast<int32_t>(whole));
    }
    return isDouble ? Value::Double(Real(narrow)) : Value::Float(static_cast<float>(Real(narrow)));
}

Value TimeLiteral(std::wstring_view text, int frameRate) {
    const double ticksPerFrame = static_cast<double>(ticksPerSecond) / frameRate;
    const size_t colon = text.find(L':');
    if (colon != std::wstring_view::npos) {
        const size_t dot = text.find(L'.', colon);
        const double minutes = LeadingReal(text.substr(0, colon)).value_or(0);
        const double seconds = LeadingReal(text.substr(colon + 1, dot - colon - 1)).value_or(0);
        const double frames = LeadingReal(text.substr(dot + 1)).value_or(0);
        return Value::Time((minutes * 60 + seconds) * ticksPerSecond + frames * ticksPerFrame);
    }
    double ticks = 0;
    for (size_t start = 0; start < text.size();) {
        const size_t unit = text.find_first_of(L"fFsSmMtTnN", start);
        const double number = LeadingReal(text.substr(start, unit - start)).value_or(0);
        switch (LowerUnit(text[unit])) {
        case L's':
        case L'n':
            ticks += number * ticksPerSecond;
            break;
        case L'm':
            ticks += number * 60 * ticksPerSecond;
            break;
        case L't':
            ticks += number;
            break;
        default:
            ticks += number * ticksPerFrame;
        }
        start = unit + 1;
    }
    return Value::Time(ticks);
}

std::optional<double> LeadingReal(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    std::string narrow = Narrow(text);
    const char* first = narrow.data();
    const char* last = first + narrow.size();
    if (first != last && *first == '+')
        ++first;
    // from_chars takes "inf" and "nan" too; a script's number starts with a digit or a point.
    const char* digit = first != last && *first == '-' ? first + 1 : first;
    if (digit == last || !(IsDigit(static_cast<wchar_t>(*digit)) || *digit == '.'))
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(first, last, value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    return error == std::errc() ? value : Real(std::string(first, end));
}

std::optional<int64_t> LeadingWhole(std::wstring_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    std::string narrow = Narrow(text);
    const char* first = narrow.data();
    if (!narrow.empty() && *first == '+')
        ++first;
    int64_t value = 0;
    if (std::from_chars(first, narrow.data() + narrow.size(), value).ec != std::errc())
        return std::nullopt;
    return value;
}

std::wstring GeneralText(double value, int digits) {
    if (std::isnan(value))
        return L"nan";
    if (std::isinf(value))
        return value < 0 ? L"-inf" : L"inf";
    char buffer[64];
    const auto result =
        std::to_chars(buffer, buffer + sizeof(buffer), value, std::chars_format::general, digits);
    return Widen(std::string_view(buffer, static_cast<size_t>(result.ptr - buffer)));
}

namespace {

std::wstring RealText(double value, int digits, double smallest) {
    if (std::fabs(value) < smallest)
        return L"0.0";
    std::wstring text = GeneralText(value, digits);
    if (text.find_first_not_of(L"-0123456789") == std::wstring::npos)
        text += L".0";
    return text;
}

} // namespace

std::wstring FloatText(float value) {
    return RealText(static_cast<double>(value), 6,
                    static_cast<double>(std::numeric_limits<float>::epsilon()));
}

std::wstring DoubleText(double value) {
    return RealText(value, 15, std::numeric_limits<double>::epsilon());
}

} // namespace simhost::script
