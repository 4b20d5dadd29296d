#include "tests/support/recording_panel.h"

namespace brimwave::testing {

std::vector<std::wstring> RecordingPanel::Lines(std::wstring_view prefix) const {
    std::vector<std::wstring> found;
    for (const std::wstring& line : calls)
        if (line.starts_with(prefix))
            found.push_back(line);
    return found;
}

void RecordingPanel::SetStatus(int newProgress, std::wstring_view text, bool busy) {
    progress = newProgress;
    status = text;
    spinning = busy;
    Keep(L"status " + std::to_wstring(newProgress) + (busy ? L" busy: " : L": ") + status);
}

void RecordingPanel::ShowError(std::wstring_view message) {
    progress = 100;
    status = L"Error.";
    spinning = false;
    jobLabel.clear();
    Keep(L"error: " + std::wstring(message));
}

void RecordingPanel::ShowMessage(std::wstring_view text, std::wstring_view caption,
                                 MessageIcon icon) {
    Keep((icon == MessageIcon::Error ? L"message! [" : L"message [") + std::wstring(caption) +
         L"] " + std::wstring(text));
}

bool RecordingPanel::Confirm(std::wstring_view text, std::wstring_view caption) {
    Keep(L"confirm [" + std::wstring(caption) + L"] " + std::wstring(text));
    return answer;
}

void RecordingPanel::SetBalanceText(std::wstring_view text) {
    Keep(L"balance: " + std::wstring(text));
}

void RecordingPanel::SetJobLabel(std::wstring_view text) {
    jobLabel = text;
    Keep(L"job: " + jobLabel);
}

void RecordingPanel::EnableExport(bool on) {
    enabled = on;
    Keep(on ? L"enable" : L"disable");
}

void RecordingPanel::Keep(std::wstring line) {
    calls.push_back(std::move(line));
    if (onCall)
        onCall(calls.back());
}

} // namespace brimwave::testing
