#include "simhost/scene/objects.h"

#include "simhost/scene/primitives.h"

namespace simhost {

namespace {

int liveTemporaries = 0;
int looseMeshes = 0;

} // namespace

ResultMesh::ResultMesh(Life life) : life_(life) {
    if (life_ == Life::Temporary)
        ++liveTemporaries;
}

ResultMesh::~ResultMesh() {
    if (life_ == Life::Temporary)
        --liveTemporaries;
}

int ResultMesh::LiveTemporaries() {
    return liveTemporaries;
}

void ResultMesh::GetClassName(MSTR& s, bool /*localized*/) const {
    s = L"Mesh";
}

const MCHAR* ResultMesh::GetObjectName(bool /*localized*/) {
    return L"Mesh";
}

int ResultMesh::CanConvertToType(Class_ID id) {
    return id == triObjectClassID;
}

Object* ResultMesh::ConvertToType(TimeValue /*t*/, Class_ID id) {
    return id == triObjectClassID ? this : nullptr;
}

void ResultMesh::MaybeAutoDelete() {
    if (life_ == Life::Temporary)
        delete this;
}

bool SceneMesh::BuildMesh(Mesh& out) const {
    out = mesh;
    return true;
}

Object* SceneMesh::ConvertToType(TimeValue /*t*/, Class_ID id) {
    faults.Check(Call::ConvertToType);
    return id == triObjectClassID && HasMesh() ? this : nullptr;
}

void SceneMesh::MaybeAutoDelete() {
    if (free_)
        free_(*this);
}

void SceneMesh::SetLoose(Free* free) {
    looseMeshes += (free ? 1 : 0) - (free_ ? 1 : 0);
    free_ = free;
}

void SceneMesh::TakenInto(Object* object) {
    if (auto* const mesh = dynamic_cast<SceneMesh*>(object))
        mesh->SetLoose(nullptr);
}

int SceneMesh::LiveLoose() {
    return looseMeshes;
}

bool SceneGeometry::MakesMesh() const {
    return ownMesh || IsPrimitive(Class());
}

bool SceneGeometry::BuildMesh(Mesh& out) const {
    if (ownMesh)
        out = *ownMesh;
    else if (IsPrimitive(Class()))
        BuildPrimitive(*this, out);
    else
        return false;
    return true;
}

int SceneGeometry::IsRenderable() {
    faults.Check(Call::IsRenderable);
    return Class().behaviour != L"target";
}

std::vector<Spline> SceneShape::Splines() const {
    return splines.empty() ? PrimitiveSplines(*this) : splines;
}

bool SceneShape::BuildMesh(Mesh& out) const {
    out = Mesh();
    if (!Int(L"render_renderable"))
        return true;
    TubeShape tube;
    tube.thickness = Float(L"render_thickness", 1);
    tube.sides = Int(L"render_sides", 12);
    tube.angle = Float(L"render_angle");
    for (const Spline& spline : Splines())
        AddTube(out, spline.Points(), spline.closed, tube);
    return true;
}

float SceneCamera::FieldOfView() const {
    if (lens.fov)
        return *lens.fov;
    constexpr std::pair<std::wstring_view, std::wstring_view> lenses[] = {
        {L"film_width_mm", L"focal_length_mm"},
        {L"film_width", L"focal_length"},
        {L"sensorWidth", L"focalLength"}};
    for (const auto& [film, focal] : lenses) {
        const float width = Float(film), length = Float(focal);
        if (width > 0 && length > 0)
            return 2 * std::atan(width / (2 * length));
    }
    return 0.785398f;
}

RefResult SceneCamera::EvalCameraState(TimeValue /*t*/, Interval& /*valid*/, CameraState* state) {
    faults.Check(Call::EvalCameraState);
    state->isOrtho = lens.ortho ? TRUE : FALSE;
    state->fov = FieldOfView();
    state->tdist = lens.targetDistance;
    state->manualClip = lens.manualClip;
    state->hither = lens.nearClip;
    state->yon = lens.farClip;
    return 1;
}

BOOL SceneCamera::IsOrtho() {
    faults.Check(Call::IsOrtho);
    return lens.ortho ? TRUE : FALSE;
}

float SceneCamera::GetFOV(TimeValue /*t*/, Interval& /*valid*/) {
    faults.Check(Call::GetFOV);
    return FieldOfView();
}

int SceneCamera::GetManualClip() {
    faults.Check(Call::GetManualClip);
    return lens.manualClip;
}

float SceneCamera::GetClipDist(TimeValue /*t*/, int which, Interval& /*valid*/) {
    faults.Check(Call::GetClipDist);
    return which == CAM_HITHER_CLIP ? lens.nearClip : lens.farClip;
}

float SceneCamera::GetTDist(TimeValue /*t*/, Interval& /*valid*/) {
    faults.Check(Call::GetTDist);
    return lens.targetDistance;
}

int SceneModifier::IsEnabled() {
    faults.Check(Call::IsEnabled);
    return enabled;
}

const MCHAR* SceneModifier::GetObjectName(bool localized) {
    return (localized ? Class().localizedName : Class().name).c_str();
}

} // namespace simhost
