#pragma once
#include <windows.h>

namespace brimwave {

/// The library's own module handle, known since it was loaded.
[[nodiscard]] HINSTANCE ModuleInstance() noexcept;

/// Starts GDI+; calling it again while it runs changes nothing.
void StartGdiplus() noexcept;
/// Stops GDI+ if it was started.
void StopGdiplus() noexcept;

} // namespace brimwave
