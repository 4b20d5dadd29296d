#include "pipeline/scene_scripts.h"

#include "host/attempt.h"
#include "host/script.h"
#include "host/script_reply.h"

#include "scripts_embedded.h"

namespace brimwave {

std::int32_t RunSplineCopies() {
    std::int32_t count = 0;
    Attempt([&] {
        if (const auto reply = RunScriptString(FillScript(scripts_embedded::spline_copies_ms)))
            if (const auto number = AfterWord(*reply, L"BAKED:"))
                count = LeadingInteger(*number).value_or(0);
    });
    return count;
}

void RestoreSplineCopies() {
    Attempt([] {
        static_cast<void>(RunScriptString(FillScript(scripts_embedded::spline_restore_ms)));
    });
}

void BakeGeometry() {
    Attempt([] { RunScript(FillScript(scripts_embedded::geometry_bake_ms)); });
}

} // namespace brimwave
