#include "plugin/banner.h"

#include "plugin/gdiplus_headers.h"
#include "plugin/module.h"
#include "plugin/resource_ids.h"

#include <shlwapi.h>

namespace brimwave {
namespace {

struct ComReleaser {
    void operator()(IUnknown* object) const noexcept { object->Release(); }
};

std::unique_ptr<Gdiplus::Bitmap> DecodePng(int resource) {
    const HINSTANCE library = ModuleInstance();
    const HRSRC found = FindResourceW(library, MAKEINTRESOURCEW(resource), L"PNG");
    const HGLOBAL loaded = found ? LoadResource(library, found) : nullptr;
    const auto* bytes = loaded ? static_cast<const BYTE*>(LockResource(loaded)) : nullptr;
    if (!bytes)
        return nullptr;
    const std::unique_ptr<IStream, ComReleaser> stream(
        SHCreateMemStream(bytes, SizeofResource(library, found)));
    if (!stream)
        return nullptr;
    std::unique_ptr<Gdiplus::Bitmap> picture(Gdiplus::Bitmap::FromStream(stream.get()));
    if (picture && picture->GetLastStatus() != Gdiplus::Ok)
        picture.reset();
    return picture;
}

/// A 24-bit bitmap: a picture control copies bitmaps with an alpha channel, and then nobody
/// frees the copy.
GdiObject<HBITMAP> MakeCanvas(SIZE size, void*& bits) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 24;
    info.bmiHeader.biCompression = BI_RGB;
    return GdiObject<HBITMAP>(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
}

/// The scale that fits the picture into the control. One not far above 1 is taken as 1: the picture
/// stays as sharp as it was drawn, and its background fills what is left.
double ChooseScale(SIZE control, SIZE picture) {
    const double fit = std::min(static_cast<double>(control.cx) / picture.cx,
                                static_cast<double>(control.cy) / picture.cy);
    return fit >= 1.0 && fit < 1.3 ? 1.0 : fit;
}

void Draw(Gdiplus::Bitmap& picture, Gdiplus::Bitmap& canvas, SIZE size) {
    const SIZE source{static_cast<LONG>(picture.GetWidth()),
                      static_cast<LONG>(picture.GetHeight())};
    const double scale = ChooseScale(size, source);
    const int width = static_cast<int>(source.cx * scale + 0.5);
    const int height = static_cast<int>(source.cy * scale + 0.5);

    Gdiplus::Color background;
    picture.GetPixel(0, 0, &background);
    Gdiplus::Graphics graphics(&canvas);
    graphics.Clear(background);
    graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
    graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
    graphics.DrawImage(&picture,
                       Gdiplus::Rect((size.cx - width) / 2, (size.cy - height) / 2, width, height),
                       0, 0, source.cx, source.cy, Gdiplus::UnitPixel);
}

GdiObject<HBITMAP> MakeBanner(int resource, SIZE size) {
    const auto picture = DecodePng(resource);
    void* bits = nullptr;
    GdiObject<HBITMAP> bitmap = picture ? MakeCanvas(size, bits) : nullptr;
    if (!bitmap)
        return nullptr;
    const INT stride = (size.cx * 3 + 3) & ~3;
    Gdiplus::Bitmap canvas(size.cx, size.cy, stride, PixelFormat24bppRGB, static_cast<BYTE*>(bits));
    Draw(*picture, canvas, size);
    return bitmap;
}

} // namespace

int BannerResource(UINT dpi) {
    constexpr UINT largeFrom = 144;
    return (dpi ? dpi : USER_DEFAULT_SCREEN_DPI) < largeFrom ? IDB_BANNER : IDB_BANNER_LARGE;
}

void Banner::Show(HWND dialog, int control) {
    RECT area{};
    GetClientRect(GetDlgItem(dialog, control), &area);
    const int resource = BannerResource(GetDpiForWindow(dialog));
    if (area.right <= 0 || area.bottom <= 0)
        return;
    if (!bitmap_ || resource != resource_ || area.right != size_.cx || area.bottom != size_.cy) {
        bitmap_ = MakeBanner(resource, {area.right, area.bottom});
        resource_ = resource;
        size_ = {area.right, area.bottom};
    }
    if (bitmap_)
        SendDlgItemMessageW(dialog, control, STM_SETIMAGE, IMAGE_BITMAP,
                            reinterpret_cast<LPARAM>(bitmap_.get()));
}

} // namespace brimwave
