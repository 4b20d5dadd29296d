// The six functions by which the host finds and runs the library. The host looks them up by
// name, so they have C names; brimwave.def exports them.
#include "plugin/class_desc.h"
#include "plugin/module.h"
#include "plugin/utility.h"

#include <max.h>

extern "C" {

const MCHAR* LibDescription() {
    return _T("Brimwave Platform");
}

int LibNumberClasses() {
    return 1;
}

ClassDesc* LibClassDesc(int i) {
    return i == 0 ? &brimwave::TheClassDesc() : nullptr;
}

ULONG LibVersion() {
    return VERSION_3DSMAX;
}

int LibInitialize() {
    brimwave::StartGdiplus();
    return TRUE;
}

int LibShutdown() {
    brimwave::TheUtility().ReleaseBanner();
    brimwave::StopGdiplus();
    return TRUE;
}

} // extern "C"
