#pragma once
#include <string>
#include <string_view>

namespace brimwave {

enum class MessageIcon { None, Error };

/// What the export sequence asks of a panel. The plug-in implements it on its dialog, the tests
/// by a recorder. All calls are made on the thread that runs the sequence.
class ExportPanel {
  public:
    virtual ~ExportPanel() = default;

    /// The token and folder as typed; nothing trimmed.
    virtual std::wstring Token() = 0;
    virtual std::wstring ExchangeFolder() = 0;
    virtual bool BakeGeometry() = 0;
    /// True when the conversion path "A" (Blender 5.1 and older) is chosen.
    virtual bool OlderBlenderTarget() = 0;

    /// `progress` 0..100. While busy the panel shows a spinner before the text. Lets the panel
    /// repaint before it returns.
    virtual void SetStatus(int progress, std::wstring_view text, bool busy) = 0;
    /// Ends the run on the panel: progress 100, status "Error.", no job label; then an error box.
    virtual void ShowError(std::wstring_view message) = 0;
    virtual void ShowMessage(std::wstring_view text, std::wstring_view caption,
                             MessageIcon icon) = 0;
    /// A warning with Yes and No; true for Yes.
    virtual bool Confirm(std::wstring_view text, std::wstring_view caption) = 0;

    virtual void SetBalanceText(std::wstring_view text) = 0;
    virtual void SetJobLabel(std::wstring_view text) = 0;
    virtual void EnableExport(bool on) = 0;
};

} // namespace brimwave
