#include "simhost/app/panel_run.h"

#include "simhost/app/console.h"
#include "simhost/app/panel_controls.h"

#include <cmath>

namespace simhost {
namespace {

/// One run of orders. The steps throw RobotTimeout when the panel does not react in time.
class PanelRun {
  public:
    PanelRun(const Options& options, const HostWindow& host, DWORD uiThread,
             StageRecorder& recorder)
        : options_(options), host_(host), recorder_(recorder),
          robot_(host, uiThread, Robot::Clock::now() + Limit(options)) {}

    PanelReport Run() {
        PanelReport report;
        robot_.OnMessageBox([](const ShownMessage& message, HWND) {
            Say(L"[" + message.caption + L"] " + message.text);
        });
        try {
            CarryOut();
            ReadPanel(report);
            SavePicture(report);
        } catch (const RobotTimeout&) {
            report.failure = L"timed out after " +
                             std::to_wstring(std::llround(options_.timeoutSeconds)) + L" s";
            if (const auto stages = recorder_.Stages(); !stages.empty())
                report.statusText = stages.back().text;
        }
        report.messages = robot_.Messages();
        report.stages = recorder_.Stages();
        return report;
    }

  private:
    static Robot::Clock::duration Limit(const Options& options) {
        return std::chrono::duration_cast<Robot::Clock::duration>(
            std::chrono::duration<double>(options.timeoutSeconds));
    }

    HWND Control(int id) const { return GetDlgItem(panel_, id); }

    void CarryOut() {
        panel_ = robot_.WaitForWindow(panelTitle, exportButton);
        host_.Call([this] { recorder_.Attach(panel_); });
        robot_.WaitUntilIdle();
        if (options_.token)
            robot_.Type(Control(tokenEdit), *options_.token);
        if (options_.folder)
            robot_.Type(Control(folderEdit), *options_.folder);
        if (options_.olderTarget)
            Press(*options_.olderTarget ? olderTargetButton : newerTargetButton);
        if (options_.bake)
            SetBake(*options_.bake);
        if (options_.exportAndSend)
            Press(exportButton);
    }

    void Press(int control) {
        robot_.Press(Control(control));
        robot_.WaitUntilIdle();
    }

    void SetBake(bool on) {
        if ((SendMessageW(Control(bakeBox), BM_GETCHECK, 0, 0) == BST_CHECKED) != on)
            Press(bakeBox);
        robot_.AnswerNext(on ? IDYES : IDNO);
    }

    void ReadPanel(PanelReport& report) const {
        report.statusText = Robot::TextOf(Control(statusLabel));
        report.balanceText = Robot::TextOf(Control(balanceLabel));
        report.jobLabel = Robot::TextOf(Control(jobLabel));
        constexpr std::wstring_view label = L"Job: ";
        if (report.jobLabel.starts_with(label))
            report.jobFolder = report.jobLabel.substr(label.size());
    }

    void SavePicture(PanelReport& report) {
        if (options_.panelPicture.empty())
            return;
        if (!robot_.SavePicture(panel_, options_.panelPicture))
            report.failure = L"the picture could not be written: " + options_.panelPicture;
    }

    const Options& options_;
    const HostWindow& host_;
    StageRecorder& recorder_;
    Robot robot_;
    HWND panel_ = nullptr;
};

} // namespace

PanelReport RunOrders(const Options& options, const HostWindow& host, DWORD uiThread,
                      StageRecorder& recorder) {
    return PanelRun(options, host, uiThread, recorder).Run();
}

} // namespace simhost
