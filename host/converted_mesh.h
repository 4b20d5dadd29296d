#pragma once
#include <max.h>

#include <triobj.h>

namespace brimwave {

/// An object as a triangle mesh; frees it again when the conversion made a new one. What the host
/// throws passes through.
class ConvertedMesh {
  public:
    /// `source` may be null.
    ConvertedMesh(Object* source, TimeValue time);
    ~ConvertedMesh();
    ConvertedMesh(const ConvertedMesh&) = delete;
    ConvertedMesh& operator=(const ConvertedMesh&) = delete;

    /// Null when the object is none and cannot become one; the source itself when it is one.
    [[nodiscard]] TriObject* Triangles() const { return triangles_; }
    [[nodiscard]] Mesh* Get() const { return triangles_ ? &triangles_->GetMesh() : nullptr; }
    [[nodiscard]] Object* Source() const { return source_; }

  private:
    Object* source_;
    TriObject* triangles_ = nullptr;
};

} // namespace brimwave
