#pragma once
#include "plugin/gdi_object.h"

#include <windows.h>

namespace brimwave {

/// The picture at the panel's top, decoded once for a size and kept until it is released.
class Banner {
  public:
    /// Sets the picture that suits the window's DPI into the picture control, scaled to it.
    void Show(HWND dialog, int control);
    void Release() noexcept { bitmap_.reset(); }

  private:
    GdiObject<HBITMAP> bitmap_;
    int resource_ = 0;
    SIZE size_{};
};

/// The PNG resource for a display of `dpi` dots an inch (0 counts as 96).
[[nodiscard]] int BannerResource(UINT dpi);

} // namespace brimwave
