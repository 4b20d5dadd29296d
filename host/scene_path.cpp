#include "host/scene_path.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"

namespace brimwave {

std::wstring ScenePath() {
    return AttemptOr(std::wstring(), [] {
        Interface* const core = GetCOREInterface();
        return core ? HostText(core->GetCurFilePath()) : std::wstring();
    });
}

} // namespace brimwave
