#pragma once
#include <max.h>

#include <string_view>

namespace brimwave {

/// Modifiers that displace when the scene is rendered: they leave the mesh as it is.
enum class DisplacementKind { None, Corona, VRay };

[[nodiscard]] DisplacementKind DisplacementKindOf(std::wstring_view className);

/// Whether the object is a stack of modifiers on another one.
[[nodiscard]] inline bool IsStack(Object& object) {
    return object.SuperClassID() == GEN_DERIVOB_CLASS_ID;
}

/// The object that all stacks under `object` stand on; `object` itself without a stack.
[[nodiscard]] inline Object* BaseObjectOf(Object* object) {
    while (object && IsStack(*object))
        object = static_cast<IDerivedObject*>(object)->GetObjRef();
    return object;
}

/// Calls `visit(Modifier&)` for the modifiers of the object's stacks, from the top down, until one
/// call returns true. Gives whether one did.
template <class Visit>
bool AnyModifier(Object* object, Visit visit) {
    while (object && IsStack(*object)) {
        auto* const stack = static_cast<IDerivedObject*>(object);
        const int count = stack->NumModifiers();
        for (int i = 0; i < count; ++i)
            if (Modifier* const modifier = stack->GetModifier(i); modifier && visit(*modifier))
                return true;
        object = stack->GetObjRef();
    }
    return false;
}

} // namespace brimwave
