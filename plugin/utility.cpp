#include "plugin/utility.h"

namespace brimwave {

void BrimwaveUtility::BeginEditParams(Interface* ip, IUtil*) {
    if (Interface* host = ip ? ip : GetCOREInterface())
        panel_.Open(host->GetMAXHWnd());
}

void BrimwaveUtility::EndEditParams(Interface*, IUtil*) {
    panel_.Close();
}

BrimwaveUtility& TheUtility() {
    static BrimwaveUtility utility;
    return utility;
}

} // namespace brimwave
