#include "plugin/folder_browser.h"

#include <objbase.h>
#include <shlobj.h>

#include <memory>

namespace brimwave {
namespace {

struct TaskMemoryDeleter {
    void operator()(void* memory) const noexcept { CoTaskMemFree(memory); }
};

/// The shell's dialog needs COM with OLE on its thread. The host has it already, as a rule.
class OleSession {
  public:
    OleSession() : started_(SUCCEEDED(OleInitialize(nullptr))) {}
    ~OleSession() {
        if (started_)
            OleUninitialize();
    }
    OleSession(const OleSession&) = delete;
    OleSession& operator=(const OleSession&) = delete;

  private:
    bool started_;
};

int CALLBACK SelectCurrent(HWND dialog, UINT message, LPARAM, LPARAM current) {
    if (message == BFFM_INITIALIZED && *reinterpret_cast<const wchar_t*>(current))
        SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, current);
    return 0;
}

} // namespace

std::optional<std::wstring> BrowseForFolder(HWND owner, const std::wstring& current) {
    const OleSession ole;
    BROWSEINFOW request{};
    request.hwndOwner = owner;
    request.lpszTitle = L"Select Exchange Folder";
    request.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
    request.lpfn = SelectCurrent;
    request.lParam = reinterpret_cast<LPARAM>(current.c_str());
    const std::unique_ptr<ITEMIDLIST, TaskMemoryDeleter> chosen(SHBrowseForFolderW(&request));
    std::wstring path(32768, L'\0');
    if (!chosen || !SHGetPathFromIDListEx(chosen.get(), path.data(),
                                          static_cast<DWORD>(path.size()), GPFIDL_DEFAULT))
        return std::nullopt;
    path.resize(path.find(L'\0'));
    return path;
}

} // namespace brimwave
