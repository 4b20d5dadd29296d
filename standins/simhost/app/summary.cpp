#include "simhost/app/panel_run.h"
#include "text/utf8.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>

namespace simhost {

bool WriteSummary(const PanelReport& report, const std::wstring& file) {
    nlohmann::ordered_json summary = {
        {"status_text", utf8::FromWide(report.statusText)},
        {"balance_text", utf8::FromWide(report.balanceText)},
        {"job_label", utf8::FromWide(report.jobLabel)},
        {"job_folder", utf8::FromWide(report.jobFolder)},
        {"message_boxes", nlohmann::ordered_json::array()},
        {"stages", nlohmann::ordered_json::array()},
    };
    for (const ShownMessage& message : report.messages)
        summary["message_boxes"].push_back(
            {{"caption", utf8::FromWide(message.caption)}, {"text", utf8::FromWide(message.text)}});
    for (const Stage& stage : report.stages)
        summary["stages"].push_back(
            {{"progress", stage.progress}, {"text", utf8::FromWide(stage.text)}});
    if (!report.failure.empty())
        summary["failure"] = utf8::FromWide(report.failure);

    std::ofstream out(std::filesystem::path(file), std::ios::binary | std::ios::trunc);
    out << summary.dump(2) << '\n';
    return out.good();
}

} // namespace simhost
