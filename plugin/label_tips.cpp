#include "plugin/label_tips.h"

#include "plugin/dialog_text.h"
#include "plugin/label_device.h"

#include <commctrl.h>

namespace brimwave {
namespace {

RECT AreaIn(HWND dialog, HWND label) {
    RECT area{};
    GetWindowRect(label, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

bool Fits(HWND label, const std::wstring& text) {
    RECT area{};
    GetClientRect(label, &area);
    RECT needed{};
    DrawTextW(LabelDevice(label).Get(), text.c_str(), -1, &needed,
              DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    return needed.right <= area.right;
}

} // namespace

void LabelTips::Attach(HWND dialog, std::initializer_list<int> labels) {
    // Owned by the dialog, so it goes with it.
    const HWND tips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, TTS_NOPREFIX, 0, 0,
                                      0, 0, dialog, nullptr, nullptr, nullptr);
    for (const int label : labels) {
        TTTOOLINFOW tool{};
        tool.cbSize = TTTOOLINFOW_V2_SIZE;
        tool.uFlags = TTF_SUBCLASS;
        tool.hwnd = dialog;
        tool.uId = static_cast<UINT_PTR>(label);
        tool.rect = AreaIn(dialog, GetDlgItem(dialog, label));
        tool.lpszText = LPSTR_TEXTCALLBACKW;
        SendMessageW(tips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

bool LabelTips::OnNotify(HWND dialog, NMHDR& header) {
    if (header.code != TTN_GETDISPINFOW)
        return false;
    const int label = static_cast<int>(header.idFrom);
    tipText_ = ControlText(dialog, label);
    if (Fits(GetDlgItem(dialog, label), tipText_))
        tipText_.clear(); // and then no tip appears
    reinterpret_cast<NMTTDISPINFOW&>(header).lpszText = tipText_.data();
    return true;
}

} // namespace brimwave
