#include "simhost/app/stage_recorder.h"

#include "simhost/app/panel_controls.h"

#include <commctrl.h>

namespace simhost {
namespace {

std::wstring_view WithoutSpinner(std::wstring_view text) {
    constexpr std::wstring_view frames = L"|/-\\";
    const bool spinning =
        text.size() >= 2 && text[1] == L' ' && frames.find(text[0]) != std::wstring_view::npos;
    return spinning ? text.substr(2) : text;
}

} // namespace

void StageRecorder::Attach(HWND panel) {
    SetWindowSubclass(GetDlgItem(panel, statusLabel), &StageRecorder::LabelProc, 7,
                      reinterpret_cast<DWORD_PTR>(this));
}

std::vector<Stage> StageRecorder::Stages() const {
    const std::lock_guard lock(mutex_);
    return stages_;
}

LRESULT CALLBACK StageRecorder::LabelProc(HWND label, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR recorder) {
    if (message == WM_SETTEXT && lParam)
        reinterpret_cast<StageRecorder*>(recorder)->Note(label,
                                                         reinterpret_cast<const wchar_t*>(lParam));
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(label, &StageRecorder::LabelProc, id);
    return DefSubclassProc(label, message, wParam, lParam);
}

void StageRecorder::Note(HWND label, std::wstring_view text) {
    const Stage stage{
        static_cast<int>(SendDlgItemMessageW(GetParent(label), progressBar, PBM_GETPOS, 0, 0)),
        std::wstring(WithoutSpinner(text))};
    {
        const std::lock_guard lock(mutex_);
        if (!stages_.empty() && stages_.back() == stage)
            return;
        stages_.push_back(stage);
    }
    if (seen_)
        seen_(stage);
}

} // namespace simhost
