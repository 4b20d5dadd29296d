#include "plugin/busy_button.h"

namespace brimwave {

void BusyButton::Enable(HWND dialog, bool on) {
    const HWND button = GetDlgItem(dialog, control_);
    if (!button)
        return;
    if (!on && GetFocus() == button) {
        SendMessageW(dialog, WM_NEXTDLGCTL, TRUE, FALSE); // to the one before
        focusWentTo_ = GetFocus();
    }
    EnableWindow(button, on);
    if (on && focusWentTo_ && GetFocus() == focusWentTo_)
        SendMessageW(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
    if (on)
        focusWentTo_ = nullptr;
}

} // namespace brimwave
