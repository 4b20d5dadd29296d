#include "mesh.h"

namespace {

template <class T>
void Resize(std::vector<T>& store, int count, BOOL keep) {
    if (!keep)
        store.clear();
    store.resize(static_cast<size_t>(count));
}

template <class T>
T* DataOrNull(std::vector<T>& store) {
    return store.empty() ? nullptr : store.data();
}

} // namespace

MeshMap::MeshMap(const MeshMap& other)
    : vertStore_(other.vertStore_), faceStore_(other.faceStore_) {
    Repoint();
}

MeshMap& MeshMap::operator=(const MeshMap& other) {
    vertStore_ = other.vertStore_;
    faceStore_ = other.faceStore_;
    Repoint();
    return *this;
}

void MeshMap::Repoint() {
    vnum = static_cast<int>(vertStore_.size());
    fnum = static_cast<int>(faceStore_.size());
    tv = DataOrNull(vertStore_);
    tf = DataOrNull(faceStore_);
    if (mesh_)
        mesh_->Repoint();
}

void MeshMap::setNumVerts(int count, BOOL keep) {
    Resize(vertStore_, count, keep);
    Repoint();
}

void MeshMap::setNumFaces(int count, BOOL keep) {
    Resize(faceStore_, count, keep);
    Repoint();
}

void MeshMap::Clear() {
    vertStore_.clear();
    faceStore_.clear();
    Repoint();
}

Mesh::Mesh(const Mesh& other) {
    *this = other;
}

Mesh& Mesh::operator=(const Mesh& other) {
    if (this == &other)
        return *this;
    vertStore_ = other.vertStore_;
    faceStore_ = other.faceStore_;
    maps_.clear();
    for (const auto& [channel, map] : other.maps_)
        (maps_[channel] = map).mesh_ = this;
    normals_ = other.normals_ ? std::make_unique<MeshNormalSpec>(*other.normals_) : nullptr;
    Repoint();
    return *this;
}

void Mesh::Repoint() {
    numVerts = static_cast<int>(vertStore_.size());
    numFaces = static_cast<int>(faceStore_.size());
    verts = DataOrNull(vertStore_);
    faces = DataOrNull(faceStore_);
    const auto colours = maps_.find(0);
    numCVerts = colours == maps_.end() ? 0 : colours->second.vnum;
    vertCol = colours == maps_.end() ? nullptr : colours->second.tv;
    vcFace = colours == maps_.end() ? nullptr : colours->second.tf;
    const auto texture = maps_.find(1);
    numTVerts = texture == maps_.end() ? 0 : texture->second.vnum;
    tVerts = texture == maps_.end() ? nullptr : texture->second.tv;
    tvFace = texture == maps_.end() ? nullptr : texture->second.tf;
}

MeshMap& Mesh::Channel(int channel) {
    MeshMap& map = maps_[channel];
    map.mesh_ = this;
    return map;
}

BOOL Mesh::setNumVerts(int count, BOOL keep) {
    if (count < 0)
        return FALSE;
    Resize(vertStore_, count, keep);
    Repoint();
    return TRUE;
}

BOOL Mesh::setNumFaces(int count, BOOL keep) {
    if (count < 0)
        return FALSE;
    Resize(faceStore_, count, keep);
    for (auto& [channel, map] : maps_)
        map.setNumFaces(count, keep);
    if (normals_)
        normals_->SetNumFaces(count);
    Repoint();
    return TRUE;
}

BOOL Mesh::SetVerts(int channel, int count, BOOL keep) {
    if (count < 0)
        return FALSE;
    Channel(channel).setNumVerts(count, keep);
    return TRUE;
}

BOOL Mesh::SetFaces(int channel, int count, BOOL keep) {
    if (count < 0)
        return FALSE;
    Channel(channel).setNumFaces(count, keep);
    return TRUE;
}

void Mesh::setMapSupport(int channel, BOOL on) {
    if (!on) {
        maps_.erase(channel);
        Repoint();
        return;
    }
    if (mapSupport(channel))
        return;
    MeshMap& map = Channel(channel);
    map.setNumVerts(numVerts);
    map.setNumFaces(numFaces);
    for (int i = 0; i < numFaces; ++i)
        map.tf[i].setTVerts(faces[i].v[0], faces[i].v[1], faces[i].v[2]);
}

BOOL Mesh::mapSupport(int channel) const {
    return maps_.contains(channel);
}

MeshMap& Mesh::Map(int channel) {
    return maps_.at(channel);
}

void Mesh::SpecifyNormals() {
    if (normals_)
        return;
    normals_ = std::make_unique<MeshNormalSpec>();
    normals_->SetNumFaces(numFaces);
}
