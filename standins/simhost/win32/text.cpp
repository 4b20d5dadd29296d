// Text and small calls of <windows.h> on this system. The system code page is Windows-1252.
#include "path.h"

#include "simhost/scene/text.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// Windows-1252, 0x80..0x9f; the rest of the page is Latin-1.
constexpr wchar_t ansi80[32] = {0x20ac, 0x81,   0x201a, 0x192,  0x201e, 0x2026, 0x2020, 0x2021,
                                0x2c6,  0x2030, 0x160,  0x2039, 0x152,  0x8d,   0x17d,  0x8f,
                                0x90,   0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                0x2dc,  0x2122, 0x161,  0x203a, 0x153,  0x9d,   0x17e,  0x178};

wchar_t FromAnsi(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xa0 ? ansi80[byte - 0x80] : static_cast<wchar_t>(byte);
}

/// 0 for a letter that the page lacks.
char ToAnsi(wchar_t c) {
    if (c < 0x80 || (c >= 0xa0 && c < 0x100))
        return static_cast<char>(c);
    const auto* found = std::find(std::begin(ansi80), std::end(ansi80), c);
    return found == std::end(ansi80) ? '\0' : static_cast<char>(0x80 + (found - ansi80));
}

std::wstring Widen(UINT codePage, std::string_view text) {
    if (codePage == CP_UTF8)
        return simhost::Utf8ToWide(text);
    std::wstring wide(text.size(), L'\0');
    std::transform(text.begin(), text.end(), wide.begin(), FromAnsi);
    return wide;
}

std::string Narrow(UINT codePage, std::wstring_view text, const char* defaultChar,
                   BOOL* usedDefault) {
    if (codePage == CP_UTF8)
        return simhost::WideToUtf8(text);
    std::string bytes;
    bool used = false;
    for (const wchar_t c : text) {
        const char byte = ToAnsi(c);
        const bool lacks = byte == '\0' && c != L'\0';
        bytes += lacks ? (defaultChar ? *defaultChar : '?') : byte;
        used = used || lacks;
    }
    if (usedDefault)
        *usedDefault = used ? TRUE : FALSE;
    return bytes;
}

/// The convention of both conversions: size 0 asks for the length, too small a buffer is 0.
template <class Text, class Char>
int Deliver(const Text& text, Char* out, int size) {
    const int length = static_cast<int>(text.size());
    if (size == 0)
        return length;
    if (size < length)
        return 0;
    std::copy(text.begin(), text.end(), out);
    return length;
}

/// Converts whole blocks as long as one unit is one byte; returns the number of units.
template <size_t block>
size_t CopyAsciiBlocks(std::wstring_view text, char* out) {
    size_t done = 0;
    for (; done + block <= text.size(); done += block) {
        std::uint32_t all = 0;
        for (size_t i = 0; i < block; ++i)
            all |= static_cast<std::uint32_t>(text[done + i]);
        if (all >= 0x80)
            break;
        for (size_t i = 0; i < block; ++i)
            out[done + i] = static_cast<char>(text[done + i]);
    }
    return done;
}

/// Converts as long as one unit is one byte, which nearly always is to the end, and no further than
/// `size`. Returns the number of units.
size_t CopyAscii(std::wstring_view text, char* out, int size) {
    text = text.substr(0, static_cast<size_t>(std::max(size, 0)));
    size_t done = CopyAsciiBlocks<64>(text, out); // the compiler makes few instructions of so many
    done += CopyAsciiBlocks<8>(text.substr(done), out + done);
    for (; done < text.size() && static_cast<std::uint32_t>(text[done]) < 0x80; ++done)
        out[done] = static_cast<char>(text[done]);
    return done;
}

int CompareFolded(const wchar_t* a, const wchar_t* b) {
    for (;; ++a, ++b) {
        const wchar_t x = simhost::FoldUnit(*a);
        const wchar_t y = simhost::FoldUnit(*b);
        if (x != y)
            return x < y ? -1 : 1;
        if (x == 0)
            return 0;
    }
}

} // namespace

int MultiByteToWideChar(UINT codePage, DWORD /*flags*/, const char* text, int bytes, LPWSTR out,
                        int size) {
    if (!text || bytes == 0)
        return 0;
    const size_t length = bytes < 0 ? std::strlen(text) + 1 : static_cast<size_t>(bytes);
    return Deliver(Widen(codePage, {text, length}), out, size);
}

int WideCharToMultiByte(UINT codePage, DWORD /*flags*/, LPCWSTR text, int units, char* out,
                        int size, const char* defaultChar, BOOL* usedDefault) {
    if (!text || units == 0)
        return 0;
    const size_t length = units < 0 ? std::wcslen(text) + 1 : static_cast<size_t>(units);
    const size_t ascii = codePage == CP_UTF8 ? CopyAscii({text, length}, out, size) : 0;
    if (ascii == length)
        return static_cast<int>(length);
    return Deliver(Narrow(codePage, {text, length}, defaultChar, usedDefault), out, size);
}

ULONGLONG GetTickCount64() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<ULONGLONG>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) {
    const char* value = std::getenv(simhost::WideToUtf8(name ? name : L"").c_str());
    if (!value) {
        simhost::win32::SetError(203); // no such variable
        return 0;
    }
    const std::wstring wide = simhost::Utf8ToWide(value);
    if (wide.size() + 1 > size)
        return static_cast<DWORD>(wide.size() + 1);
    std::copy(wide.begin(), wide.end(), buffer);
    buffer[wide.size()] = L'\0';
    return static_cast<DWORD>(wide.size());
}

int _wcsicmp(const wchar_t* a, const wchar_t* b) {
    return CompareFolded(a, b);
}

int _wtoi(const wchar_t* text) {
    return static_cast<int>(std::wcstol(text, nullptr, 10));
}
