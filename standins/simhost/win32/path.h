#pragma once
#include <windows.h>

#include <string>

namespace simhost::win32 {

/// A Windows path for the calls of this system: slashes turned, UTF-8.
[[nodiscard]] std::string NativePath(LPCWSTR path);
/// Keeps what GetLastError answers.
void SetError(DWORD code);
/// Keeps the error code that stands for an errno.
void SetErrorFromErrno();

} // namespace simhost::win32
