#include "simhost/app/console.h"

#include "simhost/scene/text.h"

#include <windows.h>

namespace simhost {
namespace {

/// Straight to the handle: a pipe or a file gets UTF-8 whatever the console's code page is.
void WriteLine(DWORD stream, std::wstring_view line) {
    std::string bytes;
    for (const char c : WideToUtf8(line))
        if (c == '\n')
            bytes += " / ";
        else if (c != '\r')
            bytes += c;
    bytes += '\n';
    DWORD written = 0;
    WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
              nullptr);
}

} // namespace

void Say(std::wstring_view line) {
    WriteLine(STD_OUTPUT_HANDLE, line);
}

void SayError(std::wstring_view line) {
    WriteLine(STD_ERROR_HANDLE, L"error: " + std::wstring(line));
}

} // namespace simhost
