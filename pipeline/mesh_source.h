#pragma once
// An object's result as a triangle mesh, and meshes that take an object's place.
#include "host/converted_mesh.h"

#include <memory>
#include <string>
#include <vector>

namespace brimwave {

/// What a node shows below any space warps, as a mesh; what a conversion made is freed again.
class MeshSource {
  public:
    /// What the host throws passes through.
    MeshSource(INode& node, TimeValue time);

    /// Null when there is none to be had.
    [[nodiscard]] Mesh* Get() const { return mesh_.Get(); }
    /// Whether the node's object itself is that mesh: writing to the mesh changes the object.
    [[nodiscard]] bool IsTheObject() const { return Get() && mesh_.Triangles() == object_; }
    /// To be called when the object itself was written to.
    void TellOfChange() const;
    /// Class name of the result before it became a mesh.
    [[nodiscard]] const std::wstring& ClassName() const { return className_; }

  private:
    Object* object_;
    ConvertedMesh mesh_;
    std::wstring className_;
};

/// The class names of the modifiers of an object's stacks, from the top down.
[[nodiscard]] std::vector<std::wstring> ModifierNamesOf(Object* object);

/// Frees an object that nothing came to refer to; a node that holds it keeps it alive.
struct AutoDelete {
    void operator()(Object* object) const { object->MaybeAutoDelete(); }
};
using NewTriObject = std::unique_ptr<TriObject, AutoDelete>;

/// A new Editable Mesh with a copy of everything in the mesh; null when the host makes none.
[[nodiscard]] NewTriObject CopyToObject(const Mesh& mesh);

} // namespace brimwave
