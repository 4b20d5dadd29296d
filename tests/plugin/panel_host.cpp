#include "tests/plugin/panel_host.h"

#include "simhost/app/host_state.h"
#include "simhost/app/options.h"
#include "simhost/core/host.h"

#include <array>
#include <chrono>

namespace brimwave::testing {
namespace {

constexpr auto longestTest = std::chrono::seconds(90);

} // namespace

std::wstring PluginPath() {
    std::array<wchar_t, 1024> program{};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    return (std::filesystem::path(program.data()).parent_path().parent_path() / L"bin" /
            L"brimwave.dlu")
        .wstring();
}

ScratchFolder::ScratchFolder(const std::filesystem::path& parent) {
    static int count = 0;
    path_ = parent / (L"brimwave_" + std::to_wstring(GetCurrentProcessId()) + L"_" +
                      std::to_wstring(++count));
    std::filesystem::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

PanelHost::PanelHost(const std::wstring& settingsFolder) {
    simhost::SetSettingsFolder(settingsFolder);
    std::promise<void> ready;
    std::future<void> started = ready.get_future();
    thread_ = std::thread([this, &ready] { RunHost(ready); });
    try {
        started.get();
    } catch (...) {
        thread_.join();
        throw;
    }
    robot_ = std::make_unique<simhost::Robot>(*window_, uiThread_,
                                              simhost::Robot::Clock::now() + longestTest);
}

PanelHost::~PanelHost() {
    window_->Close();
    thread_.join();
    robot_.reset();
}

void PanelHost::RunHost(std::promise<void>& ready) {
    uiThread_ = GetCurrentThreadId();
    try {
        window_ = std::make_unique<simhost::HostWindow>(L"Test host");
        simhost::SetHostWindow(window_->Handle());
        library_ = std::make_unique<simhost::PluginLibrary>(PluginPath());
        utility_ = std::make_unique<simhost::UtilityPanel>(library_->Utility());
    } catch (const simhost::StartError& error) {
        ready.set_exception(std::make_exception_ptr(
            std::runtime_error(std::string(error.Text().begin(), error.Text().end()))));
        return;
    }
    ready.set_value();
    window_->Run();
    utility_.reset();
    library_.reset();
    simhost::SetHostWindow(nullptr);
    DestroyWindow(window_->Handle()); // a window goes on its own thread
}

HWND PanelHost::OpenPanel() {
    OnUiThread([this] { utility_->Open(); });
    panel_ = robot_->WaitForWindow(L"Brimwave Platform", IDC_EXPORT);
    robot_->WaitUntilIdle();
    return panel_;
}

void PanelHost::Reopen() {
    utility_->Open();
    panel_ = FindWindowW(nullptr, L"Brimwave Platform");
}

void PanelHost::EndEditing() {
    OnUiThread([this] { utility_->CloseUtility(); });
}

void PanelHost::ClosePanel() {
    PostMessageW(panel_, WM_SYSCOMMAND, SC_CLOSE, 0);
    robot_->WaitUntil([this] { return !IsWindow(panel_); });
}

bool PanelHost::Checked(int id) const {
    return SendMessageW(Control(id), BM_GETCHECK, 0, 0) == BST_CHECKED;
}

HWND PanelHost::OwnedDialog() const {
    struct Search {
        HWND owner;
        HWND found;
    } search{panel_, nullptr};
    EnumThreadWindows(
        uiThread_,
        [](HWND window, LPARAM argument) -> BOOL {
            auto& wanted = *reinterpret_cast<Search*>(argument);
            if (IsWindowVisible(window) && GetWindow(window, GW_OWNER) == wanted.owner)
                wanted.found = window;
            return !wanted.found;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

int PanelHost::Focus() const {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(uiThread_, &info);
    return info.hwndFocus && GetParent(info.hwndFocus) == panel_ ? GetDlgCtrlID(info.hwndFocus) : 0;
}

void PanelHost::Press(int id) {
    robot_->Press(Control(id));
    robot_->WaitUntilIdle();
}

void PanelHost::WaitForText(int id, const std::wstring& text) {
    robot_->WaitUntil([&] { return Text(id) == text; });
}

std::vector<std::wstring> PanelHost::Messages() const {
    std::vector<std::wstring> lines;
    for (const simhost::ShownMessage& message : robot_->Messages())
        lines.push_back(L"[" + message.caption + L"] " + message.text);
    return lines;
}

} // namespace brimwave::testing
