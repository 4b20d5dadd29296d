#include "simhost/app/robot.h"

#include "simhost/app/picture.h"

#include <algorithm>
#include <thread>

namespace simhost {
namespace {

constexpr auto pollInterval = std::chrono::milliseconds(4);
constexpr int messageBoxText = 0xFFFF; // the text control of every message box

bool HasClass(HWND window, std::wstring_view name) {
    wchar_t buffer[64] = {};
    GetClassNameW(window, buffer, ARRAYSIZE(buffer));
    return buffer == name;
}

std::vector<HWND> VisibleDialogs(DWORD thread) {
    std::vector<HWND> found;
    EnumThreadWindows(
        thread,
        [](HWND window, LPARAM list) -> BOOL {
            if (IsWindowVisible(window) && HasClass(window, L"#32770"))
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

/// The button of a message box to press: the wanted one, else the first of Yes, OK and the rest.
/// A box with OK alone may number it as Cancel.
HWND AnswerButton(HWND box, int wanted) {
    for (const int id : {wanted, IDYES, IDOK, IDCANCEL, IDNO, IDCLOSE})
        if (const HWND button = id ? GetDlgItem(box, id) : nullptr)
            return button;
    return nullptr;
}

bool IsPlainKey(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'0' && c <= L'9');
}

} // namespace

std::wstring Robot::TextOf(HWND window) {
    // The text may be set between the two calls: room for a longer one.
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 512, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

HWND Robot::WaitForWindow(const std::wstring& title, int control) {
    HWND found = nullptr;
    WaitUntil([&] {
        for (const HWND window : VisibleDialogs(uiThread_))
            if (TextOf(window) == title && GetDlgItem(window, control))
                found = window;
        return found != nullptr;
    });
    return found;
}

void Robot::WaitUntil(const std::function<bool()>& condition) {
    while (!condition())
        Poll();
}

void Robot::WaitUntilIdle() {
    const unsigned before = host_.IdleCount();
    while (host_.IdleCount() - before < 2) {
        PostMessageW(host_.Handle(), WM_NULL, 0, 0); // makes an idle loop turn once more
        Poll();
    }
}

void Robot::WaitUntilClosed() {
    while (host_.Running())
        Rest();
}

void Robot::WaitUntilSettled() {
    const auto settled = Clock::now() + std::chrono::milliseconds(200);
    WaitUntil([&] { return Clock::now() >= settled; });
}

void Robot::Poll() {
    if (!host_.Running())
        throw RobotTimeout();
    Rest();
}

void Robot::Rest() {
    if (Clock::now() >= deadline_)
        throw RobotTimeout();
    AnswerMessageBoxes();
    std::this_thread::sleep_for(pollInterval);
}

void Robot::AnswerMessageBoxes() {
    std::erase_if(answered_, [](HWND box) { return !IsWindow(box); });
    for (const HWND window : VisibleDialogs(uiThread_))
        if (GetDlgItem(window, messageBoxText) && answered_.insert(window).second)
            Answer(window);
}

void Robot::Answer(HWND box) {
    const ShownMessage message{TextOf(box), TextOf(GetDlgItem(box, messageBoxText))};
    messages_.push_back(message);
    if (seen_)
        seen_(message, box);
    int wanted = 0;
    if (GetDlgItem(box, IDNO) && !answers_.empty()) {
        wanted = answers_.front();
        answers_.pop_front();
    }
    PostMessageW(AnswerButton(box, wanted), BM_CLICK, 0, 0);
}

void Robot::Type(HWND edit, std::wstring_view text) {
    PostMessageW(edit, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(edit, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    PostMessageW(edit, EM_SETSEL, 0, -1);
    PostMessageW(edit, WM_CHAR, VK_BACK, 1);
    WaitUntilIdle();
    bool keysPending = false;
    for (const wchar_t c : text) {
        // A key that needs no other key with it goes the whole way of a key press, past the
        // host's shortcuts; its character comes out at the end of the queue.
        if (IsPlainKey(c)) {
            const WPARAM key = c >= L'a' ? static_cast<WPARAM>(c - L'a' + 'A') : c;
            PostMessageW(edit, WM_KEYDOWN, key, 1);
            PostMessageW(edit, WM_KEYUP, key, 0xC0000001);
        } else {
            if (keysPending)
                WaitUntilIdle();
            PostMessageW(edit, WM_CHAR, c, 1);
        }
        keysPending = IsPlainKey(c);
    }
    WaitUntilIdle();
}

void Robot::Press(HWND button) {
    PostMessageW(button, BM_CLICK, 0, 0);
}

bool Robot::SavePicture(HWND window, const std::wstring& pngFile) {
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    // The system brings finished drawing to the screen a moment later.
    WaitUntilSettled();
    return SaveWindowPicture(window, pngFile);
}

void Robot::PressKey(WORD key) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(uiThread_, &info);
    PostMessageW(info.hwndFocus, WM_KEYDOWN, key, 1);
    PostMessageW(info.hwndFocus, WM_KEYUP, key, 0xC0000001);
    WaitUntilIdle();
}

} // namespace simhost
