#include "plugin/panel_view.h"

#include "plugin/dialog_text.h"

#include <max.h>

#include <commctrl.h>

namespace brimwave {

std::wstring PanelView::Token() {
    return ControlText(state_.dialog, IDC_TOKEN);
}

std::wstring PanelView::ExchangeFolder() {
    return ControlText(state_.dialog, IDC_FOLDER);
}

bool PanelView::BakeGeometry() {
    return IsDlgButtonChecked(state_.dialog, IDC_BAKE) == BST_CHECKED;
}

bool PanelView::OlderBlenderTarget() {
    if (state_.dialog)
        state_.olderBlenderTarget = IsDlgButtonChecked(state_.dialog, IDC_PATH_A) == BST_CHECKED;
    return state_.olderBlenderTarget;
}

void PanelView::SetStatus(int progress, std::wstring_view text, bool busy) {
    if (const HWND dialog = state_.dialog) {
        SendDlgItemMessageW(dialog, IDC_PROGRESS, PBM_SETPOS, static_cast<WPARAM>(progress), 0);
        if (busy) {
            state_.statusSpinner.Show(dialog, text);
        } else {
            state_.statusSpinner.Stop(dialog);
            SetControlText(dialog, IDC_STATUS, text);
        }
    }
    DrainMessages();
}

void PanelView::ShowError(std::wstring_view message) {
    SetStatus(100, L"Error.", false);
    SetJobLabel(L"");
    ShowMessage(message, L"Brimwave Platform - Error", MessageIcon::Error);
}

void PanelView::ShowMessage(std::wstring_view text, std::wstring_view caption, MessageIcon icon) {
    ShowBox(text, caption, MB_OK | (icon == MessageIcon::Error ? MB_ICONERROR : 0));
}

bool PanelView::Confirm(std::wstring_view text, std::wstring_view caption) {
    return ShowBox(text, caption, MB_YESNO | MB_ICONWARNING) == IDYES;
}

int PanelView::ShowBox(std::wstring_view text, std::wstring_view caption, UINT type) {
    HWND owner = state_.dialog;
    if (Interface* host = owner ? nullptr : GetCOREInterface())
        owner = host->GetMAXHWnd();
    return MessageBoxW(owner, std::wstring(text).c_str(), std::wstring(caption).c_str(), type);
}

void PanelView::SetBalanceText(std::wstring_view text) {
    SetControlText(state_.dialog, IDC_BALANCE, text);
}

void PanelView::SetJobLabel(std::wstring_view text) {
    SetControlText(state_.dialog, IDC_JOB, text);
}

void PanelView::EnableExport(bool on) {
    state_.exportButton.Enable(state_.dialog, on);
}

} // namespace brimwave
