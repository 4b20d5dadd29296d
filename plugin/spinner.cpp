#include "plugin/spinner.h"

namespace brimwave {
namespace {

constexpr std::wstring_view kFrames = L"|/-\\";
constexpr UINT kFrameMilliseconds = 150;

} // namespace

void Spinner::Show(HWND dialog, std::wstring_view text) {
    text_ = text;
    if (!running_) {
        frame_ = 0;
        running_ = true;
        SetTimer(dialog, timer_, kFrameMilliseconds, nullptr);
    }
    Paint(dialog);
}

void Spinner::Tick(HWND dialog) {
    if (!running_)
        return;
    frame_ = (frame_ + 1) % kFrames.size();
    Paint(dialog);
}

void Spinner::Stop(HWND dialog) noexcept {
    if (running_)
        KillTimer(dialog, timer_);
    running_ = false;
}

void Spinner::Paint(HWND dialog) const {
    const std::wstring shown = std::wstring(1, kFrames[frame_]) + L" " + text_;
    SetDlgItemTextW(dialog, label_, shown.c_str());
}

} // namespace brimwave
