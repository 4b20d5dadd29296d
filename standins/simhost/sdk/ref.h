#pragma once
#include "interval.h"
#include "strclass.h"

class IParamBlock2;
class ReferenceTarget;

/// Root of the host's object model: everything with parameters, a class and a handle.
class Animatable {
  public:
    virtual ~Animatable();
    Animatable();
    Animatable(const Animatable&) = delete;
    Animatable& operator=(const Animatable&) = delete;

    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    /// `localized` false: the name that is the same in every language of the host.
    virtual void GetClassName(MSTR& s, bool localized = true) const = 0;
    [[nodiscard]] MSTR ClassName(bool localized = true) const {
        MSTR s;
        GetClassName(s, localized);
        return s;
    }

    virtual int NumParamBlocks() { return 0; }
    virtual IParamBlock2* GetParamBlock(int /*i*/) { return nullptr; }

    virtual int NumSubs() { return 0; }
    virtual Animatable* SubAnim(int /*i*/) { return nullptr; }

    virtual void DeleteThis() {}
    /// Frees an object that nothing refers to, such as the result of a conversion.
    virtual void MaybeAutoDelete() {}

    /// A handle stays valid for the session; 0 for null.
    static AnimHandle GetHandleByAnim(Animatable* anim);
    /// Null for an unknown handle or a deleted object.
    static Animatable* GetAnimByHandle(AnimHandle handle);

  private:
    AnimHandle handle_;
};

class ReferenceMaker : public Animatable {
  public:
    virtual int NumRefs() { return 0; }
    virtual ReferenceTarget* GetReference(int /*i*/) { return nullptr; }
};

/// What changed of an object, and what is said about it.
using PartID = ULONG;
using RefMessage = UINT;
inline constexpr PartID PART_ALL = 0xffffffffu;
inline constexpr RefMessage REFMSG_CHANGE = 0x10;
inline constexpr RefResult REF_SUCCEED = 1;

class ReferenceTarget : public ReferenceMaker {
  public:
    /// Tells all that refer to this object of a change that was made to it in place, so that they
    /// forget what they keep of it. Here a node without modifiers keeps nothing of its object.
    virtual RefResult NotifyDependents(const Interval& /*changed*/, PartID /*part*/,
                                       RefMessage /*message*/) {
        return REF_SUCCEED;
    }
};
