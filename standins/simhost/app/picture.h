#pragma once
#include <windows.h>

#include <string>

namespace simhost {

/// Saves the screen where the window stands, frame included, as a PNG file. False when the file
/// could not be written. (The screen is the only place that has every control's drawing: not all
/// systems let controls draw into a picture of their window.)
[[nodiscard]] bool SaveWindowPicture(HWND window, const std::wstring& pngFile);

} // namespace simhost
