#pragma once
#include <windows.h>

#include <string>
#include <string_view>

namespace brimwave {

/// A label's text with a turning bar before it while something runs. Holds the timer; the
/// dialog hands its ticks to Tick.
class Spinner {
  public:
    Spinner(UINT_PTR timer, int label) : timer_(timer), label_(label) {}

    /// Shows `text` behind the bar; starts the bar when it stands.
    void Show(HWND dialog, std::wstring_view text);
    /// Next frame. A tick that was still queued when the spinner stopped does nothing.
    void Tick(HWND dialog);
    /// Ends the timer if it runs; the label keeps what it shows.
    void Stop(HWND dialog) noexcept;

    [[nodiscard]] UINT_PTR Timer() const { return timer_; }

  private:
    void Paint(HWND dialog) const;

    const UINT_PTR timer_;
    const int label_;
    std::wstring text_;
    bool running_ = false;
    unsigned frame_ = 0;
};

} // namespace brimwave
