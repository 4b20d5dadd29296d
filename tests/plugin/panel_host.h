#pragma once
#include "plugin/resource_ids.h"
#include "simhost/app/host_window.h"
#include "simhost/app/plugin_library.h"
#include "simhost/app/robot.h"
#include "simhost/app/utility_panel.h"

#include <windows.h>

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace brimwave::testing {

/// The plug-in library that was built with these tests.
[[nodiscard]] std::wstring PluginPath();

/// A folder of one test, removed at its end.
class ScratchFolder {
  public:
    ScratchFolder() : ScratchFolder(std::filesystem::temp_directory_path()) {}
    explicit ScratchFolder(const std::filesystem::path& parent);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    [[nodiscard]] std::wstring File(std::wstring_view name) const {
        return (path_ / name).wstring();
    }

  private:
    std::filesystem::path path_;
};

/// A host with the plug-in loaded, its loop on a thread of its own, and the test as its user.
/// The windows are closed and the library is unloaded, in the host's order, when this goes.
class PanelHost {
  public:
    explicit PanelHost(const std::wstring& settingsFolder);
    ~PanelHost();
    PanelHost(const PanelHost&) = delete;
    PanelHost& operator=(const PanelHost&) = delete;

    /// Picks the utility in the host and waits for the panel.
    HWND OpenPanel();
    /// The same on the panel's own thread, in the middle of its work.
    void Reopen();
    /// Ends the utility's editing, as the host does when another one is picked.
    void EndEditing();
    /// The close button of the panel's window.
    void ClosePanel();

    [[nodiscard]] simhost::Robot& User() { return *robot_; }
    [[nodiscard]] const simhost::HostWindow& Window() const { return *window_; }
    [[nodiscard]] DWORD UiThread() const { return uiThread_; }
    [[nodiscard]] HWND Panel() const { return panel_; }
    [[nodiscard]] HWND Control(int id) const { return GetDlgItem(panel_, id); }
    [[nodiscard]] std::wstring Text(int id) const { return simhost::Robot::TextOf(Control(id)); }
    [[nodiscard]] bool Checked(int id) const;
    /// A visible dialog that the panel owns; null when there is none.
    [[nodiscard]] HWND OwnedDialog() const;
    /// The control with the keyboard focus; 0 for none of the panel's.
    [[nodiscard]] int Focus() const;

    /// Presses a button and waits until everything that follows from it at once has happened,
    /// message boxes included.
    void Press(int id);
    void Type(int id, std::wstring_view text) { robot_->Type(Control(id), text); }
    /// Waits until the control shows the text.
    void WaitForText(int id, const std::wstring& text);
    /// Runs on the panel's thread.
    void OnUiThread(const std::function<void()>& work) const { window_->Call(work); }

    /// Texts of the message boxes so far, each as "[caption] text".
    [[nodiscard]] std::vector<std::wstring> Messages() const;

  private:
    void RunHost(std::promise<void>& ready);

    std::unique_ptr<simhost::HostWindow> window_;
    std::unique_ptr<simhost::PluginLibrary> library_;
    std::unique_ptr<simhost::UtilityPanel> utility_;
    DWORD uiThread_ = 0;
    std::thread thread_;
    std::unique_ptr<simhost::Robot> robot_;
    HWND panel_ = nullptr;
};

} // namespace brimwave::testing
