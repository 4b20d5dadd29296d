#pragma once
#include "imtl.h"
#include "simhost/scene/param_block.h"

namespace simhost {

/// What every scene thing of a described class has: its class, its values, its texture slots, its
/// sub-materials and sub-objects, and the faults that were asked for. The SDK's classes are put
/// around it in parametric.h; the host's own code (scene files, scripts, exporters) works on this.
class Entity {
  public:
    Entity(ClassPtr info, Animatable* self);
    virtual ~Entity() = default;
    Entity(const Entity&) = delete;
    Entity& operator=(const Entity&) = delete;

    [[nodiscard]] const ClassInfo& Class() const { return *class_; }
    [[nodiscard]] const ClassPtr& ClassShared() const { return class_; }
    [[nodiscard]] Animatable* Self() const { return self_; }
    std::wstring name;
    Faults faults;

    // Parameters. Hidden blocks count here.
    [[nodiscard]] const std::vector<std::unique_ptr<ParamBlock>>& Blocks() const { return blocks_; }
    /// "Block|name" or a bare name; not known when the class lacks it.
    [[nodiscard]] ParamPlace FindParam(std::wstring_view param) const {
        return class_->Find(param);
    }
    [[nodiscard]] ParamType2 TypeOf(ParamPlace place) const;
    /// Null when the place or the element is not there.
    [[nodiscard]] const Scalar* Get(ParamPlace place) const;
    void Set(ParamPlace place, ParamValue value);
    /// Grows with every change of a parameter.
    [[nodiscard]] unsigned long Version() const;
    [[nodiscard]] float Float(std::wstring_view param, float fallback = 0) const;
    [[nodiscard]] int Int(std::wstring_view param, int fallback = 0) const;
    [[nodiscard]] const Text* String(std::wstring_view param) const;

    // Texture slots.
    [[nodiscard]] int NumSlots() const;
    [[nodiscard]] Text SlotName(int slot) const;
    [[nodiscard]] Texmap* SlotMap(int slot) const;
    void SetSlotMap(int slot, Texmap* map);
    [[nodiscard]] bool SlotOn(int slot) const;
    void SetSlotOn(int slot, bool on);
    /// By the slot's name (exact first, then any letter case) or by the parameter that feeds it;
    /// -1 when there is none.
    [[nodiscard]] int FindSlot(std::wstring_view wanted) const;

    // Sub-materials.
    [[nodiscard]] int NumMtls() const;
    [[nodiscard]] Mtl* SubMtlAt(int i) const;
    void SetSubMtlAt(int i, Mtl* mtl);
    [[nodiscard]] std::wstring SubMtlNameAt(int i) const;

    // Sub-objects, in the order of the class's list.
    [[nodiscard]] int NumSubObjects() const { return static_cast<int>(subObjects_.size()); }
    [[nodiscard]] ReferenceTarget* SubObject(int i) const;
    [[nodiscard]] ReferenceTarget* SubObject(std::wstring_view role) const;
    /// A null pointer leaves the role empty. False when the class has no such role.
    bool SetSubObject(std::wstring_view role, std::unique_ptr<ReferenceTarget> object);

    /// Values, slots, name and faults of another thing of the same class; sub-objects are not.
    void CopyFrom(const Entity& other);

  protected:
    // What a plug-in sees.
    [[nodiscard]] int VisibleBlockCount() const { return static_cast<int>(visible_.size()); }
    [[nodiscard]] ParamBlock* VisibleBlock(int i) const;

  private:
    struct SlotState {
        Ref<Texmap> map;
        bool on = true;
    };
    struct SlotPlace {
        const SlotSpec* spec = nullptr;
        size_t state = 0;
        int entry = -1; // of a whole table
        [[nodiscard]] ParamPlace Of(ParamPlace place) const;
    };
    [[nodiscard]] SlotPlace PlaceOfSlot(int slot) const;
    [[nodiscard]] ParamPlace PlaceOfMtl(int i, const SubMtlSpec** spec = nullptr) const;
    [[nodiscard]] int CountAt(ParamPlace place) const;
    void SetWhereThere(ParamPlace place, Scalar value);

    ClassPtr class_;
    Animatable* self_;
    std::vector<std::unique_ptr<ParamBlock>> blocks_; // null where the class has a null block
    std::vector<size_t> visible_;
    std::vector<SlotState> slots_;
    std::vector<std::unique_ptr<ReferenceTarget>> subObjects_;
};

/// The entity of a scene thing; null for what has none (nodes, stacks, conversions).
[[nodiscard]] Entity* EntityOf(Animatable* thing);

} // namespace simhost
