#include "simhost/app/picture.h"

#include <objidl.h>

#include <algorithm>
#include <memory>

namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#include <gdiplus.h>
#pragma GCC diagnostic pop

namespace simhost {
namespace {

constexpr CLSID pngEncoder = {
    0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};

class GdiplusSession {
  public:
    GdiplusSession() {
        const Gdiplus::GdiplusStartupInput input;
        started_ = Gdiplus::GdiplusStartup(&token_, &input, nullptr) == Gdiplus::Ok;
    }
    ~GdiplusSession() {
        if (started_)
            Gdiplus::GdiplusShutdown(token_);
    }
    GdiplusSession(const GdiplusSession&) = delete;
    GdiplusSession& operator=(const GdiplusSession&) = delete;

  private:
    ULONG_PTR token_ = 0;
    bool started_ = false;
};

struct ObjectDeleter {
    void operator()(void* object) const noexcept { DeleteObject(object); }
};
using BitmapOwner = std::unique_ptr<std::remove_pointer_t<HBITMAP>, ObjectDeleter>;

/// Copies the window's rectangle from the screen.
BitmapOwner CopyFromScreen(HWND window) {
    RECT area{};
    GetWindowRect(window, &area);
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    BitmapOwner bitmap(CreateCompatibleBitmap(screen, width, height));
    const HGDIOBJ before = SelectObject(memory, bitmap.get());
    BitBlt(memory, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return bitmap;
}

} // namespace

bool SaveWindowPicture(HWND window, const std::wstring& pngFile) {
    const BitmapOwner bitmap = CopyFromScreen(window);
    const GdiplusSession gdiplus;
    Gdiplus::Bitmap picture(bitmap.get(), nullptr);
    return picture.Save(pngFile.c_str(), &pngEncoder, nullptr) == Gdiplus::Ok;
}

} // namespace simhost
