#pragma once
#include "inode.h"
#include "simhost/classes/param_value.h"
#include "simhost/scene/faults.h"

namespace simhost {

class Scene;

/// A node of the scene's tree. Made and deleted by the Scene.
class SceneNode final : public INode {
  public:
    SceneNode(Scene& scene, std::wstring name, ULONG handle);
    ~SceneNode() override;

    Faults faults;

    // Values without rules; the scene file and scripts set them.
    struct Flags {
        bool hidden = false;
        bool frozen = false;
        bool renderable = true;
        bool primaryVisibility = true;
        bool secondaryVisibility = true;
        bool castShadows = true;
        bool receiveShadows = true;
        bool groupHead = false;
        bool groupMember = false;
        bool groupOpen = false;
    } flags;
    float visibility = 1;
    std::wstring layer = L"0";
    std::wstring userProps;

    struct Offset {
        Point3 position;
        Quat rotation;
        ScaleValue scale;
    } offset;

    [[nodiscard]] Scene& Owner() const { return scene_; }
    [[nodiscard]] const std::wstring& Name() const { return name_; }
    [[nodiscard]] SceneNode* Parent() const { return parent_; }
    /// The children in order; never null ones.
    [[nodiscard]] const std::vector<SceneNode*>& Children() const;
    /// Whether this node is the other one or stands above it.
    [[nodiscard]] bool IsAbove(const SceneNode& other) const;

    /// The transform relative to the parent.
    [[nodiscard]] const Matrix3& LocalTM() const { return local_; }
    void SetLocalTM(const Matrix3& tm);
    [[nodiscard]] const Matrix3& WorldTM() const;

    void SetTarget(SceneNode* target);
    [[nodiscard]] Object* ObjectRef() const { return object_.Get(); }
    [[nodiscard]] Object* SpaceStack() const { return spaceStack_.Get(); }
    void SetSpaceStack(Object* stack) { spaceStack_ = stack; }
    [[nodiscard]] Mtl* Material() const { return material_.Get(); }

    Class_ID ClassID() override { return Class_ID(BASENODE_CLASS_ID, 0); }
    void GetClassName(MSTR& s, bool localized = true) const override;

    const MCHAR* GetName() override;
    void SetName(const MCHAR* name) override;
    ULONG GetHandle() override { return nodeHandle_; }
    int IsRootNode() override;
    INode* GetParentNode() override { return parent_; }
    int NumberOfChildren() override;
    INode* GetChildNode(int i) override;
    void AttachChild(INode* child, int keepPosition = 1) override;
    INode* GetTarget() override;
    int IsTarget() override { return lookers_ > 0; }

    Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) override;
    void SetNodeTM(TimeValue t, const Matrix3& tm) override;
    Matrix3 GetObjectTM(TimeValue t, Interval* valid = nullptr) override;
    Matrix3 GetObjTMAfterWSM(TimeValue t, Interval* valid = nullptr) override;

    Object* GetObjectRef() override;
    void SetObjectRef(Object* object) override;
    IDerivedObject* GetWSMDerivedObject() override;
    const ObjectState& EvalWorldState(TimeValue t, BOOL evalHidden = TRUE) override;
    Mtl* GetMtl() override;
    void SetMtl(Mtl* mtl) override;

    int IsHidden(DWORD flagBits = 0, BOOL forRenderer = FALSE) override;
    void Hide(BOOL on) override { flags.hidden = on != FALSE; }
    int IsFrozen() override { return flags.frozen; }
    DWORD GetWireColor() override { return wireColor_; }
    void SetWireColor(DWORD color) override { wireColor_ = color; }
    int Selected() override { return selected_; }
    BOOL IsGroupHead() override { return flags.groupHead; }
    BOOL IsGroupMember() override { return flags.groupMember; }
    void GetUserPropBuffer(MSTR& buffer) override { buffer = MSTR(userProps); }

  private:
    friend class Scene;
    void Attach(SceneNode* child);
    void Detach(SceneNode* child);
    void DropWorldTM() const;

    Scene& scene_;
    std::wstring name_;
    ULONG nodeHandle_;
    Ref<Object> object_;
    Ref<Object> spaceStack_;
    Ref<Mtl> material_;
    ObjectState state_;

    SceneNode* parent_ = nullptr;
    int childCount_ = 0;
    // Removed children leave a hole until somebody looks; so deleting many costs no more than
    // looking once.
    mutable std::vector<SceneNode*> children_;
    mutable bool holes_ = false;
    mutable size_t placeInParent_ = 0;

    Matrix3 local_;
    mutable Matrix3 world_;
    mutable bool worldKnown_ = true; // known implies that the parent's is
    Ref<SceneNode> target_;
    int lookers_ = 0;
    DWORD wireColor_ = 0x999999;
    bool selected_ = false;
};

} // namespace simhost
