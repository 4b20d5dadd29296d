#pragma once
#include "modstack.h"
#include "object.h"

/// A node of the scene: a name, a place in the tree, a transform, an object and a material.
class INode : public ReferenceTarget {
  public:
    SClass_ID SuperClassID() override { return BASENODE_CLASS_ID; }

    virtual const MCHAR* GetName() = 0;
    virtual void SetName(const MCHAR* name) = 0;
    virtual ULONG GetHandle() = 0;

    virtual int IsRootNode() = 0;
    virtual INode* GetParentNode() = 0;
    virtual int NumberOfChildren() = 0;
    virtual INode* GetChildNode(int i) = 0;
    virtual void AttachChild(INode* child, int keepPosition = 1) = 0;
    virtual INode* GetTarget() = 0;
    virtual int IsTarget() = 0;

    virtual Matrix3 GetNodeTM(TimeValue t, Interval* valid = nullptr) = 0;
    virtual void SetNodeTM(TimeValue t, const Matrix3& tm) = 0;
    virtual Matrix3 GetObjectTM(TimeValue t, Interval* valid = nullptr) = 0;
    virtual Matrix3 GetObjTMAfterWSM(TimeValue t, Interval* valid = nullptr) = 0;

    /// The object as the node holds it, modifiers included (a derived object when it has any).
    virtual Object* GetObjectRef() = 0;
    virtual void SetObjectRef(Object* object) = 0;
    virtual IDerivedObject* GetWSMDerivedObject() = 0;
    /// The result of the stack at a time; `.obj` may be null.
    virtual const ObjectState& EvalWorldState(TimeValue t, BOOL evalHidden = TRUE) = 0;

    virtual Mtl* GetMtl() = 0;
    virtual void SetMtl(Mtl* mtl) = 0;

    virtual int IsHidden(DWORD flags = 0, BOOL forRenderer = FALSE) = 0;
    virtual void Hide(BOOL on) = 0;
    virtual int IsFrozen() = 0;
    virtual DWORD GetWireColor() = 0; // 0x00bbggrr
    virtual void SetWireColor(DWORD color) = 0;
    virtual int Selected() = 0;

    virtual BOOL IsGroupHead() = 0;
    virtual BOOL IsGroupMember() = 0;

    virtual void GetUserPropBuffer(MSTR& buffer) = 0;
};
