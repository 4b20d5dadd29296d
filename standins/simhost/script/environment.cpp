#include "simhost/script/environment.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cstdlib>

#include "simhost/script/text.h"
#endif

namespace simhost::script {

#ifdef _WIN32

std::optional<std::wstring> ReadEnvironment(const std::wstring& name) {
    SetLastError(ERROR_SUCCESS);
    const DWORD size = GetEnvironmentVariableW(name.c_str(), nullptr, 0);
    if (size == 0)
        return GetLastError() == ERROR_ENVVAR_NOT_FOUND ? std::nullopt
                                                        : std::optional(std::wstring());
    std::wstring value(size, L'\0');
    value.resize(GetEnvironmentVariableW(name.c_str(), value.data(), size));
    return value;
}

bool WriteEnvironment(const std::wstring& name, const std::wstring& value) {
    return SetEnvironmentVariableW(name.c_str(), value.empty() ? nullptr : value.c_str()) != 0;
}

#else

std::optional<std::wstring> ReadEnvironment(const std::wstring& name) {
    const char* value = std::getenv(ToUtf8(name).c_str());
    return value ? std::optional(FromUtf8(value)) : std::nullopt;
}

bool WriteEnvironment(const std::wstring& name, const std::wstring& value) {
    const std::string key = ToUtf8(name);
    if (value.empty())
        return unsetenv(key.c_str()) == 0;
    return setenv(key.c_str(), ToUtf8(value).c_str(), 1) == 0;
}

#endif

} // namespace simhost::script
