#pragma once
#include <windows.h>

#include <atomic>
#include <functional>
#include <memory>
#include <string>

namespace simhost {

/// The host's main window and message loop. As in the real host, single letters are shortcuts
/// that no window gets to see while accelerators are on, and only registered dialogs get their
/// Tab and arrow keys. One at a time.
class HostWindow {
  public:
    /// Throws StartError when there is no display to make a window on.
    explicit HostWindow(const std::wstring& title);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    [[nodiscard]] HWND Handle() const { return window_; }
    /// The utility's place in the Utilities menu, and what choosing it does.
    void SetUtility(const std::wstring& category, const std::wstring& name,
                    std::function<void()> open);

    /// Handles messages until the user closes the window; it is destroyed with this object.
    void Run();
    /// The letters and digits that went to shortcuts so far.
    [[nodiscard]] std::wstring TakenKeys() const;

    // For another thread, while Run runs.

    /// False once the user has closed the window.
    [[nodiscard]] bool Running() const { return running_; }

    /// Runs `work` on the window's thread and waits for it. Exceptions come back to the caller.
    void Call(const std::function<void()>& work) const;
    /// A number that has grown by two or more when the loop has handled all that was posted
    /// before the first look at it. Messages handled inside other loops do not count.
    [[nodiscard]] unsigned IdleCount() const { return idleCount_; }
    /// Asks the window to close, which ends Run.
    void Close() const;

  private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnCommand(int id);
    void Paint() const;
    bool Translate(MSG& message) const;

    struct AcceleratorDeleter {
        void operator()(HACCEL table) const noexcept { DestroyAcceleratorTable(table); }
    };

    HWND window_ = nullptr;
    std::unique_ptr<std::remove_pointer_t<HACCEL>, AcceleratorDeleter> shortcuts_;
    std::function<void()> openUtility_;
    std::wstring takenKeys_;
    std::atomic<unsigned> idleCount_{0};
    std::atomic<bool> running_{true};
};

} // namespace simhost
