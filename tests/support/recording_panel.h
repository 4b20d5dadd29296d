#pragma once
#include "pipeline/export_panel.h"

#include <functional>
#include <string>
#include <vector>

namespace brimwave::testing {

/// A panel without a window: answers as told and keeps every order in `calls`, one line each:
///   "status 8 busy: text", "status 100: text", "error: text", "message [caption] text"
///   ("message! .." with the error icon), "confirm [caption] text", "balance: text",
///   "job: text", "enable", "disable".
class RecordingPanel : public ExportPanel {
  public:
    std::wstring token = L"token-1";
    std::wstring folder;
    bool bakeGeometry = false;
    bool olderTarget = false;
    bool answer = true; // to Confirm

    std::vector<std::wstring> calls;
    /// What the panel shows at the moment.
    bool enabled = true;
    bool spinning = false;
    int progress = 0;
    std::wstring status = L"Ready.";
    std::wstring jobLabel;
    /// Called with each line after it was kept; may throw, or meddle with the scene.
    std::function<void(const std::wstring&)> onCall;

    /// The lines that begin with `prefix`.
    [[nodiscard]] std::vector<std::wstring> Lines(std::wstring_view prefix) const;

    std::wstring Token() override { return token; }
    std::wstring ExchangeFolder() override { return folder; }
    bool BakeGeometry() override { return bakeGeometry; }
    bool OlderBlenderTarget() override { return olderTarget; }
    void SetStatus(int newProgress, std::wstring_view text, bool busy) override;
    void ShowError(std::wstring_view message) override;
    void ShowMessage(std::wstring_view text, std::wstring_view caption, MessageIcon icon) override;
    bool Confirm(std::wstring_view text, std::wstring_view caption) override;
    void SetBalanceText(std::wstring_view text) override;
    void SetJobLabel(std::wstring_view text) override;
    void EnableExport(bool on) override;

  private:
    void Keep(std::wstring line);
};

} // namespace brimwave::testing
