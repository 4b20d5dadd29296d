#pragma once
#include <windows.h>

namespace brimwave {

/// A label's device context with the label's own font, for measuring and drawing outside of its
/// painting.
class LabelDevice {
  public:
    explicit LabelDevice(HWND label)
        : label_(label), device_(GetDC(label)),
          fontBefore_(SelectObject(
              device_, reinterpret_cast<HGDIOBJ>(SendMessageW(label, WM_GETFONT, 0, 0)))) {}
    ~LabelDevice() {
        SelectObject(device_, fontBefore_);
        ReleaseDC(label_, device_);
    }
    LabelDevice(const LabelDevice&) = delete;
    LabelDevice& operator=(const LabelDevice&) = delete;

    /// Null when the system gave none.
    [[nodiscard]] HDC Get() const { return device_; }

  private:
    HWND label_;
    HDC device_;
    HGDIOBJ fontBefore_;
};

} // namespace brimwave
