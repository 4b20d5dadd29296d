#include "plugin/dialog_text.h"

namespace brimwave {

std::wstring WindowText(HWND window) {
    const int length = GetWindowTextLengthW(window);
    if (length <= 0)
        return {};
    // The call writes an end mark too, for which the string has room of its own.
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    const int copied = GetWindowTextW(window, text.data(), length + 1);
    text.resize(static_cast<std::size_t>(copied));
    return text;
}

std::wstring ControlText(HWND dialog, int control) {
    return WindowText(GetDlgItem(dialog, control));
}

void SetControlText(HWND dialog, int control, std::wstring_view text) {
    SetDlgItemTextW(dialog, control, std::wstring(text).c_str());
}

void DrainMessages() {
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

} // namespace brimwave
