#include "host/json_text.h"

#include <max.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace brimwave {
namespace {

// What these write ends at the pointer that they return; the room must be there.
constexpr size_t longestNumber = 32;
constexpr size_t longestTriple = 3 * longestNumber + 4;
constexpr size_t longestEscape = 6; // \uXXXX

wchar_t* Write(wchar_t* out, std::wstring_view text) {
    return std::copy(text.begin(), text.end(), out);
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

/// Six significant digits of a number that is finite and not negative.
char* WriteMagnitude(char* out, char* end, double magnitude) {
    if (magnitude < mostFixed) {
        const auto whole = static_cast<std::uint32_t>(magnitude);
        if (whole == magnitude)
            return std::to_chars(out, end, whole).ptr;
        if (magnitude >= leastFixed)
            return WriteFixed(out, magnitude);
    }
    return std::to_chars(out, end, magnitude, std::chars_format::general, 6).ptr;
}

wchar_t* WriteFloat(wchar_t* out, float value) {
    if (!std::isfinite(value))
        return Write(out, L"null");
    if (std::signbit(value))
        *out++ = L'-';
    char text[longestNumber];
    return std::copy(
        text, WriteMagnitude(text, std::end(text), std::abs(static_cast<double>(value))), out);
}

wchar_t* WriteInt(wchar_t* out, std::int64_t value) {
    char text[longestNumber];
    return std::copy(text, std::to_chars(text, std::end(text), value).ptr, out);
}

wchar_t* WriteTriple(wchar_t* out, float a, float b, float c) {
    *out++ = L'[';
    out = WriteFloat(out, a);
    *out++ = L',';
    out = WriteFloat(out, b);
    *out++ = L',';
    out = WriteFloat(out, c);
    *out++ = L']';
    return out;
}

bool NeedsEscape(wchar_t unit) {
    return (static_cast<std::uint32_t>(unit) < 32) | (unit == L'"') | (unit == L'\\');
}

size_t CountEscapes(std::wstring_view text) {
    size_t count = 0;
    for (const wchar_t unit : text)
        count += NeedsEscape(unit);
    return count;
}

wchar_t HexDigit(unsigned value) {
    return L"0123456789abcdef"[value & 15];
}

wchar_t* WriteEscape(wchar_t* out, wchar_t unit) {
    switch (unit) {
    case L'\t':
        return Write(out, L"\\t");
    case L'\n':
        return Write(out, L"\\n");
    case L'\r':
        return Write(out, L"\\r");
    case L'"':
        return Write(out, L"\\\"");
    case L'\\':
        return Write(out, L"\\\\");
    default: {
        const auto code = static_cast<unsigned>(unit);
        out = Write(out, L"\\u00");
        *out++ = HexDigit(code >> 4);
        *out++ = HexDigit(code);
        return out;
    }
    }
}

wchar_t* WriteEscaped(wchar_t* out, std::wstring_view text) {
    for (const wchar_t unit : text) {
        if (NeedsEscape(unit))
            out = WriteEscape(out, unit);
        else
            *out++ = unit;
    }
    return out;
}

} // namespace

void AppendJsonFloat(std::wstring& out, float value) {
    wchar_t text[longestNumber];
    out.append(text, static_cast<size_t>(WriteFloat(text, value) - text));
}

void AppendJsonInt(std::wstring& out, std::int64_t value) {
    wchar_t text[longestNumber];
    out.append(text, static_cast<size_t>(WriteInt(text, value) - text));
}

void AppendJsonTriple(std::wstring& out, float a, float b, float c) {
    wchar_t text[longestTriple];
    out.append(text, static_cast<size_t>(WriteTriple(text, a, b, c) - text));
}

void AppendJsonEscaped(std::wstring& out, std::wstring_view text) {
    const size_t escapes = CountEscapes(text);
    if (escapes == 0) {
        out += text;
        return;
    }
    const size_t size = out.size();
    out.resize(size + text.size() + escapes * longestEscape);
    out.resize(static_cast<size_t>(WriteEscaped(out.data() + size, text) - out.data()));
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

/// Where the next text is written, at most `size` units.
inline wchar_t* JsonMembers::Room(size_t size) {
    const size_t used = TextSize();
    if (text_.size() < used + size)
        text_.resize(std::max(used + size, 2 * text_.size()));
    return text_.data() + used;
}

/// Writes the key; `valueSize` units at most follow.
inline wchar_t* JsonMembers::Begin(std::wstring_view key, size_t valueSize) {
    wchar_t* out = Room(key.size() + 3 + valueSize);
    *out++ = L'"';
    out = Write(out, key);
    *out++ = L'"';
    *out++ = L':';
    return out;
}

inline void JsonMembers::End(const wchar_t* end) {
    ends_.push_back(static_cast<size_t>(end - text_.data()));
}

void JsonMembers::Add(std::wstring_view member) {
    End(Write(Room(member.size()), member));
}

void JsonMembers::AddRaw(std::wstring_view key, std::wstring_view value) {
    End(Write(Begin(key, value.size()), value));
}

void JsonMembers::AddFloat(std::wstring_view key, float value) {
    End(WriteFloat(Begin(key, longestNumber), value));
}

void JsonMembers::AddInt(std::wstring_view key, std::int64_t value) {
    End(WriteInt(Begin(key, longestNumber), value));
}

void JsonMembers::AddBool(std::wstring_view key, bool value) {
    AddRaw(key, BoolToJson(value));
}

void JsonMembers::AddString(std::wstring_view key, std::wstring_view text) {
    wchar_t* out = Begin(key, text.size() + CountEscapes(text) * longestEscape + 2);
    *out++ = L'"';
    out = WriteEscaped(out, text);
    *out++ = L'"';
    End(out);
}

void JsonMembers::AddTriple(std::wstring_view key, float a, float b, float c) {
    End(WriteTriple(Begin(key, longestTriple), a, b, c));
}

void AppendJoined(std::wstring& out, const JsonMembers& members, std::wstring_view prefix) {
    constexpr std::wstring_view separator = L",\n";
    const size_t size = out.size();
    const size_t between = separator.size() + prefix.size();
    out.resize(size + members.TextSize() + members.size() * between); // one growth for all
    wchar_t* next = out.data() + size;
    for (size_t i = 0; i < members.size(); ++i) {
        if (i > 0)
            next = Write(next, separator);
        next = Write(Write(next, prefix), members[i]);
    }
    out.resize(static_cast<size_t>(next - out.data()));
}

std::wstring JoinJsonMembers(const JsonMembers& members, std::wstring_view prefix) {
    std::wstring joined;
    AppendJoined(joined, members, prefix);
    return joined;
}

} // namespace brimwave
