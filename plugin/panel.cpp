// The panel's window: opening, closing, and the way from a message to its handler. What the
// controls do is in panel_commands.cpp.
#include "plugin/panel.h"

#include "host/attempt.h"
#include "pipeline/service_address.h"
#include "plugin/dialog_text.h"
#include "plugin/module.h"
#include "plugin/settings.h"

#include <max.h>

#include <commctrl.h>

namespace brimwave {

void Panel::Open(HWND owner) noexcept {
    if (state_.dialog) {
        SetForegroundWindow(state_.dialog);
        return;
    }
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_PROGRESS_CLASS | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&classes);
    const HWND dialog = CreateDialogParamW(ModuleInstance(), MAKEINTRESOURCEW(IDD_PANEL), owner,
                                           &Panel::DialogProc, reinterpret_cast<LPARAM>(this));
    if (dialog)
        ShowWindow(dialog, SW_SHOW);
}

void Panel::Close() noexcept {
    if (state_.dialog)
        DestroyWindow(state_.dialog);
}

INT_PTR CALLBACK Panel::DialogProc(HWND dialog, UINT message, WPARAM wParam,
                                   LPARAM lParam) noexcept {
    INT_PTR handled = FALSE;
    // Out of memory, or a host call that threw: what was asked for does not happen.
    Attempt([&] {
        if (message == WM_INITDIALOG) {
            SetWindowLongPtrW(dialog, DWLP_USER, lParam);
            reinterpret_cast<Panel*>(lParam)->OnInit(dialog);
            return; // not handled: the focus has been set
        }
        // Messages that come before initialisation and after destruction find no panel.
        auto* panel = reinterpret_cast<Panel*>(GetWindowLongPtrW(dialog, DWLP_USER));
        if (panel && panel->state_.dialog == dialog)
            handled = panel->OnMessage(message, wParam, lParam);
    });
    return handled;
}

INT_PTR Panel::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND:
        OnCommand(LOWORD(wParam), HIWORD(wParam));
        return TRUE;
    case WM_TIMER:
        OnTimer(wParam);
        return TRUE;
    case balanceChecked:
        OnBalanceChecked(lParam);
        return TRUE;
    case WM_NOTIFY:
        return tips_.OnNotify(state_.dialog, *reinterpret_cast<NMHDR*>(lParam));
    case WM_CTLCOLORSTATIC:
        if (GetDlgCtrlID(reinterpret_cast<HWND>(lParam)) == IDC_LINK)
            return reinterpret_cast<INT_PTR>(LinkLabel::Colours(reinterpret_cast<HDC>(wParam)));
        return FALSE;
    case WM_CLOSE:
        DestroyWindow(state_.dialog);
        return TRUE;
    case WM_DESTROY:
        OnDestroy();
        return TRUE;
    default:
        return FALSE;
    }
}

void Panel::OnInit(HWND dialog) {
    state_.dialog = dialog;
    if (Interface* host = GetCOREInterface())
        host->RegisterDlgWnd(dialog); // the host's message loop then handles Tab and arrow keys
    SetControlText(dialog, IDC_VERSION, L"v" BRIMWAVE_VERSION);
    SetControlText(dialog, IDC_LINK, ServiceWebAddress());
    link_.Attach(GetDlgItem(dialog, IDC_LINK));
    tips_.Attach(dialog, {IDC_BALANCE, IDC_STATUS, IDC_JOB});
    SendDlgItemMessageW(dialog, IDC_PROGRESS, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
    ApplySettings();
    // Opened again while an export runs: the export goes on in this window.
    state_.exportButton.Enable(dialog, !state_.exporting);
    SetFirstFocus();
    banner_.Show(dialog, IDC_BANNER);
}

void Panel::ApplySettings() {
    const PanelSettings settings = LoadSettings();
    const HWND dialog = state_.dialog;
    SetControlText(dialog, IDC_TOKEN, settings.token);
    SetControlText(dialog, IDC_FOLDER, settings.exchangeFolder);
    CheckDlgButton(dialog, IDC_DISPLACEMENT,
                   settings.exportDisplacement ? BST_CHECKED : BST_UNCHECKED);
    CheckRadioButton(dialog, IDC_PATH_A, IDC_PATH_B,
                     settings.olderBlenderTarget ? IDC_PATH_A : IDC_PATH_B);
}

/// The focus starts where something is still to be entered, else on the button that the user
/// came for.
void Panel::SetFirstFocus() {
    int control = IDC_EXPORT;
    if (GetWindowTextLengthW(GetDlgItem(state_.dialog, IDC_TOKEN)) == 0)
        control = IDC_TOKEN;
    else if (GetWindowTextLengthW(GetDlgItem(state_.dialog, IDC_FOLDER)) == 0)
        control = IDC_FOLDER;
    SendMessageW(state_.dialog, WM_NEXTDLGCTL,
                 reinterpret_cast<WPARAM>(GetDlgItem(state_.dialog, control)), TRUE);
}

void Panel::OnDestroy() {
    const HWND dialog = state_.dialog;
    state_.statusSpinner.Stop(dialog);
    state_.balanceSpinner.Stop(dialog);
    check_.reset();
    typing_.reset();
    state_.olderBlenderTarget = IsDlgButtonChecked(dialog, IDC_PATH_A) == BST_CHECKED;
    state_.dialog = nullptr;
    link_.Release();
    if (Interface* host = GetCOREInterface())
        host->UnRegisterDlgWnd(dialog);
}

void Panel::OnTimer(WPARAM timer) {
    for (Spinner* spinner : {&state_.statusSpinner, &state_.balanceSpinner})
        if (spinner->Timer() == timer)
            spinner->Tick(state_.dialog);
}

void Panel::OnEditFocus(int control, bool gained) {
    if (gained) {
        if (!typing_)
            typing_.emplace();
        return;
    }
    typing_.reset();
    if (control == IDC_FOLDER)
        SaveExchangeFolder(ControlText(state_.dialog, IDC_FOLDER));
}

void Panel::OnCommand(int control, int notification) {
    const bool isEdit = control == IDC_TOKEN || control == IDC_FOLDER;
    if (isEdit && (notification == EN_SETFOCUS || notification == EN_KILLFOCUS))
        return OnEditFocus(control, notification == EN_SETFOCUS);
    if (control == IDC_LINK && notification == STN_CLICKED)
        return OnLink();
    if (isEdit || control == IDC_LINK || notification != BN_CLICKED)
        return;
    switch (control) {
    case IDC_SAVE:
        return OnSave();
    case IDC_REFRESH:
        return OnRefresh();
    case IDC_BROWSE:
        return OnBrowse();
    case IDC_EXPORT:
        return OnExport();
    case IDC_DISPLACEMENT:
        return SaveExportDisplacement(IsDlgButtonChecked(state_.dialog, control) == BST_CHECKED);
    case IDC_PATH_A:
    case IDC_PATH_B:
        return SaveBlenderTarget(IsDlgButtonChecked(state_.dialog, IDC_PATH_A) == BST_CHECKED);
    default:
        return;
    }
}

} // namespace brimwave
