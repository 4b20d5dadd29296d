#include "simhost/app/panel_run.h"
#include "simhost/scene/text.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

namespace simhost {

bool WriteSummary(const PanelReport& report, const std::wstring& file) {
    nlohmann::ordered_json summary = {
        {"status_text", WideToUtf8(report.statusText)},
        {"balance_text", WideToUtf8(report.balanceText)},
        {"job_label", WideToUtf8(report.jobLabel)},
        {"job_folder", WideToUtf8(report.jobFolder)},
        {"message_boxes", nlohmann::ordered_json::array()},
        {"stages", nlohmann::ordered_json::array()},
    };
    for (const ShownMessage& message : report.messages)
        summary["message_boxes"].push_back(
            {{"caption", WideToUtf8(message.caption)}, {"text", WideToUtf8(message.text)}});
    for (const Stage& stage : report.stages)
        summary["stages"].push_back(
            {{"progress", stage.progress}, {"text", WideToUtf8(stage.text)}});
    if (!report.failure.empty())
        summary["failure"] = WideToUtf8(report.failure);

    std::ofstream out(std::filesystem::path(file), std::ios::binary | std::ios::trunc);
    out << summary.dump(2) << '\n';
    return out.good();
}

} // namespace simhost
