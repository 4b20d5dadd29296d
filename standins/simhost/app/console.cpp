#include "simhost/app/console.h"

#include "text/utf8.h"

#include <windows.h>

namespace simhost {
namespace {

/// Straight to the handle: a pipe or a file gets UTF-8 whatever the console's code page is.
void Write(DWORD stream, std::wstring_view text) {
    const std::string bytes = utf8::FromWide(text) + '\n';
    DWORD written = 0;
    WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
              nullptr);
}

std::wstring OnOneLine(std::wstring_view text) {
    std::wstring line;
    for (const wchar_t c : text)
        if (c == L'\n')
            line += L" / ";
        else if (c != L'\r')
            line += c;
    return line;
}

} // namespace

void Print(std::wstring_view text) {
    Write(STD_OUTPUT_HANDLE, text);
}

void Say(std::wstring_view line) {
    Write(STD_OUTPUT_HANDLE, OnOneLine(line));
}

void SayError(std::wstring_view line) {
    Write(STD_ERROR_HANDLE, L"error: " + OnOneLine(line));
}

} // namespace simhost
