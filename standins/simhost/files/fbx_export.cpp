#include "simhost/files/fbx_export.h"

#include "simhost/files/fbx_guard.h"
#include "simhost/files/fbx_host_params.h"
#include "simhost/files/fbx_nodes.h"
#include "simhost/files/paths.h"
#include "text/utf8.h"

#include <max.h>

#include <algorithm>

namespace simhost {

namespace {

constexpr double inch = 2.54;
constexpr std::size_t largestWrite = std::size_t{1} << 30; // the call counts with 32 bits

FbxSettings SettingsOf(Interface& core) {
    FbxSettings settings;
    settings.unitCentimetres = GetSystemUnitScale(UNITS_CENTIMETERS);
    if (!(settings.unitCentimetres > 0))
        settings.unitCentimetres = inch; // the host's own unit
    const Point3 ambient = FbxAsk(Point3(), [&] {
        Interval valid = FOREVER;
        return core.GetAmbient(core.GetTime(), valid);
    });
    settings.ambient = {ambient.x, ambient.y, ambient.z};
    settings.sceneFile =
        FbxAsk(std::string(), [&] { return FbxText(core.GetCurFilePath().data()); });
    return settings;
}

void WriteScene(std::string& bytes, Interface& core, std::wstring_view folder) {
    const TimeValue time = core.GetTime();
    FbxRecordWriter writer(bytes);
    FbxIds ids;
    WriteFbxMark(bytes);
    FbxObjectCounts counts = WriteFbxFront(writer, SettingsOf(core));
    FbxTextures textures(ids, utf8::FromWide(folder), time);
    FbxMaterials materials(ids, textures, time);
    FbxGeometries geometries(writer, counts, ids, materials, time);
    FbxNodes nodes(writer, counts, ids, geometries, time);

    writer.Begin("Objects");
    if (INode* root = core.GetRootNode())
        nodes.Collect(*root);
    nodes.WriteModels();
    materials.Write(writer, counts);
    textures.Write(writer, counts);
    writer.End();

    writer.Begin("Connections");
    nodes.WriteConnections();
    materials.WriteConnections(writer);
    textures.WriteConnections(writer);
    writer.End();
    WriteFbxEnd(bytes, writer);
    FillFbxCounts(writer, counts);
}

std::wstring Failure(const wchar_t* what, const wchar_t* path, DWORD error) {
    return std::wstring(what) + L" " + path + L" (error " + std::to_wstring(error) + L")";
}

FbxExportResult Save(const wchar_t* path, const std::string& bytes) {
    const HANDLE file =
        CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {false, Failure(L"can't create", path, GetLastError())};
    bool complete = true;
    for (std::size_t done = 0; complete && done < bytes.size();) {
        DWORD written = 0;
        const auto size = static_cast<DWORD>(std::min(bytes.size() - done, largestWrite));
        complete = WriteFile(file, bytes.data() + done, size, &written, nullptr) && written == size;
        done += size;
    }
    const DWORD error = complete ? ERROR_SUCCESS : GetLastError();
    if (!CloseHandle(file) || !complete) {
        DeleteFileW(path);
        return {false, Failure(L"can't write", path, error)};
    }
    return {true, {}};
}

} // namespace

FbxExportResult ExportFbx(const wchar_t* path) {
    Interface* core = GetCOREInterface();
    if (!path || !*path || !core)
        return {false, L"no file name or no scene to export"};
    try {
        std::string bytes;
        WriteScene(bytes, *core, FolderOf(path));
        return Save(path, bytes);
    } catch (const FbxTooLarge&) {
        return {false, L"one mesh of the scene is too large for the FBX format (over 4 GB)"};
    } catch (const std::bad_alloc&) {
        return {false, L"not enough memory to build the FBX file"};
    } catch (...) {
        return {false, L"the scene can't be read"};
    }
}

} // namespace simhost
