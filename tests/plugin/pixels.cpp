#include "tests/plugin/pixels.h"

#include "plugin/gdiplus_headers.h"

#include <set>

namespace brimwave::testing {

std::size_t Pixels::DistinctColours() const {
    return std::set<std::uint32_t>(colours.begin(), colours.end()).size();
}

std::size_t Pixels::DifferentFrom(const Pixels& other) const {
    if (width != other.width || height != other.height)
        return colours.size();
    std::size_t count = 0;
    for (std::size_t i = 0; i < colours.size(); ++i)
        count += colours[i] != other.colours[i];
    return count;
}

Pixels LoadPixels(const std::filesystem::path& file) {
    ULONG_PTR token = 0;
    const Gdiplus::GdiplusStartupInput input;
    if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok)
        return {};
    Pixels pixels;
    {
        Gdiplus::Bitmap picture(file.wstring().c_str());
        pixels.width = static_cast<int>(picture.GetWidth());
        pixels.height = static_cast<int>(picture.GetHeight());
        for (int y = 0; y < pixels.height; ++y)
            for (int x = 0; x < pixels.width; ++x) {
                Gdiplus::Color colour;
                picture.GetPixel(x, y, &colour);
                pixels.colours.push_back(colour.GetValue());
            }
    }
    Gdiplus::GdiplusShutdown(token);
    return pixels;
}

} // namespace brimwave::testing
