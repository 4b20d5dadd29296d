#pragma once
// The host around the scene: what the program that shows it sets and asks.
#include "maxapi.h"

#include <string>
#include <vector>

namespace simhost {

struct HostLogLine {
    DWORD type = 0; // SYSLOG_ERROR, ..
    std::wstring title;
    std::wstring text;
};

/// What plug-ins wrote to the system log since the program began.
[[nodiscard]] std::vector<HostLogLine>& HostLog();

/// The main window that plug-ins get as parent of theirs.
void SetHostWindow(HWND window);
/// The dialogs that asked for their keys.
[[nodiscard]] const std::vector<HWND>& RegisteredDialogs();
/// Full redraws that were asked for.
[[nodiscard]] int RedrawCount();

} // namespace simhost
