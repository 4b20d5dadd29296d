#pragma once
#include <windows.h>

#include <string>
#include <string_view>

namespace brimwave {

/// The whole text of a window or control, however long; empty when there is none.
[[nodiscard]] std::wstring WindowText(HWND window);
[[nodiscard]] std::wstring ControlText(HWND dialog, int control);
void SetControlText(HWND dialog, int control, std::wstring_view text);

/// Handles every message that waits for this thread, so that windows repaint during long work on
/// it. A request to quit is left for the host's own loop.
void DrainMessages();

} // namespace brimwave
