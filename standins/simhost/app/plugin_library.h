#pragma once
#include <max.h>
#include <utilapi.h>

#include <string>

namespace simhost {

/// A utility plug-in, loaded and started as the host does it, and stopped again when this goes.
class PluginLibrary {
  public:
    /// Loads the library, checks its exports and version, starts it and asks for its first
    /// utility class. Throws StartError with what is wrong.
    explicit PluginLibrary(const std::wstring& path);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    [[nodiscard]] HMODULE Module() const { return module_; }
    [[nodiscard]] ClassDesc& Descriptor() const { return *descriptor_; }
    [[nodiscard]] UtilityObj& Utility() const { return *utility_; }

  private:
    void Start();
    void Stop();
    void FindUtility();
    template <typename Function>
    Function Export(const char* name, bool required = true) const;

    std::wstring path_;
    HMODULE module_ = nullptr;
    bool started_ = false;
    ClassDesc* descriptor_ = nullptr;
    UtilityObj* utility_ = nullptr;
};

} // namespace simhost
