#include "host/json_text.h"

#include "host/number_text.h"

#include <max.h>

#include <algorithm>
#include <cmath>

namespace brimwave {
namespace {

bool NeedsEscape(wchar_t unit) {
    return static_cast<std::uint32_t>(unit) < 32 || unit == L'"' || unit == L'\\';
}

void AppendEscape(std::wstring& out, wchar_t unit) {
    constexpr std::wstring_view hex = L"0123456789abcdef";
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
    case L'\\':
        out += L'\\';
        out += unit;
        return;
    default:
        out += L"\\u00";
        out += hex[static_cast<size_t>(unit) >> 4];
        out += hex[static_cast<size_t>(unit) & 15];
    }
}

void AppendEscaped(std::wstring& out, std::wstring_view text) {
    for (;;) {
        const auto escape = std::find_if(text.begin(), text.end(), NeedsEscape);
        const auto plain = static_cast<size_t>(escape - text.begin());
        out += text.substr(0, plain);
        if (plain == text.size())
            return;
        AppendEscape(out, *escape);
        text.remove_prefix(plain + 1);
    }
}

} // namespace

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
    AppendEscaped(escaped, text);
    return escaped;
}

std::wstring_view BoolToJson(bool value) {
    return value ? L"true" : L"false";
}

void AppendJsonFloat(std::wstring& out, float value) {
    if (std::isfinite(value))
        AppendNumber(out, value);
    else
        out += L"null";
}

void AppendJsonInt(std::wstring& out, std::int64_t value) {
    AppendNumber(out, value);
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

void AppendJsonString(std::wstring& out, std::wstring_view text) {
    out += L'"';
    AppendEscaped(out, text);
    out += L'"';
}

void JsonMembers::Begin(std::wstring_view key) {
    text_ += L'"';
    text_ += key;
    text_ += L"\":";
}

void JsonMembers::Add(std::wstring_view member) {
    text_ += member;
    End();
}

void JsonMembers::AddRaw(std::wstring_view key, std::wstring_view value) {
    Begin(key);
    text_ += value;
    End();
}

void JsonMembers::AddFloat(std::wstring_view key, float value) {
    Begin(key);
    AppendJsonFloat(text_, value);
    End();
}

void JsonMembers::AddInt(std::wstring_view key, std::int64_t value) {
    Begin(key);
    AppendJsonInt(text_, value);
    End();
}

void JsonMembers::AddBool(std::wstring_view key, bool value) {
    AddRaw(key, BoolToJson(value));
}

void JsonMembers::AddString(std::wstring_view key, std::wstring_view text) {
    Begin(key);
    AppendJsonString(text_, text);
    End();
}

std::wstring JoinJsonMembers(const JsonMembers& members, std::wstring_view prefix) {
    constexpr std::wstring_view separator = L",\n";
    const size_t between = separator.size() + prefix.size();
    std::wstring joined(members.TextSize() + members.Count() * between, L'\0');
    wchar_t* next = joined.data();
    const auto write = [&](std::wstring_view text) {
        next = std::copy(text.begin(), text.end(), next);
    };
    for (size_t i = 0; i < members.Count(); ++i) {
        if (i > 0)
            write(separator);
        write(prefix);
        write(members[i]);
    }
    joined.resize(static_cast<size_t>(next - joined.data()));
    return joined;
}

} // namespace brimwave
