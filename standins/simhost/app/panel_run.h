#pragma once
#include "simhost/app/host_window.h"
#include "simhost/app/options.h"
#include "simhost/app/robot.h"
#include "simhost/app/stage_recorder.h"

#include <string>
#include <vector>

namespace simhost {

/// What the panel showed in a run.
struct PanelReport {
    std::wstring statusText;
    std::wstring balanceText;
    std::wstring jobLabel;
    std::wstring jobFolder; // the job folder's name; empty when no job was sent
    std::vector<ShownMessage> messages;
    std::vector<Stage> stages;
    std::wstring failure; // why the orders were not carried out to their end; empty when they were

    [[nodiscard]] bool Done() const { return statusText.starts_with(L"Done"); }
};

/// Carries out the orders on the open panel, from a thread of its own. The recorder is attached
/// to the panel and must live as long as its window.
[[nodiscard]] PanelReport RunOrders(const Options& options, const HostWindow& host, DWORD uiThread,
                                    StageRecorder& recorder);

/// Writes the report as JSON. False when the file cannot be written.
[[nodiscard]] bool WriteSummary(const PanelReport& report, const std::wstring& file);

} // namespace simhost
