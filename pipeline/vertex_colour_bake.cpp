#include "pipeline/vertex_colour_bake.h"

#include "host/sdk_compat.h"
#include "host/text.h"
#include "pipeline/attempt.h"
#include "pipeline/scene_walk.h"

#include <max.h>

#include <string>

namespace brimwave {
namespace {

bool IsRandomChoice(Texmap& map) {
    const std::wstring name = ToLowerW(ClassNameOf(map));
    return name == L"multitexture" || name == L"coronamultimap";
}

void Log(const std::wstring& line) {
    if (LogSys* const log = GetCOREInterface()->Log())
        log->LogEntry(SYSLOG_INFO, NO_DIALOG, L"Brimwave Platform", L"%ls", line.c_str());
}

} // namespace

void BakeMultiTextureVC() {
    Attempt([] {
        int found = 0;
        ForEachSceneMap(
            [&](Texmap& map) { Attempt([&] { found += IsRandomChoice(map) ? 1 : 0; }); });
        Log(found == 0 ? L"[Brimwave VC] Nothing to bake."
                       : L"[Brimwave VC] Not baked: " + std::to_wstring(found) + L" map(s).");
    });
}

} // namespace brimwave
