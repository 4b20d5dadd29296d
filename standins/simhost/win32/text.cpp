// Text and small calls of <windows.h> on this system. The system code page is Windows-1252.
#include "path.h"

#include "text/cp1252.h"
#include "text/utf8.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>

namespace {

std::wstring Widen(UINT codePage, std::string_view text) {
    if (codePage == CP_UTF8)
        return utf8::ToWide(text);
    return cp1252::ToWide(text);
}

std::string Narrow(UINT codePage, std::wstring_view text, const char* defaultChar,
                   BOOL* usedDefault) {
    if (codePage == CP_UTF8)
        return utf8::FromWide(text);
    std::string bytes;
    bool used = false;
    for (const wchar_t c : text) {
        const auto byte = cp1252::FromUnit(c);
        bytes += byte.value_or(defaultChar ? *defaultChar : '?');
        used = used || !byte;
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
    return Deliver(Narrow(codePage, {text, length}, defaultChar, usedDefault), out, size);
}

ULONGLONG GetTickCount64() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<ULONGLONG>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size) {
    const char* value = std::getenv(utf8::FromWide(name ? name : L"").c_str());
    if (!value) {
        simhost::win32::SetError(203); // no such variable
        return 0;
    }
    const std::wstring wide = utf8::ToWide(value);
    if (wide.size() + 1 > size)
        return static_cast<DWORD>(wide.size() + 1);
    std::copy(wide.begin(), wide.end(), buffer);
    buffer[wide.size()] = L'\0';
    return static_cast<DWORD>(wide.size());
}

int _wcsicmp(const wchar_t* a, const wchar_t* b) {
    return wcscasecmp(a, b);
}

int _wtoi(const wchar_t* text) {
    return static_cast<int>(std::wcstol(text, nullptr, 10));
}
