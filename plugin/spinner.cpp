#include "plugin/spinner.h"

#include "plugin/dialog_text.h"

namespace brimwave {
namespace {

constexpr std::wstring_view frames = L"|/-\\";
constexpr UINT frameMilliseconds = 150;

} // namespace

void Spinner::Show(HWND dialog, std::wstring_view text) {
    text_ = text;
    if (!running_) {
        frame_ = 0;
        running_ = true;
        SetTimer(dialog, timer_, frameMilliseconds, nullptr);
    }
    Paint(dialog);
}

void Spinner::Tick(HWND dialog) {
    if (!running_)
        return;
    frame_ = (frame_ + 1) % frames.size();
    Paint(dialog);
}

void Spinner::Stop(HWND dialog) noexcept {
    if (running_)
        KillTimer(dialog, timer_);
    running_ = false;
}

void Spinner::Paint(HWND dialog) const {
    SetControlText(dialog, label_, std::wstring(1, frames[frame_]) + L" " + text_);
}

} // namespace brimwave
