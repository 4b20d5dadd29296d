#include "package/cameras.h"

#include "host/attempt.h"
#include "host/scene_walk.h"
#include "host/sdk_compat.h"
#include "package/classes/class_lists.h"

#include <gencam.h>

#include <cmath>

namespace brimwave {
namespace {

constexpr float freeTargetDistance = 100.0f; // system units

/// Everything of one camera that needs the host.
struct CameraView {
    std::wstring name, className;
    Matrix3 transform;
    Point3 target; // system units
    bool hasTarget = false;
    float fov = 0; // radians, horizontal
    bool ortho = false;
    float targetDistance = 0;
    bool manualClip = false;
    float nearClip = 0, farClip = 0;
    JsonMembers lens;

    [[nodiscard]] Point3 Position() const { return transform.GetTrans(); }
    [[nodiscard]] Point3 Direction() const { return Normalize(-transform.GetRow(2)); }
    [[nodiscard]] Point3 Up() const { return Normalize(transform.GetRow(1)); }
};

CameraView ReadCamera(PackageContext& package, INode& node, GenCamera& camera) {
    const TimeValue time = package.Time();
    Interval valid = FOREVER;
    CameraView view;
    view.name = HostText(node.GetName());
    view.className = ClassNameOf(camera);
    view.transform = node.GetNodeTM(time);
    INode* const target = node.GetTarget();
    view.hasTarget = target != nullptr;
    view.target = target ? target->GetNodeTM(time).GetTrans()
                         : view.Position() + view.Direction() * freeTargetDistance;
    view.fov = camera.GetFOV(time, valid);
    view.ortho = camera.IsOrtho() != FALSE;
    view.targetDistance = camera.GetTDist(time, valid);
    view.manualClip = camera.GetManualClip() != 0;
    if (view.manualClip) {
        view.nearClip = camera.GetClipDist(time, CAM_HITHER_CLIP, valid);
        view.farClip = camera.GetClipDist(time, CAM_YON_CLIP, valid);
    }
    package.params.AppendTable(view.lens, &camera, CameraLens().rows);
    return view;
}

void AppendAxis(std::wstring& out, const wchar_t* key, const Point3& p) {
    out += L",\n    \"";
    out += key;
    out += L"\": [";
    AppendJsonFloat(out, p.x);
    out += L", ";
    AppendJsonFloat(out, p.y);
    out += L", ";
    AppendJsonFloat(out, p.z);
    out += L']';
}

void AppendBasis(std::wstring& out, const Matrix3& transform) {
    for (int i = 0; i < 3; ++i) {
        const Point3 row = transform.GetRow(i);
        out += i == 0 ? L",\n    \"basis\": [" : L", ";
        AppendJsonTriple(out, row.x, row.y, row.z);
    }
    out += L']';
}

/// Distances here are in system units.
JsonMembers ExtraMembers(const CameraView& view) {
    JsonMembers members;
    if (view.targetDistance > 0)
        members.AddFloat(L"target_distance", view.targetDistance);
    members.AddBool(L"clip_on", view.manualClip);
    if (view.manualClip) {
        members.AddFloat(L"clip_near", view.nearClip);
        members.AddFloat(L"clip_far", view.farClip);
    }
    if (view.ortho && view.targetDistance > 0)
        members.AddFloat(L"ortho_width", std::tan(view.fov * 0.5f) * view.targetDistance * 2.0f);
    for (size_t i = 0; i < view.lens.Count(); ++i)
        members.Add(view.lens[i]);
    return members;
}

std::wstring CameraEntry(const CameraView& view, float metresPerUnit) {
    std::wstring entry = L"  {\n    \"camera_name\": ";
    AppendJsonString(entry, view.name);
    entry += L",\n    \"camera_class\": ";
    AppendJsonString(entry, view.className);
    AppendAxis(entry, L"position", view.Position() * metresPerUnit);
    AppendAxis(entry, L"target", view.target * metresPerUnit);
    AppendAxis(entry, L"direction", view.Direction());
    AppendAxis(entry, L"up", view.Up());
    entry += L",\n    \"fov_horizontal\": ";
    AppendJsonFloat(entry, view.fov);
    entry += L",\n    \"has_target\": ";
    entry += BoolToJson(view.hasTarget);
    entry += L",\n    \"ortho\": ";
    entry += BoolToJson(view.ortho);
    AppendBasis(entry, view.transform);
    const JsonMembers extra = ExtraMembers(view);
    for (size_t i = 0; i < extra.Count(); ++i) {
        entry += L",\n    ";
        entry += extra[i];
    }
    entry += L"\n  }";
    return entry;
}

} // namespace

std::wstring CollectCamerasJson(PackageContext& package, const std::vector<SceneNode>& nodes) {
    std::wstring text;
    int count = 0;
    const auto append = [&](INode& node) {
        Object* const object = node.EvalWorldState(package.Time(), TRUE).obj;
        auto* const camera = dynamic_cast<GenCamera*>(object);
        if (!camera)
            return;
        const CameraView view = ReadCamera(package, node, *camera);
        text += count++ == 0 ? L",\n  \"cameras\": [\n" : L",\n";
        text += CameraEntry(view, package.metresPerUnit);
        package.log.Add(L"  camera exported: " + view.name);
    };
    for (const SceneNode& entry : nodes)
        if (entry.superClass == CAMERA_CLASS_ID && !Attempt([&] { append(*entry.node); }))
            package.log.Add(L"WARNING: Camera '" + NodeNameOrEmpty(*entry.node) +
                            L"' could not be exported");
    package.log.Add(L"Cameras exported: " + std::to_wstring(count));
    if (count > 0)
        text += L"\n  ]";
    return text;
}

} // namespace brimwave
