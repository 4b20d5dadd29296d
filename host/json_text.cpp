#include "host/json_text.h"

#include <max.h>

#include <charconv>
#include <cmath>

namespace brimwave {
namespace {

void AppendNarrow(std::wstring& out, const char* begin, const char* end) {
    out.append(begin, end); // digits, signs and points only: one unit each
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
    char digits[32];
    const auto end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 6).ptr;
    AppendNarrow(out, digits, end);
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
    text_ += L'"';
    text_ += key;
    text_ += L"\":";
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
