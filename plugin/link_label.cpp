#include "plugin/link_label.h"

#include <commctrl.h>

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

void DrawFocus(HWND label) {
    RECT area{};
    GetClientRect(label, &area);
    if (const HDC device = GetDC(label)) {
        DrawFocusRect(device, &area);
        ReleaseDC(label, device);
    }
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
