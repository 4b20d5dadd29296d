#pragma once
#include "plugin/gdi_object.h"

#include <windows.h>

namespace brimwave {

/// Makes a static control of the panel look and act like a link: underlined, a hand as cursor,
/// and with the keyboard focus on it Space and Enter count as a click.
class LinkLabel {
  public:
    void Attach(HWND label);
    /// Frees the font; call it when the window is gone.
    void Release() noexcept { font_.reset(); }

    /// The answer to WM_CTLCOLORSTATIC for the label: prepares the colours, gives the brush.
    [[nodiscard]] static HBRUSH Colours(HDC device);

  private:
    GdiObject<HFONT> font_;
};

} // namespace brimwave
