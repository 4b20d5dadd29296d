#include "host/json_text.h"

#include <max.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace brimwave {
namespace {

/// Digits, signs and points only: one unit each.
void AppendNarrow(std::wstring& out, const char* begin, const char* end) {
    const size_t size = out.size();
    out.resize(size + static_cast<size_t>(end - begin));
    std::copy(begin, end, out.begin() + static_cast<std::ptrdiff_t>(size));
}

/// Places a point before the last `decimals` digits, with as many zeros before them as it takes.
char* WriteWithPoint(char* out, std::uint32_t digits, int decimals) {
    char text[16];
    const auto count = static_cast<int>(std::to_chars(text, text + sizeof text, digits).ptr - text);
    const char* next = text;
    for (int place = std::max(count - decimals, 1); place > 0; --place)
        *out++ = count > decimals ? *next++ : '0';
    if (decimals == 0)
        return out;
    *out++ = '.';
    out = std::fill_n(out, std::max(decimals - count, 0), '0');
    return std::copy(next, static_cast<const char*>(text) + count, out);
}

/// The text of a number between these, which has no exponent. Most numbers of a scene are such, and
/// the general way takes several times as long.
constexpr double leastFixed = 1e-4;
constexpr double mostFixed = 999999.5;

char* WriteFixed(char* out, double magnitude) {
    // A float has 24 bits and the power of ten at most 21 beside its twos: every product is exact.
    int decimals = 0;
    for (; magnitude < 100000; magnitude *= 10)
        ++decimals;
    auto digits = static_cast<std::uint32_t>(magnitude);
    const double rest = magnitude - digits;
    if (rest > 0.5 || (rest == 0.5 && digits % 2 == 1)) // ties to even
        ++digits;
    while (decimals > 0 && digits % 10 == 0) {
        digits /= 10;
        --decimals;
    }
    return WriteWithPoint(out, digits, decimals);
}

/// Six significant digits; the number is finite.
char* WriteNumber(char* out, char* end, float value) {
    if (std::signbit(value))
        *out++ = '-';
    const double magnitude = std::abs(static_cast<double>(value));
    if (magnitude == 0) {
        *out++ = '0';
        return out;
    }
    if (magnitude >= leastFixed && magnitude < mostFixed)
        return WriteFixed(out, magnitude);
    return std::to_chars(out, end, magnitude, std::chars_format::general, 6).ptr;
}

wchar_t HexDigit(unsigned value) {
    return L"0123456789abcdef"[value & 15];
}

void AppendEscape(std::wstring& out, wchar_t unit) {
    switch (unit) {
    case L'\t':
        out += L"\\t";
        return;
    case L'\n':
        out += L"\\n";
        return;
    case L'\r':
        out += L"\\r";
        return;
    case L'"':
        out += L"\\\"";
        return;
    case L'\\':
        out += L"\\\\";
        return;
    default: {
        const auto code = static_cast<unsigned>(unit);
        out += L"\\u00";
        out += HexDigit(code >> 4);
        out += HexDigit(code);
    }
    }
}

bool NeedsEscape(wchar_t unit) {
    return static_cast<std::uint32_t>(unit) < 32 || unit == L'"' || unit == L'\\';
}

} // namespace

void AppendJsonFloat(std::wstring& out, float value) {
    if (!std::isfinite(value)) {
        out += L"null";
        return;
    }
    char text[32];
    AppendNarrow(out, text, WriteNumber(text, text + sizeof text, value));
}

void AppendJsonInt(std::wstring& out, std::int64_t value) {
    char digits[24];
    AppendNarrow(out, digits, std::to_chars(digits, digits + sizeof digits, value).ptr);
}

void AppendJsonTriple(std::wstring& out, float a, float b, float c) {
    out += L'[';
    AppendJsonFloat(out, a);
    out += L',';
    AppendJsonFloat(out, b);
    out += L',';
    AppendJsonFloat(out, c);
    out += L']';
}

void AppendJsonEscaped(std::wstring& out, std::wstring_view text) {
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        if (!NeedsEscape(text[i]))
            continue;
        out.append(text, start, i - start);
        AppendEscape(out, text[i]);
        start = i + 1;
    }
    out.append(text, start);
}

void AppendJsonString(std::wstring& out, std::wstring_view text) {
    out += L'"';
    AppendJsonEscaped(out, text);
    out += L'"';
}

std::wstring FormatJsonFloat(float value) {
    std::wstring text;
    AppendJsonFloat(text, value);
    return text;
}

std::wstring FormatJsonPoint3(float x, float y, float z) {
    std::wstring text;
    AppendJsonTriple(text, x, y, z);
    return text;
}

std::wstring FormatJsonColor(float r, float g, float b) {
    return FormatJsonPoint3(r, g, b);
}

std::wstring FormatJsonQuat(const Quat& rotation) {
    std::wstring text = L"[";
    AppendJsonFloat(text, rotation.w);
    for (const float part : {rotation.x, rotation.y, rotation.z}) {
        text += L',';
        AppendJsonFloat(text, part);
    }
    text += L']';
    return text;
}

std::wstring EscapeJsonString(std::wstring_view text) {
    std::wstring escaped;
    escaped.reserve(text.size() + 8);
    AppendJsonEscaped(escaped, text);
    return escaped;
}

std::wstring_view BoolToJson(bool value) {
    return value ? L"true" : L"false";
}

void JsonMembers::Key(std::wstring_view key) {
    const size_t size = text_.size();
    text_.resize(size + key.size() + 3); // one growth for all parts
    wchar_t* out = text_.data() + size;
    *out++ = L'"';
    out = std::copy(key.begin(), key.end(), out);
    *out++ = L'"';
    *out = L':';
}

void JsonMembers::Add(std::wstring_view member) {
    text_ += member;
    End();
}

void JsonMembers::AddRaw(std::wstring_view key, std::wstring_view value) {
    Key(key);
    text_ += value;
    End();
}

void JsonMembers::AddFloat(std::wstring_view key, float value) {
    Key(key);
    AppendJsonFloat(text_, value);
    End();
}

void JsonMembers::AddInt(std::wstring_view key, std::int64_t value) {
    Key(key);
    AppendJsonInt(text_, value);
    End();
}

void JsonMembers::AddBool(std::wstring_view key, bool value) {
    AddRaw(key, BoolToJson(value));
}

void JsonMembers::AddString(std::wstring_view key, std::wstring_view text) {
    Key(key);
    AppendJsonString(text_, text);
    End();
}

void JsonMembers::AddTriple(std::wstring_view key, float a, float b, float c) {
    Key(key);
    AppendJsonTriple(text_, a, b, c);
    End();
}

std::wstring_view JsonMembers::operator[](size_t i) const {
    const size_t begin = i == 0 ? 0 : ends_[i - 1];
    return std::wstring_view(text_).substr(begin, ends_[i] - begin);
}

void JsonMembers::clear() {
    text_.clear();
    ends_.clear();
}

void AppendJoined(std::wstring& out, const JsonMembers& members, std::wstring_view prefix) {
    for (size_t i = 0; i < members.size(); ++i) {
        if (i > 0)
            out += L",\n";
        out += prefix;
        out += members[i];
    }
}

std::wstring JoinJsonMembers(const JsonMembers& members, std::wstring_view prefix) {
    std::wstring joined;
    AppendJoined(joined, members, prefix);
    return joined;
}

} // namespace brimwave
