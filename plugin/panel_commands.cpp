// What the panel's controls do.
#include "plugin/panel.h"

#include "host/text.h"
#include "pipeline/export_sequence.h"
#include "pipeline/service_address.h"
#include "plugin/dialog_text.h"
#include "plugin/folder_browser.h"
#include "plugin/panel_view.h"
#include "plugin/settings.h"

#include <shellapi.h>

namespace brimwave {
namespace {

/// Sets a flag and clears it on every way out.
class RunningMark {
  public:
    explicit RunningMark(bool& flag) : flag_(flag) { flag_ = true; }
    ~RunningMark() { flag_ = false; }
    RunningMark(const RunningMark&) = delete;
    RunningMark& operator=(const RunningMark&) = delete;

  private:
    bool& flag_;
};

bool IsWebAddress(std::wstring_view address) {
    return address.starts_with(L"https://") || address.starts_with(L"http://");
}

} // namespace

void Panel::ShowMessage(const std::wstring& text) {
    PanelView(state_).ShowMessage(text, L"Brimwave Platform", MessageIcon::None);
}

void Panel::OnSave() {
    const std::wstring typed = ControlText(state_.dialog, IDC_TOKEN);
    const std::wstring_view token = Trimmed(typed);
    SaveToken(token);
    ShowMessage(token.empty() ? L"Token is empty - enter a token from " + ServiceDashboardAddress()
                              : std::wstring(L"Token saved."));
}

void Panel::OnRefresh() {
    const std::wstring typed = ControlText(state_.dialog, IDC_TOKEN);
    const std::wstring_view token = Trimmed(typed);
    if (token.empty())
        return ShowMessage(L"Enter an API token.");
    if (check_)
        return;
    state_.refreshButton.Enable(state_.dialog, false);
    state_.balanceSpinner.Show(state_.dialog, L"Checking...");
    check_ = BalanceCheck::Start(state_.dialog, ServiceBaseAddress(), token);
    if (!check_) {
        BalanceResult failure;
        failure.error = L"The check could not be started.";
        ShowBalance(failure);
    }
}

void Panel::OnBalanceChecked(LPARAM record) {
    // Anyone can post a message of this number; only the record that is waited for counts.
    const std::unique_ptr<BalanceResult> result = check_ ? check_->Take(record) : nullptr;
    if (!result)
        return;
    check_.reset();
    ShowBalance(*result);
}

void Panel::ShowBalance(const BalanceResult& result) {
    PanelView view(state_);
    state_.balanceSpinner.Stop(state_.dialog);
    state_.refreshButton.Enable(state_.dialog, true);
    if (result.ok) {
        view.SetBalanceText(FormatBalanceText(result));
    } else if (result.IsTokenRefused()) {
        view.SetBalanceText(L"Invalid token");
        ShowMessage(RefusedTokenText());
    } else {
        view.SetBalanceText(L"Error");
        ShowMessage(L"Connection error:\n" + result.error);
    }
}

void Panel::OnBrowse() {
    const auto folder = BrowseForFolder(state_.dialog, ControlText(state_.dialog, IDC_FOLDER));
    if (!folder)
        return;
    SetControlText(state_.dialog, IDC_FOLDER, *folder);
    SaveExchangeFolder(*folder);
}

void Panel::OnExport() {
    // Messages are handled during an export, so a click may come in the middle of one.
    if (state_.exporting)
        return;
    const RunningMark running(state_.exporting);
    PanelView view(state_);
    ExportAndSend(view);
}

void Panel::OnLink() {
    const std::wstring address = ServiceWebAddress();
    if (IsWebAddress(address))
        ShellExecuteW(state_.dialog, L"open", address.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

} // namespace brimwave
