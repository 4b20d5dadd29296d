// Copies of objects and modifiers, sub-objects included.
#include "simhost/scene/factory.h"
#include "simhost/scene/objects.h"

namespace simhost {

namespace {

/// A new object of the same class with the same values and sub-objects.
template <class T>
std::unique_ptr<T> Twin(const T& source) {
    auto twin = std::make_unique<T>(source.ClassShared());
    twin->CopyFrom(source);
    CopySubObjects(source, *twin);
    return twin;
}

} // namespace

std::unique_ptr<Object> SceneMesh::Clone() const {
    auto twin = Twin(*this);
    twin->mesh = mesh;
    return twin;
}

std::unique_ptr<Object> SceneGeometry::Clone() const {
    auto twin = Twin(*this);
    if (ownMesh)
        twin->ownMesh = std::make_unique<Mesh>(*ownMesh);
    return twin;
}

std::unique_ptr<Object> SceneShape::Clone() const {
    auto twin = Twin(*this);
    twin->splines = splines;
    return twin;
}

std::unique_ptr<Object> SceneLight::Clone() const {
    auto twin = Twin(*this);
    twin->useLight = useLight;
    return twin;
}

std::unique_ptr<Object> SceneHelper::Clone() const {
    auto twin = Twin(*this);
    twin->boxMin = boxMin;
    twin->boxMax = boxMax;
    return twin;
}

std::unique_ptr<Object> SceneCamera::Clone() const {
    auto twin = Twin(*this);
    twin->lens = lens;
    return twin;
}

std::unique_ptr<SceneModifier> SceneModifier::CloneModifier() const {
    auto twin = Twin(*this);
    twin->enabled = enabled;
    twin->matrix = matrix;
    return twin;
}

} // namespace simhost
