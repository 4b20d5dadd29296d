#include "simhost/scene/text.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cwctype>

namespace simhost {

namespace {

constexpr std::uint32_t replacement = 0xfffd;

void AppendUnits(std::wstring& out, std::uint32_t code) {
    if (code < 0x10000) {
        out += static_cast<wchar_t>(code);
        return;
    }
    code -= 0x10000;
    out += static_cast<wchar_t>(0xd800 + (code >> 10));
    out += static_cast<wchar_t>(0xdc00 + (code & 0x3ff));
}

void AppendBytes(std::string& out, std::uint32_t code) {
    const auto byte = [&](std::uint32_t value) { out += static_cast<char>(value); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xc0 | (code >> 6));
        byte(0x80 | (code & 0x3f));
    } else if (code < 0x10000) {
        byte(0xe0 | (code >> 12));
        byte(0x80 | ((code >> 6) & 0x3f));
        byte(0x80 | (code & 0x3f));
    } else {
        byte(0xf0 | (code >> 18));
        byte(0x80 | ((code >> 12) & 0x3f));
        byte(0x80 | ((code >> 6) & 0x3f));
        byte(0x80 | (code & 0x3f));
    }
}

/// Reads one character from the front; at least one byte is taken.
std::uint32_t TakeCode(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const int extra = lead >= 0xf0 && lead < 0xf5 ? 3 : lead >= 0xe0 ? 2 : lead >= 0xc2 ? 1 : 0;
    if (extra == 0 || lead >= 0xf5)
        return replacement;
    std::uint32_t code = lead & (0x3fu >> extra);
    for (int i = 0; i < extra; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text[0]) & 0xc0) != 0x80)
            return replacement;
        code = (code << 6) | (static_cast<unsigned char>(text[0]) & 0x3f);
        text.remove_prefix(1);
    }
    const bool overlong = (extra == 2 && code < 0x800) || (extra == 3 && code < 0x10000);
    if (overlong || code > 0x10ffff || (code >= 0xd800 && code < 0xe000))
        return replacement;
    return code;
}

} // namespace

std::wstring Utf8ToWide(std::string_view text) {
    std::wstring out;
    out.reserve(text.size());
    while (!text.empty())
        AppendUnits(out, TakeCode(text));
    return out;
}

std::string WideToUtf8(std::wstring_view text) {
    const auto ascii = [](wchar_t unit) { return static_cast<std::uint32_t>(unit) < 0x80; };
    const auto narrow = [](wchar_t unit) { return static_cast<char>(unit); };
    const auto end = std::find_if_not(text.begin(), text.end(), ascii); // mostly the end
    std::string out(static_cast<size_t>(end - text.begin()), '\0');
    std::transform(text.begin(), end, out.begin(), narrow);
    out.reserve(text.size());
    for (size_t i = out.size(); i < text.size(); ++i) {
        auto code = static_cast<std::uint32_t>(text[i]) & 0xffffu;
        if (code >= 0xd800 && code < 0xdc00 && i + 1 < text.size()) {
            const auto low = static_cast<std::uint32_t>(text[i + 1]);
            if (low >= 0xdc00 && low < 0xe000) {
                code = 0x10000 + ((code - 0xd800) << 10) + (low - 0xdc00);
                ++i;
            }
        }
        if (code >= 0xd800 && code < 0xe000)
            code = replacement;
        AppendBytes(out, code);
    }
    return out;
}

wchar_t FoldUnit(wchar_t unit) {
    if (unit < 128)
        return unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + 32) : unit;
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
}

std::wstring Fold(std::wstring_view text) {
    std::wstring out(text);
    for (wchar_t& c : out)
        c = FoldUnit(c);
    return out;
}

std::wstring_view FolderOf(std::wstring_view path) {
    const size_t slash = path.find_last_of(L"\\/");
    return slash == std::wstring_view::npos ? std::wstring_view() : path.substr(0, slash + 1);
}

std::wstring_view FileNameOf(std::wstring_view path) {
    return path.substr(FolderOf(path).size());
}

bool IsAbsolutePath(std::wstring_view path) {
    if (path.empty())
        return false;
    return path[0] == L'/' || path[0] == L'\\' || (path.size() > 1 && path[1] == L':');
}

std::wstring JoinPath(std::wstring_view base, std::wstring_view relative) {
    std::wstring out(base);
    if (!out.empty() && out.back() != L'/' && out.back() != L'\\')
        out += out.find(L'\\') == std::wstring::npos && out.find(L'/') != std::wstring::npos
                   ? L'/'
                   : L'\\';
    return out.append(relative);
}

bool FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

} // namespace simhost
