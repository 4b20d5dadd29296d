#pragma once
#include <windows.h>

namespace brimwave {

/// A button that is off while its work runs. A control that is off but has the keyboard focus
/// would leave the keyboard dead, so the focus moves to the control before it (where a key pressed
/// by habit does no harm), and comes back afterwards unless the user has moved it since.
class BusyButton {
  public:
    explicit BusyButton(int control) : control_(control) {}

    void Enable(HWND dialog, bool on);

  private:
    const int control_;
    HWND focusWentTo_ = nullptr;
};

} // namespace brimwave
