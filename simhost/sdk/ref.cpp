#include "ref.h"

#include <vector>

namespace {

// Handles are places in this table. A place is never given twice, so a handle of something that
// was deleted stays dead. The table outlives every object, also those with static storage.
constexpr AnimHandle firstHandle = 0x1000;

std::vector<Animatable*>& Table() {
    static auto* table = new std::vector<Animatable*>;
    return *table;
}

} // namespace

Animatable::Animatable() : handle_(firstHandle + Table().size()) {
    Table().push_back(this);
}

Animatable::~Animatable() {
    Table()[handle_ - firstHandle] = nullptr;
}

AnimHandle Animatable::GetHandleByAnim(Animatable* anim) {
    return anim ? anim->handle_ : 0;
}

Animatable* Animatable::GetAnimByHandle(AnimHandle handle) {
    const AnimHandle place = handle - firstHandle;
    return handle >= firstHandle && place < Table().size() ? Table()[place] : nullptr;
}
