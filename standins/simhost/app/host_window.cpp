#include "simhost/app/host_window.h"

#include "simhost/app/options.h"
#include "simhost/core/host.h"

#include <max.h>

#include <exception>
#include <vector>

namespace simhost {
namespace {

constexpr const wchar_t* className = L"SimhostMainWindow";
constexpr UINT callMessage = WM_APP + 100; // the long parameter is a CallRequest
constexpr int exitCommand = 100;
constexpr int utilityCommand = 101;
constexpr int shortcutCommand = 1000; // plus the character

struct CallRequest {
    const std::function<void()>& work;
    std::exception_ptr failure;
};

HACCEL MakeShortcuts() {
    std::vector<ACCEL> table;
    for (WORD key = '0'; key <= 'Z'; ++key)
        if (key <= '9' || key >= 'A')
            table.push_back({FVIRTKEY, key, static_cast<WORD>(shortcutCommand + key)});
    return CreateAcceleratorTableW(table.data(), static_cast<int>(table.size()));
}

void RegisterWindowClass(WNDPROC procedure) {
    WNDCLASSEXW info{};
    info.cbSize = sizeof info;
    info.lpfnWndProc = procedure;
    info.hInstance = GetModuleHandleW(nullptr);
    info.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512)); // the arrow
    info.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_APPWORKSPACE + 1);
    info.lpszClassName = className;
    RegisterClassExW(&info); // fails only when it is there already
}

} // namespace

HostWindow::HostWindow(const std::wstring& title) : shortcuts_(MakeShortcuts()) {
    RegisterWindowClass(&HostWindow::WindowProc);
    const HMENU file = CreatePopupMenu();
    AppendMenuW(file, MF_STRING, exitCommand, L"E&xit");
    const HMENU menu = CreateMenu();
    AppendMenuW(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(file), L"&File");
    const UINT dpi = GetDpiForSystem();
    window_ = CreateWindowExW(0, className, title.c_str(), WS_OVERLAPPEDWINDOW, 0, 0,
                              MulDiv(760, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI),
                              MulDiv(820, static_cast<int>(dpi), USER_DEFAULT_SCREEN_DPI), nullptr,
                              menu, GetModuleHandleW(nullptr), this);
    if (!window_)
        throw StartError(L"no window could be made (is there a display?)");
    ShowWindow(window_, SW_SHOW);
    UpdateWindow(window_);
}

HostWindow::~HostWindow() {
    if (window_)
        DestroyWindow(window_);
}

void HostWindow::SetUtility(const std::wstring& category, const std::wstring& name,
                            std::function<void()> open) {
    openUtility_ = std::move(open);
    const HMENU group = CreatePopupMenu();
    AppendMenuW(group, MF_STRING, utilityCommand, name.c_str());
    const HMENU utilities = CreatePopupMenu();
    AppendMenuW(utilities, MF_POPUP, reinterpret_cast<UINT_PTR>(group), category.c_str());
    AppendMenuW(GetMenu(window_), MF_POPUP, reinterpret_cast<UINT_PTR>(utilities), L"&Utilities");
    DrawMenuBar(window_);
}

void HostWindow::Run() {
    MSG message{};
    running_ = true;
    for (;;) {
        if (!PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE))
            ++idleCount_;
        if (GetMessageW(&message, nullptr, 0, 0) <= 0)
            break;
        if (Translate(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    running_ = false;
}

/// Shortcuts first, whatever window has the focus; then the keys of registered dialogs.
bool HostWindow::Translate(MSG& message) const {
    if (AcceleratorsEnabled() && TranslateAcceleratorW(window_, shortcuts_.get(), &message))
        return true;
    const std::vector<HWND> dialogs = RegisteredDialogs(); // one may close meanwhile
    for (const HWND dialog : dialogs)
        if (IsDialogMessageW(dialog, &message))
            return true;
    return false;
}

std::wstring HostWindow::TakenKeys() const {
    return takenKeys_;
}

void HostWindow::Call(const std::function<void()>& work) const {
    CallRequest request{work, nullptr};
    SendMessageW(window_, callMessage, 0, reinterpret_cast<LPARAM>(&request));
    if (request.failure)
        std::rethrow_exception(request.failure);
}

void HostWindow::Close() const {
    PostMessageW(window_, WM_CLOSE, 0, 0);
}

LRESULT CALLBACK HostWindow::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* host = static_cast<HostWindow*>(
            reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams);
        host->window_ = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(host));
    }
    auto* host = reinterpret_cast<HostWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return host ? host->OnMessage(message, wParam, lParam)
                : DefWindowProcW(window, message, wParam, lParam);
}

LRESULT HostWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case callMessage: {
        auto* request = reinterpret_cast<CallRequest*>(lParam);
        try {
            request->work();
        } catch (...) {
            request->failure = std::current_exception();
        }
        return 0;
    }
    case WM_COMMAND:
        OnCommand(LOWORD(wParam));
        return 0;
    case WM_PAINT:
        Paint();
        return 0;
    case WM_CLOSE: // the window stays until the host has put its plug-ins away
        PostQuitMessage(0);
        return 0;
    case WM_NCDESTROY: {
        const HWND window = window_;
        window_ = nullptr;
        return DefWindowProcW(window, message, wParam, lParam);
    }
    default:
        return DefWindowProcW(window_, message, wParam, lParam);
    }
}

void HostWindow::OnCommand(int id) {
    if (id == exitCommand) {
        Close();
    } else if (id == utilityCommand && openUtility_) {
        openUtility_();
    } else if (id >= shortcutCommand) {
        takenKeys_ += static_cast<wchar_t>(id - shortcutCommand);
        InvalidateRect(window_, nullptr, TRUE);
    }
}

/// The shortcuts that were taken, so that a person sees where the letters went.
void HostWindow::Paint() const {
    PAINTSTRUCT paint{};
    const HDC device = BeginPaint(window_, &paint);
    const std::wstring text = takenKeys_.empty() ? L"" : L"Shortcuts: " + takenKeys_;
    SetBkMode(device, TRANSPARENT);
    TextOutW(device, 8, 8, text.c_str(), static_cast<int>(text.size()));
    EndPaint(window_, &paint);
}

} // namespace simhost
