#pragma once
// Triangle meshes.
#include "matrix3.h"

#include <map>
#include <memory>
#include <vector>

inline constexpr int EDGE_VIS1 = 1;
inline constexpr int EDGE_VIS2 = 2;
inline constexpr int EDGE_VIS3 = 4;
inline constexpr int MAP_ALPHA = -2;
inline constexpr int MAP_SHADING = -1;

using UVVert = Point3;
using VertColor = Point3;

class Face {
  public:
    DWORD v[3] = {0, 0, 0};
    DWORD smGroup = 0;
    DWORD flags = EDGE_VIS1 | EDGE_VIS2 | EDGE_VIS3;
    void setVerts(DWORD a, DWORD b, DWORD c) {
        v[0] = a;
        v[1] = b;
        v[2] = c;
    }
    [[nodiscard]] DWORD getVert(int i) const { return v[i]; }
    [[nodiscard]] MtlID getMatID() const { return matID_; } // 0-based
    void setMatID(MtlID id) { matID_ = id; }
    [[nodiscard]] DWORD getSmGroup() const { return smGroup; }
    void setSmGroup(DWORD group) { smGroup = group; }

  private:
    MtlID matID_ = 0;
};

class TVFace {
  public:
    DWORD t[3] = {0, 0, 0};
    void setTVerts(DWORD a, DWORD b, DWORD c) {
        t[0] = a;
        t[1] = b;
        t[2] = c;
    }
};

class Mesh;

/// One mapping channel: its own vertices, and one TVFace for each face of the mesh.
class MeshMap {
  public:
    int vnum = 0;
    int fnum = 0;
    UVVert* tv = nullptr;
    TVFace* tf = nullptr;
    void setNumVerts(int count, BOOL keep = FALSE);
    void setNumFaces(int count, BOOL keep = FALSE);
    [[nodiscard]] int getNumVerts() const { return vnum; }
    [[nodiscard]] int getNumFaces() const { return fnum; }
    void Clear();
    MeshMap() = default;
    MeshMap(const MeshMap& other);
    MeshMap& operator=(const MeshMap& other);

  private:
    friend class Mesh;
    void Repoint();
    Mesh* mesh_ = nullptr; // whose short cuts to channels 0 and 1 follow this map
    std::vector<UVVert> vertStore_;
    std::vector<TVFace> faceStore_;
};

/// Explicit normals of one face; an id for each corner.
class MeshNormalFace {
  public:
    [[nodiscard]] int GetNormalID(int corner) const { return ids_[corner]; }
    void SetNormalID(int corner, int id) { ids_[corner] = id; }

  private:
    int ids_[3] = {0, 0, 0};
};

class MeshNormalSpec {
  public:
    [[nodiscard]] int GetNumNormals() const { return static_cast<int>(normals_.size()); }
    [[nodiscard]] int GetNumFaces() const { return static_cast<int>(faces_.size()); }
    void SetNumNormals(int count) { normals_.resize(static_cast<size_t>(count)); }
    void SetNumFaces(int count) { faces_.resize(static_cast<size_t>(count)); }
    Point3& Normal(int i) { return normals_[static_cast<size_t>(i)]; }
    MeshNormalFace& Face(int i) { return faces_[static_cast<size_t>(i)]; }

  private:
    std::vector<Point3> normals_;
    std::vector<MeshNormalFace> faces_;
};

class Mesh {
  public:
    int numVerts = 0;
    int numFaces = 0;
    int numTVerts = 0;
    int numCVerts = 0;
    Point3* verts = nullptr;
    Face* faces = nullptr;
    UVVert* tVerts = nullptr;     // channel 1
    TVFace* tvFace = nullptr;     // channel 1
    VertColor* vertCol = nullptr; // channel 0
    TVFace* vcFace = nullptr;     // channel 0

    Mesh() = default;
    Mesh(const Mesh& other);
    Mesh& operator=(const Mesh& other);

    [[nodiscard]] int getNumVerts() const { return numVerts; }
    [[nodiscard]] int getNumFaces() const { return numFaces; }
    BOOL setNumVerts(int count, BOOL keep = FALSE);
    BOOL setNumFaces(int count, BOOL keep = FALSE);
    [[nodiscard]] Point3 getVert(int i) const { return verts[i]; }
    void setVert(int i, const Point3& p) { verts[i] = p; }
    [[nodiscard]] MtlID getFaceMtlIndex(int i) const { return faces[i].getMatID(); }
    void setFaceMtlIndex(int i, MtlID id) { faces[i].setMatID(id); }

    // Texture coordinates of channel 1.
    [[nodiscard]] int getNumTVerts() const { return numTVerts; }
    BOOL setNumTVerts(int count, BOOL keep = FALSE) { return SetVerts(1, count, keep); }
    BOOL setNumTVFaces(int count, BOOL keep = FALSE) { return SetFaces(1, count, keep); }

    // Vertex colours (channel 0).
    [[nodiscard]] int getNumVertCol() const { return numCVerts; }
    BOOL setNumVertCol(int count, BOOL keep = FALSE) { return SetVerts(0, count, keep); }
    BOOL setNumVCFaces(int count, BOOL keep = FALSE) { return SetFaces(0, count, keep); }

    // Any mapping channel: 0 colours, 1..99 texture coordinates, MAP_ALPHA, MAP_SHADING.
    void setMapSupport(int channel, BOOL on = TRUE);
    [[nodiscard]] BOOL mapSupport(int channel) const;
    /// The channel must be supported.
    MeshMap& Map(int channel);
    [[nodiscard]] int getNumMaps() const { return 100; }

    void SpecifyNormals();
    [[nodiscard]] MeshNormalSpec* GetSpecifiedNormals() { return normals_.get(); }

  private:
    friend class MeshMap;
    void Repoint();
    MeshMap& Channel(int channel);
    BOOL SetVerts(int channel, int count, BOOL keep);
    BOOL SetFaces(int channel, int count, BOOL keep);
    std::vector<Point3> vertStore_;
    std::vector<Face> faceStore_;
    std::map<int, MeshMap> maps_;
    std::unique_ptr<MeshNormalSpec> normals_;
};
