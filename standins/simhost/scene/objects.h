#pragma once
// The classes behind the SDK's objects.
#include "gencam.h"
#include "modstack.h"
#include "simhost/scene/parametric.h"
#include "simhost/scene/spline.h"
#include "triobj.h"

namespace simhost {

/// What the host itself asks of an object of the scene.
class SceneObject {
  public:
    virtual ~SceneObject() = default;
    /// Fills the mesh; false when the object has none. May be without faces.
    virtual bool BuildMesh(Mesh& mesh) const = 0;
    [[nodiscard]] virtual std::unique_ptr<Object> Clone() const = 0;
    [[nodiscard]] virtual Object* AsObject() = 0;
};

/// The mesh that a conversion or a modifier stack made.
class ResultMesh final : public TriObject {
  public:
    enum class Life { Temporary, Kept };
    explicit ResultMesh(Life life);
    ~ResultMesh() override;
    Class_ID ClassID() override { return triObjectClassID; }
    void GetClassName(MSTR& s, bool localized = true) const override;
    const MCHAR* GetObjectName(bool localized) override;
    int CanConvertToType(Class_ID id) override;
    Object* ConvertToType(TimeValue t, Class_ID id) override;
    void DeleteThis() override { delete this; }
    /// Frees a temporary one; a kept one belongs to its stack.
    void MaybeAutoDelete() override;
    /// Temporary meshes that were made and not yet freed.
    static int LiveTemporaries();

  private:
    Life life_;
};

/// Objects of described classes.
template <class Base>
class ParametricObject : public Parametric<Base>, public SceneObject {
  public:
    using Parametric<Base>::Parametric;
    const MCHAR* GetObjectName(bool localized) override {
        return (localized ? this->Class().localizedName : this->Class().name).c_str();
    }
    Object* AsObject() override { return this; }
    bool BuildMesh(Mesh& /*mesh*/) const override { return false; }
    [[nodiscard]] bool HasMesh() const { return this->Class().converts && MakesMesh(); }
    int CanConvertToType(Class_ID id) override {
        this->faults.Check(Call::CanConvertToType);
        return id == triObjectClassID && HasMesh();
    }
    Object* ConvertToType(TimeValue /*t*/, Class_ID id) override {
        this->faults.Check(Call::ConvertToType);
        if (id != triObjectClassID || !HasMesh())
            return nullptr;
        auto made = std::make_unique<ResultMesh>(ResultMesh::Life::Temporary);
        return BuildMesh(made->mesh) ? made.release() : nullptr;
    }
    int IsRenderable() override {
        this->faults.Check(Call::IsRenderable);
        return Base::IsRenderable();
    }

  protected:
    [[nodiscard]] virtual bool MakesMesh() const { return false; }
};

/// Editable Mesh: is a triangle mesh, so a conversion gives the object itself.
class SceneMesh final : public ParametricObject<TriObject> {
  public:
    using ParametricObject::ParametricObject;
    bool BuildMesh(Mesh& out) const override;
    Object* ConvertToType(TimeValue t, Class_ID id) override;
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;
    ~SceneMesh() override { SetLoose(nullptr); }
    /// Frees one that a plug-in made and that nothing refers to yet.
    void MaybeAutoDelete() override;
    using Free = void(SceneMesh& mesh);
    /// With a way to free it the mesh is loose, its maker's; the first node or stack that holds it
    /// takes it over (null).
    void SetLoose(Free* free);
    static void TakenInto(Object* object);
    /// How many are loose.
    static int LiveLoose();

  protected:
    [[nodiscard]] bool MakesMesh() const override { return true; }

  private:
    Free* free_ = nullptr;
};

/// All other geometry: primitives made from parameters, and classes with a mesh of their own
/// (Editable Poly, third-party objects). A conversion makes a new object.
class SceneGeometry final : public ParametricObject<GeomObject> {
  public:
    using ParametricObject::ParametricObject;
    std::unique_ptr<Mesh> ownMesh;
    bool BuildMesh(Mesh& out) const override;
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;
    int IsRenderable() override;

  protected:
    [[nodiscard]] bool MakesMesh() const override;
};

class SceneShape final : public ParametricObject<ShapeObject> {
  public:
    using ParametricObject::ParametricObject;
    std::vector<Spline> splines; // of classes that hold them; others make theirs from parameters
    [[nodiscard]] std::vector<Spline> Splines() const;
    /// Tubes along the splines when rendering is on, else a mesh without faces.
    bool BuildMesh(Mesh& out) const override;
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;

  protected:
    [[nodiscard]] bool MakesMesh() const override { return true; }
};

class SceneLight final : public ParametricObject<LightObject> {
  public:
    using ParametricObject::ParametricObject;
    bool useLight = true;
    BOOL GetUseLight() override { return useLight ? TRUE : FALSE; }
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;
};

class SceneCamera final : public ParametricObject<GenCamera> {
  public:
    using ParametricObject::ParametricObject;
    struct Lens {
        std::optional<float> fov; // radians, horizontal; empty: from the lens parameters
        bool ortho = false;
        float targetDistance = 160;
        bool manualClip = false;
        float nearClip = 0;
        float farClip = 1000;
    } lens;

    RefResult EvalCameraState(TimeValue t, Interval& valid, CameraState* state) override;
    BOOL IsOrtho() override;
    float GetFOV(TimeValue t, Interval& valid) override;
    int GetManualClip() override;
    float GetClipDist(TimeValue t, int which, Interval& valid) override;
    float GetTDist(TimeValue t, Interval& valid) override;
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;

  private:
    [[nodiscard]] float FieldOfView() const;
};

class SceneHelper final : public ParametricObject<HelperObject> {
  public:
    using ParametricObject::ParametricObject;
    Point3 boxMin{-5, -5, -5};
    Point3 boxMax{5, 5, 5};
    [[nodiscard]] std::unique_ptr<Object> Clone() const override;
};

class SceneModifier final : public Parametric<Modifier> {
  public:
    using Parametric::Parametric;
    bool enabled = true;
    Matrix3 matrix; // of an XForm
    int IsEnabled() override;
    const MCHAR* GetObjectName(bool localized) override;
    [[nodiscard]] std::unique_ptr<SceneModifier> CloneModifier() const;
};

} // namespace simhost
