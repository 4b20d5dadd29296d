// simhost: the stand-in host's program. Opens a scene, loads a plug-in as the host does, opens
// its panel, and leaves it to a person or carries out the orders of its command line.
#include "simhost/app/console.h"
#include "simhost/app/host_state.h"
#include "simhost/app/host_window.h"
#include "simhost/app/options.h"
#include "simhost/app/panel_run.h"
#include "simhost/app/plugin_library.h"
#include "simhost/app/trust.h"
#include "simhost/app/utility_panel.h"
#include "simhost/core/host.h"

#include <windows.h>

#include <shellapi.h>

#include <filesystem>
#include <thread>

namespace simhost {
namespace {

std::vector<std::wstring> CommandLine() {
    int count = 0;
    LPWSTR* const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::wstring> list(arguments + 1, arguments + count);
    LocalFree(arguments);
    return list;
}

std::wstring DefaultPlugin() {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    return (std::filesystem::path(program).parent_path() / L"brimwave.dlu").wstring();
}

std::wstring Widen(std::string_view text) {
    return {text.begin(), text.end()};
}

std::wstring Title(const std::wstring& scene) {
    const std::wstring name =
        scene.empty() ? L"Untitled" : std::filesystem::path(scene).filename().wstring();
    return name + L" - Stand-in host";
}

int Report(const Options& options, const PanelReport& report) {
    for (const Stage& stage : report.stages)
        Say(std::to_wstring(stage.progress) + L"  " + stage.text);
    if (!report.jobLabel.empty())
        Say(report.jobLabel);
    if (!options.summary.empty() && !WriteSummary(report, options.summary)) {
        SayError(L"the summary could not be written: " + options.summary);
        return 1;
    }
    if (!report.failure.empty()) {
        SayError(report.failure);
        return 1;
    }
    return options.exportAndSend && !report.Done() ? 1 : 0;
}

int Run(const Options& options) {
    if (!options.trustedCa.empty())
        TrustCertificates(options.trustedCa);
    OpenScene(options.scene);
    SetSettingsFolder(options.settingsFolder);
    StageRecorder recorder; // outlives the windows that it watches
    HostWindow window(Title(options.scene));
    SetHostWindow(window.Handle());
    const PluginLibrary library(options.plugin.empty() ? DefaultPlugin() : options.plugin);
    UtilityPanel utility(library.Utility());
    window.SetUtility(library.Descriptor().Category(), library.Descriptor().ClassName(),
                      [&] { utility.Open(); });
    utility.Open();

    int status = 0;
    std::thread user;
    if (options.HasOrders())
        user = std::thread([&, uiThread = GetCurrentThreadId()] {
            const PanelReport report = RunOrders(options, window, uiThread, recorder);
            status = Report(options, report);
            if (!report.failure.empty()) // the windows may hang
                TerminateProcess(GetCurrentProcess(), 1);
            if (options.EndsByItself())
                window.Close();
        });
    window.Run();
    if (user.joinable())
        user.join();
    return status;
}

} // namespace
} // namespace simhost

int main() {
    try {
        const simhost::Options options = simhost::ParseOptions(simhost::CommandLine());
        if (!options.help)
            return simhost::Run(options);
        simhost::Print(simhost::usageText);
        return 0;
    } catch (const simhost::StartError& error) {
        simhost::SayError(error.Text());
    } catch (const std::exception& error) {
        simhost::SayError(simhost::Widen(error.what()));
    }
    return 1;
}
