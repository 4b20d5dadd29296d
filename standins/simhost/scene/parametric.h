#pragma once
#include "simhost/scene/entity.h"

namespace simhost {

/// An SDK class whose class, blocks and sub-objects come from an Entity.
template <class Base>
class Parametric : public Base, public Entity {
  public:
    explicit Parametric(ClassPtr info) : Entity(std::move(info), this) {}

    SClass_ID SuperClassID() override {
        faults.Check(Call::SuperClassID);
        return Class().superClass;
    }
    Class_ID ClassID() override {
        faults.Check(Call::ClassID);
        return Class().classId;
    }
    void GetClassName(MSTR& s, bool localized = true) const override {
        faults.Check(Call::GetClassName);
        s = MSTR(localized ? Class().localizedName : Class().name);
    }
    int NumParamBlocks() override {
        faults.Check(Call::NumParamBlocks);
        return VisibleBlockCount();
    }
    IParamBlock2* GetParamBlock(int i) override {
        return faults.Give(Call::GetParamBlock, VisibleBlock(i));
    }

    // The references of a thing are its blocks, then its sub-objects.
    int NumRefs() override {
        faults.Check(Call::NumRefs);
        return VisibleBlockCount() + NumSubObjects();
    }
    ReferenceTarget* GetReference(int i) override {
        ReferenceTarget* const found =
            i < VisibleBlockCount() ? VisibleBlock(i) : SubObject(i - VisibleBlockCount());
        return faults.Give(Call::GetReference, found);
    }
    int NumSubs() override {
        faults.Check(Call::NumSubs);
        return VisibleBlockCount() + NumSubObjects();
    }
    Animatable* SubAnim(int i) override {
        faults.Check(Call::SubAnim);
        return i < VisibleBlockCount() ? VisibleBlock(i) : SubObject(i - VisibleBlockCount());
    }
};

/// Materials and maps: a name and texture slots.
template <class Base>
class ParametricMtlBase : public Parametric<Base> {
  public:
    using Parametric<Base>::Parametric;
    MSTR GetName() override { return this->faults.Give(Call::GetName, MSTR(this->name)); }
    void SetName(const MSTR& newName) override {
        this->faults.Check(Call::SetName);
        this->name = newName.data();
    }
    int NumSubTexmaps() override {
        return this->faults.Give(Call::NumSubTexmaps, this->NumSlots());
    }
    Texmap* GetSubTexmap(int i) override {
        return this->faults.Give(Call::GetSubTexmap, this->SlotMap(i));
    }
    void SetSubTexmap(int i, Texmap* map) override { this->SetSlotMap(i, map); }
    int SubTexmapOn(int i) override {
        this->faults.Check(Call::SubTexmapOn);
        return this->SlotOn(i) ? 1 : 0;
    }
    MSTR GetSubTexmapSlotName(int i, bool /*localized*/) override {
        this->faults.Check(Call::GetSubTexmapSlotName);
        Text slotName = this->SlotName(i);
        return slotName ? MSTR(*std::move(slotName)) : MSTR();
    }
};

/// Materials: sub-materials as well.
template <class Base>
class ParametricMtl : public ParametricMtlBase<Base> {
  public:
    using ParametricMtlBase<Base>::ParametricMtlBase;
    int NumSubMtls() override { return this->faults.Give(Call::NumSubMtls, this->NumMtls()); }
    Mtl* GetSubMtl(int i) override { return this->faults.Give(Call::GetSubMtl, this->SubMtlAt(i)); }
    MSTR GetSubMtlSlotName(int i, bool /*localized*/) override {
        this->faults.Check(Call::GetSubMtlSlotName);
        return MSTR(this->SubMtlNameAt(i));
    }
};

} // namespace simhost
