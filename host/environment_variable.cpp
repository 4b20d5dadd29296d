#include "host/environment_variable.h"

#include <windows.h>

namespace brimwave {

std::wstring ReadEnvironmentVariable(const wchar_t* name) {
    std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    if (!text.empty())
        text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
    return text;
}

} // namespace brimwave
