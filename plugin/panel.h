#pragma once
#include "plugin/accelerator_pause.h"
#include "plugin/balance_check.h"
#include "plugin/banner.h"
#include "plugin/label_tips.h"
#include "plugin/link_label.h"
#include "plugin/panel_state.h"
#include "service/account.h"

#include <windows.h>

#include <memory>
#include <optional>

namespace brimwave {

/// The panel: one modeless dialog at most, and everything that it keeps. All calls belong to the
/// host's user-interface thread; none throws.
class Panel {
  public:
    Panel() = default;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /// Opens the panel over `owner`, or brings the open one to the foreground.
    void Open(HWND owner) noexcept;
    /// Destroys the window if there is one.
    void Close() noexcept;
    /// Frees the banner, which is kept from one window to the next.
    void ReleaseBanner() noexcept { banner_.Release(); }

  private:
    static INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam,
                                       LPARAM lParam) noexcept;
    INT_PTR OnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void OnInit(HWND dialog);
    void OnDestroy();
    void OnTimer(WPARAM timer);
    void OnCommand(int control, int notification);
    void OnEditFocus(int control, bool gained);

    void ApplySettings();
    void SetFirstFocus();

    void OnSave();
    void OnRefresh();
    void OnBalanceChecked(LPARAM record);
    void ShowBalance(const BalanceResult& result);
    void OnBrowse();
    void OnExport();
    void OnLink();
    void ShowMessage(const std::wstring& text);

    PanelState state_;
    Banner banner_;
    LinkLabel link_;
    LabelTips tips_;
    std::optional<AcceleratorPause> typing_; // while an edit box has the focus
    std::unique_ptr<BalanceCheck> check_;    // while one runs
};

} // namespace brimwave
