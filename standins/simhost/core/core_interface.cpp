// The core interface and the other single instances of the SDK, on the open scene.
#include "maxapi.h"

#include "simhost/core/export_file.h"
#include "simhost/core/host.h"
#include "simhost/files/paths.h"
#include "simhost/scene/objects.h"
#include "simhost/scene/scene.h"
#include "triobj.h"
#include <units.h>

#include <algorithm>
#include <cstdarg>

namespace simhost {

namespace {

HWND hostWindow = nullptr;
std::vector<HWND> dialogs;
int redraws = 0;
int acceleratorLocks = 0;

class SceneMaterials final : public MtlBaseLib {
  public:
    int Count() override { return static_cast<int>(Scene::Current().MaterialsInUse().size()); }
    MtlBase* operator[](int i) override {
        const auto& used = Scene::Current().MaterialsInUse();
        const bool inside = i >= 0 && i < static_cast<int>(used.size());
        return inside ? used[static_cast<size_t>(i)] : nullptr;
    }
};

class SystemLog final : public LogSys {
  public:
    void LogEntry(DWORD type, BOOL dialog, const MCHAR* title, const MCHAR* format, ...) override;
};

/// printf for wide text where "%s" means wide text, as in the host.
std::wstring Formatted(const MCHAR* format, va_list arguments) {
    std::wstring portable;
    for (const MCHAR* p = format; *p; ++p) {
        portable += *p;
        if (*p != L'%')
            continue;
        while (p[1] && std::wcschr(L"-+ #0123456789.*", p[1]))
            portable += *++p;
        if (p[1] == L's')
            portable += L'l';
        if (p[1])
            portable += *++p;
    }
    std::wstring text(4096, L'\0');
    const int length = std::vswprintf(text.data(), text.size(), portable.c_str(), arguments);
    text.resize(length < 0 ? 0 : static_cast<size_t>(length));
    return text;
}

void SystemLog::LogEntry(DWORD type, BOOL /*dialog*/, const MCHAR* title, const MCHAR* format,
                         ...) {
    va_list arguments;
    va_start(arguments, format);
    HostLog().push_back({type, title ? title : L"", Formatted(format, arguments)});
    va_end(arguments);
}

class CoreInterface final : public Interface {
  public:
    TimeValue GetTime() override { return Scene::Current().time; }
    INode* GetRootNode() override;
    MSTR& GetCurFileName() override;
    MSTR& GetCurFilePath() override;
    HWND GetMAXHWnd() const override { return hostWindow; }
    const MCHAR* GetDir(int id) override;
    BOOL ExportToFile(const MCHAR* name, BOOL suppressPrompts, DWORD options,
                      Class_ID* exporterID) override;

    Texmap* GetEnvironmentMap() override;
    BOOL GetUseEnvironmentMap() override { return Scene::Current().useEnvironmentMap; }
    Point3 GetBackGround(TimeValue t, Interval& valid) override;
    Point3 GetAmbient(TimeValue /*t*/, Interval& valid) override;
    ReferenceTarget* GetCurrentRenderer(bool createDefault) override;

    INode* GetINodeByName(const MCHAR* name) override;
    INode* GetINodeByHandle(ULONG handle) override { return Scene::Current().FindByHandle(handle); }
    int GetSelNodeCount() override { return static_cast<int>(Scene::Current().Selection().size()); }
    INode* GetSelNode(int i) override;
    void SelectNode(INode* node, int clearSelection) override;
    void DeleteNode(INode* node, BOOL /*redraw*/, BOOL /*overrideSlaves*/) override {
        Scene::Current().DeleteNode(dynamic_cast<SceneNode*>(node));
    }
    MtlBaseLib* GetSceneMtls() override;

    LogSys* Log() override { return &log_; }
    float GetRendImageAspect() override;
    int GetRendWidth() override { return Scene::Current().renderWidth; }
    int GetRendHeight() override { return Scene::Current().renderHeight; }
    void ForceCompleteRedraw(BOOL /*force*/) override { ++redraws; }

    void RegisterDlgWnd(HWND dialog) override { dialogs.push_back(dialog); }
    int UnRegisterDlgWnd(HWND dialog) override { return std::erase(dialogs, dialog) > 0; }

  private:
    MSTR fileName_, filePath_;
    std::wstring dir_;
    SceneMaterials materials_;
    SystemLog log_;
};

INode* CoreInterface::GetRootNode() {
    Scene& scene = Scene::Current();
    return scene.faults.Give(Call::GetRootNode, &scene.Root());
}

MSTR& CoreInterface::GetCurFileName() {
    const Scene& scene = Scene::Current();
    const MSTR name(std::wstring(FileNameOf(scene.filePath)));
    fileName_ = scene.faults.Give(Call::GetCurFileName, name);
    return fileName_;
}

MSTR& CoreInterface::GetCurFilePath() {
    const Scene& scene = Scene::Current();
    filePath_ = scene.faults.Give(Call::GetCurFilePath, MSTR(scene.filePath));
    return filePath_;
}

const MCHAR* CoreInterface::GetDir(int id) {
    Scene& scene = Scene::Current();
    const auto found = scene.directories.find(id);
    dir_ = found == scene.directories.end() ? L"" : found->second;
    return scene.faults.Give(Call::GetDir, dir_.c_str());
}

BOOL CoreInterface::ExportToFile(const MCHAR* name, BOOL /*suppressPrompts*/, DWORD /*options*/,
                                 Class_ID* exporterID) {
    return name && ExportFile(name, exporterID) ? TRUE : FALSE;
}

Texmap* CoreInterface::GetEnvironmentMap() {
    const Scene& scene = Scene::Current();
    return scene.faults.Give(Call::GetEnvironmentMap, scene.environmentMap.Get());
}

Point3 CoreInterface::GetBackGround(TimeValue /*t*/, Interval& /*valid*/) {
    Scene::Current().faults.Check(Call::GetBackGround);
    return Scene::Current().background;
}

Point3 CoreInterface::GetAmbient(TimeValue /*t*/, Interval& /*valid*/) {
    return Scene::Current().ambient;
}

ReferenceTarget* CoreInterface::GetCurrentRenderer(bool /*createDefault*/) {
    const Scene& scene = Scene::Current();
    return scene.faults.Give(Call::GetCurrentRenderer, scene.renderer.Get());
}

INode* CoreInterface::GetINodeByName(const MCHAR* name) {
    return name ? Scene::Current().FindByName(name) : nullptr;
}

INode* CoreInterface::GetSelNode(int i) {
    const auto nodes = Scene::Current().Selection();
    const bool inside = i >= 0 && i < static_cast<int>(nodes.size());
    return inside ? nodes[static_cast<size_t>(i)] : nullptr;
}

void CoreInterface::SelectNode(INode* node, int clearSelection) {
    if (clearSelection)
        Scene::Current().ClearSelection();
    Scene::Current().Select(dynamic_cast<SceneNode*>(node));
}

MtlBaseLib* CoreInterface::GetSceneMtls() {
    Scene::Current().faults.Check(Call::GetSceneMtls);
    return &materials_;
}

float CoreInterface::GetRendImageAspect() {
    const Scene& scene = Scene::Current();
    return scene.renderHeight == 0 ? 1
                                   : static_cast<float>(scene.renderWidth) * scene.pixelAspect /
                                         static_cast<float>(scene.renderHeight);
}

/// Metres of one unit of each type, in the order of the UNITS_ numbers.
constexpr double metres[] = {0.0254, 0.3048, 1609.344, 0.001, 0.01, 1, 1000};

} // namespace

std::vector<HostLogLine>& HostLog() {
    static std::vector<HostLogLine> lines;
    return lines;
}

void SetHostWindow(HWND window) {
    hostWindow = window;
}

const std::vector<HWND>& RegisteredDialogs() {
    return dialogs;
}

int RedrawCount() {
    return redraws;
}

} // namespace simhost

using simhost::Scene;

Interface* GetCOREInterface() {
    static simhost::CoreInterface core;
    return &core;
}

double GetSystemUnitScale(int unit) {
    const Scene& scene = Scene::Current();
    if (scene.unitScaleOverride)
        return *scene.unitScaleOverride;
    if (unit < UNITS_INCHES || unit > UNITS_KILOMETERS)
        return -1;
    return simhost::metres[scene.unitType] * scene.unitScale / simhost::metres[unit];
}

void GetSystemUnitInfo(int* type, float* scale) {
    if (type)
        *type = Scene::Current().unitType;
    if (scale)
        *scale = Scene::Current().unitScale;
}

void DisableAccelerators() {
    ++simhost::acceleratorLocks;
}

void EnableAccelerators() {
    simhost::acceleratorLocks = std::max(simhost::acceleratorLocks - 1, 0);
}

BOOL AcceleratorsEnabled() {
    return simhost::acceleratorLocks == 0;
}

TriObject* CreateNewTriObject() {
    auto* made = dynamic_cast<simhost::SceneMesh*>(
        Scene::Current().Create(L"Editable Mesh", GEOMOBJECT_CLASS_ID));
    if (made)
        made->SetLoose([](simhost::SceneMesh& mesh) { Scene::Current().Delete(&mesh); });
    return made;
}
