#pragma once
#include "simhost/app/host_window.h"

#include <windows.h>

#include <chrono>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace simhost {

struct ShownMessage {
    std::wstring caption;
    std::wstring text;
};

/// Thrown when what was waited for does not come in time, or cannot come any more because the
/// host was closed.
class RobotTimeout : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "timed out"; }
};

/// A user at the host's windows, on a thread of its own: finds windows, types, presses, reads,
/// and answers the message boxes that come up while it waits.
class Robot {
  public:
    using Clock = std::chrono::steady_clock;

    /// `uiThread` owns the windows. Every wait ends at `deadline` with RobotTimeout.
    Robot(const HostWindow& host, DWORD uiThread, Clock::time_point deadline)
        : host_(host), uiThread_(uiThread), deadline_(deadline) {}

    /// Answers of questions to come, in order: IDYES, IDNO. Without one, Yes and OK are pressed.
    void AnswerNext(int button) { answers_.push_back(button); }
    /// Called for each message box before it is answered.
    void OnMessageBox(std::function<void(const ShownMessage&, HWND)> seen) {
        seen_ = std::move(seen);
    }
    [[nodiscard]] const std::vector<ShownMessage>& Messages() const { return messages_; }

    /// The visible top-level window of this title that has a control `control`.
    [[nodiscard]] HWND WaitForWindow(const std::wstring& title, int control);
    /// Until the condition holds.
    void WaitUntil(const std::function<bool()>& condition);
    /// Until the host's own loop has handled everything posted so far.
    void WaitUntilIdle();

    /// Until the host has left its message loop, after its window was closed.
    void WaitUntilClosed();
    /// A moment, for what no event tells of: drawing that reaches the screen, windows that fill.
    void WaitUntilSettled();

    /// Clicks into an edit box, empties it and types the text key by key.
    void Type(HWND edit, std::wstring_view text);
    /// Presses a button, as a click does, and goes on at once.
    void Press(HWND button);
    /// One key, down and up, to the window with the focus.
    void PressKey(WORD key);

    /// A PNG of the window as it stands on the screen. False when it could not be written.
    [[nodiscard]] bool SavePicture(HWND window, const std::wstring& pngFile);

    [[nodiscard]] static std::wstring TextOf(HWND window);

  private:
    void Poll();
    void Rest();
    void AnswerMessageBoxes();
    void Answer(HWND box);

    const HostWindow& host_;
    const DWORD uiThread_;
    const Clock::time_point deadline_;
    std::deque<int> answers_;
    std::function<void(const ShownMessage&, HWND)> seen_;
    std::set<HWND> answered_;
    std::vector<ShownMessage> messages_;
};

} // namespace simhost
