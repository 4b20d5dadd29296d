#include "plugin/class_desc.h"

#include "plugin/module.h"
#include "plugin/utility.h"

namespace brimwave {

void* BrimwaveClassDesc::Create(BOOL) {
    // The host takes the pointer for a UtilityObj.
    return static_cast<UtilityObj*>(&TheUtility());
}

HINSTANCE BrimwaveClassDesc::HInstance() {
    return ModuleInstance();
}

BrimwaveClassDesc& TheClassDesc() {
    static BrimwaveClassDesc descriptor;
    return descriptor;
}

} // namespace brimwave
