#include "simhost/app/plugin_library.h"

#include "simhost/app/options.h"

#include <string>

namespace simhost {
namespace {

std::wstring SystemMessage(DWORD error) {
    wchar_t buffer[512] = {};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
                                  nullptr, error, 0, buffer, ARRAYSIZE(buffer), nullptr);
    while (length > 0 && (buffer[length - 1] == L'\n' || buffer[length - 1] == L'\r' ||
                          buffer[length - 1] == L'.'))
        --length;
    return std::wstring(buffer, length) + L" (" + std::to_wstring(error) + L")";
}

} // namespace

template <typename Function>
Function PluginLibrary::Export(const char* name, bool required) const {
    const FARPROC found = GetProcAddress(module_, name);
    if (!found && required)
        throw StartError(L"not a plug-in library: " + path_ + L" does not export " +
                         std::wstring(name, name + std::char_traits<char>::length(name)));
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

PluginLibrary::PluginLibrary(const std::wstring& path) : path_(path) {
    module_ = LoadLibraryW(path.c_str());
    if (!module_)
        throw StartError(L"plug-in library not loadable: " + path + L": " +
                         SystemMessage(GetLastError()));
    try {
        Start();
        FindUtility();
    } catch (...) {
        Stop();
        throw;
    }
}

PluginLibrary::~PluginLibrary() {
    Stop();
}

void PluginLibrary::Start() {
    Export<const MCHAR* (*)()>("LibDescription");
    Export<int (*)()>("LibNumberClasses");
    Export<ClassDesc* (*)(int)>("LibClassDesc");
    const ULONG version = Export<ULONG (*)()>("LibVersion")();
    if (version != VERSION_3DSMAX)
        throw StartError(L"plug-in library not loadable: " + path_ +
                         L" was built for host release " + std::to_wstring(version >> 16) +
                         L", this is " + std::to_wstring(MAX_RELEASE));
    if (const auto initialize = Export<int (*)()>("LibInitialize", false))
        if (!initialize())
            throw StartError(L"plug-in library not loadable: " + path_ + L" failed to start");
    started_ = true;
}

void PluginLibrary::FindUtility() {
    const int count = Export<int (*)()>("LibNumberClasses")();
    const auto describe = Export<ClassDesc* (*)(int)>("LibClassDesc");
    for (int i = 0; i < count && !utility_; ++i) {
        ClassDesc* const descriptor = describe(i);
        if (!descriptor || descriptor->SuperClassID() != UTILITY_CLASS_ID)
            continue;
        descriptor_ = descriptor;
        utility_ = static_cast<UtilityObj*>(descriptor->Create(FALSE));
    }
    if (!utility_)
        throw StartError(L"plug-in library not usable: " + path_ + L" has no utility class");
}

void PluginLibrary::Stop() {
    if (utility_)
        utility_->DeleteThis();
    if (started_)
        if (const auto shutdown = Export<int (*)()>("LibShutdown", false))
            shutdown();
    FreeLibrary(module_);
}

} // namespace simhost
