#include "simhost/files/fbx_normals.h"

#include "simhost/files/fbx_property.h"

#include <algorithm>
#include <cmath>

namespace simhost {

namespace {

FbxVec3 Of(const Point3& p) {
    return {p.x, p.y, p.z};
}

FbxVec3 Minus(const FbxVec3& a, const FbxVec3& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// A unit vector, or +z for one without a direction.
FbxVec3 UnitOrUp(const FbxVec3& a) {
    const double length = Length(a);
    if (!(length > 0) || !std::isfinite(length))
        return {0, 0, 1};
    return {a[0] / length, a[1] / length, a[2] / length};
}

double Angle(const FbxVec3& a, const FbxVec3& b) {
    return std::atan2(Length(Cross(a, b)), Dot(a, b));
}

/// The faces around one vertex that are smoothed together: those whose groups meet, directly or
/// through others. Groups of different sums at a vertex never share a bit.
struct SmoothSum {
    DWORD groups = 0;
    FbxVec3 normal{0, 0, 0};
    int next = -1; // further sums at the same vertex
};

class Smoother {
  public:
    explicit Smoother(const Mesh& mesh) : mesh_(mesh), first_(mesh.getNumVerts(), -1) {}

    void AddFace(const Face& face, const FbxVec3& direction) {
        if (Dot(direction, direction) == 0)
            return;
        const FbxVec3 faceNormal = UnitOrUp(direction);
        for (int corner = 0; corner < 3; ++corner) {
            const double weight = CornerAngle(face, corner);
            if (std::isfinite(weight))
                Add(face.v[corner], face.smGroup, faceNormal, weight);
        }
    }

    [[nodiscard]] FbxVec3 NormalAt(DWORD vertex, DWORD groups) const {
        int i = first_[vertex];
        while (i >= 0 && !(sums_[i].groups & groups))
            i = sums_[i].next;
        return i < 0 ? FbxVec3{0, 0, 1} : UnitOrUp(sums_[i].normal);
    }

  private:
    [[nodiscard]] double CornerAngle(const Face& face, int corner) const {
        const FbxVec3 at = Of(mesh_.verts[face.v[corner]]);
        return Angle(Minus(Of(mesh_.verts[face.v[(corner + 1) % 3]]), at),
                     Minus(Of(mesh_.verts[face.v[(corner + 2) % 3]]), at));
    }

    void Add(DWORD vertex, DWORD groups, const FbxVec3& normal, double weight) {
        SmoothSum merged{groups, {}, -1};
        for (int c = 0; c < 3; ++c)
            merged.normal[c] = normal[c] * weight;
        int* link = &first_[vertex];
        int place = -1; // an entry that the merged sum can take
        while (*link >= 0) {
            SmoothSum& sum = sums_[*link];
            if (!(sum.groups & groups)) {
                link = &sum.next;
                continue;
            }
            merged.groups |= sum.groups;
            for (int c = 0; c < 3; ++c)
                merged.normal[c] += sum.normal[c];
            place = *link;
            *link = sum.next;
        }
        if (place < 0) {
            place = static_cast<int>(sums_.size());
            sums_.emplace_back();
        }
        merged.next = first_[vertex];
        sums_[place] = merged;
        first_[vertex] = place;
    }

    const Mesh& mesh_;
    std::vector<int> first_;
    std::vector<SmoothSum> sums_;
};

bool ValidFace(const Mesh& mesh, const Face& face) {
    const auto count = static_cast<DWORD>(mesh.getNumVerts());
    return std::all_of(std::begin(face.v), std::end(face.v),
                       [count](DWORD v) { return v < count; });
}

/// Square to the face, as long as its area is large: a face without an area has no say.
FbxVec3 FaceDirection(const Mesh& mesh, const Face& face) {
    if (!ValidFace(mesh, face))
        return {};
    const FbxVec3 a = Of(mesh.verts[face.v[0]]);
    return Cross(Minus(Of(mesh.verts[face.v[1]]), a), Minus(Of(mesh.verts[face.v[2]]), a));
}

std::vector<double> SmoothedNormals(const Mesh& mesh) {
    Smoother smoother(mesh);
    for (int f = 0; f < mesh.getNumFaces(); ++f)
        if (mesh.faces[f].smGroup && ValidFace(mesh, mesh.faces[f]))
            smoother.AddFace(mesh.faces[f], FaceDirection(mesh, mesh.faces[f]));

    std::vector<double> normals;
    normals.reserve(static_cast<std::size_t>(mesh.getNumFaces()) * 9);
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        const Face& face = mesh.faces[f];
        const bool smooth = face.smGroup && ValidFace(mesh, face);
        for (const DWORD vertex : face.v) {
            const FbxVec3 n = smooth ? smoother.NormalAt(vertex, face.smGroup)
                                     : UnitOrUp(FaceDirection(mesh, face));
            normals.insert(normals.end(), n.begin(), n.end());
        }
    }
    return normals;
}

void UseSpecified(MeshNormalSpec& specified, std::vector<double>& normals) {
    for (int f = 0; f < specified.GetNumFaces(); ++f) {
        for (int corner = 0; corner < 3; ++corner) {
            const int id = specified.Face(f).GetNormalID(corner);
            const std::size_t at = (static_cast<std::size_t>(f) * 3 + corner) * 3;
            if (id < 0 || id >= specified.GetNumNormals() || at + 3 > normals.size())
                continue;
            const FbxVec3 n = UnitOrUp(Of(specified.Normal(id)));
            std::copy(n.begin(), n.end(), normals.begin() + static_cast<std::ptrdiff_t>(at));
        }
    }
}

} // namespace

std::vector<double> FbxCornerNormals(Mesh& mesh) {
    std::vector<double> normals = SmoothedNormals(mesh);
    if (MeshNormalSpec* specified = mesh.GetSpecifiedNormals())
        UseSpecified(*specified, normals);
    return normals;
}

} // namespace simhost
