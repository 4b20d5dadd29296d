#pragma once
#include <windows.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace simhost {

/// What the panel showed: a status text and the progress bar's position with it.
struct Stage {
    int progress = 0;
    std::wstring text;
    friend bool operator==(const Stage&, const Stage&) = default;
};

/// Watches the panel's status label and notes every text that it is given, each once, without
/// the turning bar before it.
class StageRecorder {
  public:
    /// Begins to watch; call it on the panel's thread. Ends with the label's window.
    void Attach(HWND panel);
    /// Calls `seen` on the panel's thread with each stage, while the panel shows it. Set it
    /// before Attach.
    void OnStage(std::function<void(const Stage&)> seen) { seen_ = std::move(seen); }
    /// From any thread.
    [[nodiscard]] std::vector<Stage> Stages() const;

  private:
    static LRESULT CALLBACK LabelProc(HWND label, UINT message, WPARAM wParam, LPARAM lParam,
                                      UINT_PTR id, DWORD_PTR recorder);
    void Note(HWND label, std::wstring_view text);

    mutable std::mutex mutex_;
    std::vector<Stage> stages_;
    std::function<void(const Stage&)> seen_;
};

} // namespace simhost
