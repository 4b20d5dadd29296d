#pragma once
#include "plugin/busy_button.h"
#include "plugin/resource_ids.h"
#include "plugin/spinner.h"

namespace brimwave {

/// What the panel and a running export share. It outlives the window: the user may close the
/// panel, and open it again, while an export runs.
struct PanelState {
    HWND dialog = nullptr; // null while the panel is closed
    Spinner statusSpinner{1001, IDC_STATUS};
    Spinner balanceSpinner{1002, IDC_BALANCE};
    BusyButton exportButton{IDC_EXPORT};
    BusyButton refreshButton{IDC_REFRESH};
    bool exporting = false;
    bool olderBlenderTarget = false; // as last seen; for an export whose panel was closed
};

} // namespace brimwave
