#pragma once
#include "pipeline/export_panel.h"
#include "plugin/panel_state.h"

#include <windows.h>

namespace brimwave {

/// The export sequence's panel: shows the run on the dialog as far as there is one. Messages are
/// shown in any case, over the host's window when the panel was closed.
class PanelView : public ExportPanel {
  public:
    explicit PanelView(PanelState& state) : state_(state) {}

    std::wstring Token() override;
    std::wstring ExchangeFolder() override;
    bool BakeGeometry() override;
    bool OlderBlenderTarget() override;

    void SetStatus(int progress, std::wstring_view text, bool busy) override;
    void ShowError(std::wstring_view message) override;
    void ShowMessage(std::wstring_view text, std::wstring_view caption, MessageIcon icon) override;
    bool Confirm(std::wstring_view text, std::wstring_view caption) override;

    void SetBalanceText(std::wstring_view text) override;
    void SetJobLabel(std::wstring_view text) override;
    void EnableExport(bool on) override;

  private:
    int ShowBox(std::wstring_view text, std::wstring_view caption, UINT type);

    PanelState& state_;
};

} // namespace brimwave
