#pragma once
#include <windows.h>

#include <initializer_list>
#include <string>

namespace brimwave {

/// Shows the whole text of a label under the mouse when the label is too narrow for it.
class LabelTips {
  public:
    /// Takes care of labels without notifications of their own.
    void Attach(HWND dialog, std::initializer_list<int> labels);
    /// The dialog's WM_NOTIFY; false for one that is not about these tips.
    bool OnNotify(HWND dialog, NMHDR& header);

  private:
    std::wstring tipText_; // the tip points to it
};

} // namespace brimwave
