#include "plugin/link_label.h"

#include "plugin/dialog_text.h"
#include "plugin/label_device.h"

#include <commctrl.h>

#include <algorithm>

namespace brimwave {
namespace {

bool IsPressKey(WPARAM key) {
    return key == VK_RETURN || key == VK_SPACE;
}

/// The system's own link colour is too pale to read in some themes.
COLORREF LinkColour() {
    const COLORREF background = GetSysColor(COLOR_3DFACE);
    const int brightness = GetRValue(background) + GetGValue(background) + GetBValue(background);
    return brightness > 3 * 128 ? RGB(0, 90, 180) : RGB(120, 190, 255);
}

/// Around the text, which stands in the middle of the label.
void DrawFocus(HWND label) {
    const LabelDevice device(label);
    if (!device.Get())
        return;
    const std::wstring text = WindowText(label);
    RECT area{};
    GetClientRect(label, &area);
    SIZE size{};
    GetTextExtentPoint32W(device.Get(), text.c_str(), static_cast<int>(text.size()), &size);
    const LONG margin = std::max(0L, (area.right - size.cx) / 2 - 3);
    area.left += margin;
    area.right -= margin;
    DrawFocusRect(device.Get(), &area);
}

LRESULT CALLBACK LinkProc(HWND label, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                          DWORD_PTR) {
    switch (message) {
    case WM_SETCURSOR:
        SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32649))); // the hand, IDC_HAND
        return TRUE;
    case WM_GETDLGCODE: {
        const auto* asked = reinterpret_cast<const MSG*>(lParam);
        return asked && IsPressKey(asked->wParam) ? DLGC_WANTMESSAGE : DLGC_STATIC;
    }
    case WM_KEYDOWN:
        if (IsPressKey(wParam))
            SendMessageW(GetParent(label), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(label), STN_CLICKED),
                         reinterpret_cast<LPARAM>(label));
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(label, nullptr, TRUE);
        return 0;
    case WM_PAINT: {
        const LRESULT result = DefSubclassProc(label, message, wParam, lParam);
        if (GetFocus() == label)
            DrawFocus(label);
        return result;
    }
    case WM_NCDESTROY:
        RemoveWindowSubclass(label, LinkProc, id);
        break;
    default:
        break;
    }
    return DefSubclassProc(label, message, wParam, lParam);
}

} // namespace

void LinkLabel::Attach(HWND label) {
    LOGFONTW look{};
    const auto dialogFont = reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0));
    if (dialogFont && GetObjectW(dialogFont, sizeof look, &look)) {
        look.lfUnderline = TRUE;
        font_.reset(CreateFontIndirectW(&look));
        SendMessageW(label, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), TRUE);
    }
    SetWindowSubclass(label, LinkProc, 1, 0);
}

HBRUSH LinkLabel::Colours(HDC device) {
    SetTextColor(device, LinkColour());
    SetBkMode(device, TRANSPARENT);
    return GetSysColorBrush(COLOR_3DFACE);
}

} // namespace brimwave
