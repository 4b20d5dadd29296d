#include "simhost/core/export_file.h"

#include "maxapi.h"
#include "simhost/classes/fold.h"
#include "simhost/files/fbx_export.h"
#include "simhost/scene/scene.h"

#include <stdexcept>

namespace simhost {

namespace {

constexpr Class_ID fbxExporter{0x27227747, 0xdd6978};

bool WantsFbx(std::wstring_view path, const Class_ID* exporter) {
    if (exporter)
        return *exporter == fbxExporter;
    constexpr std::wstring_view extension = L".fbx";
    return path.size() >= extension.size() &&
           EqualFolded(path.substr(path.size() - extension.size()), extension);
}

} // namespace

bool ExportFile(const std::wstring& path, const Class_ID* exporter) {
    switch (Scene::Current().exporter) {
    case Scene::Exporter::Absent:
    case Scene::Exporter::Refuses:
        return false;
    case Scene::Exporter::WritesNothing:
        return true;
    case Scene::Exporter::Throws:
        throw std::runtime_error("simulated fault in ExportToFile");
    case Scene::Exporter::Works:
        break;
    }
    if (!WantsFbx(path, exporter))
        return false;
    const FbxExportResult result = ExportFbx(path.c_str());
    if (!result.ok)
        GetCOREInterface()->Log()->LogEntry(SYSLOG_ERROR, NO_DIALOG, L"FBX", L"%s",
                                            result.error.c_str());
    return result.ok;
}

} // namespace simhost
