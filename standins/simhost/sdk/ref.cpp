#include "ref.h"

#include <vector>

namespace {

// Handles are places in this table. A place is never given twice, so a handle of something that
// was deleted stays dead. The table outlives every object, also those with static storage.
constexpr AnimHandle firstHandle = 0x1000;

constinit std::vector<Animatable*>* table = nullptr;

AnimHandle Enter(Animatable* anim) {
    if (!table)
        table = new std::vector<Animatable*>;
    table->push_back(anim);
    return firstHandle + table->size() - 1;
}

} // namespace

Animatable::Animatable() : handle_(Enter(this)) {}

Animatable::~Animatable() {
    (*table)[handle_ - firstHandle] = nullptr;
}

AnimHandle Animatable::GetHandleByAnim(Animatable* anim) {
    return anim ? anim->handle_ : 0;
}

Animatable* Animatable::GetAnimByHandle(AnimHandle handle) {
    const AnimHandle place = handle - firstHandle;
    return handle >= firstHandle && table && place < table->size() ? (*table)[place] : nullptr;
}
