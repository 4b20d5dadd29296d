#include "pipeline/fbx_export.h"

#include "host/attempt.h"
#include "host/files.h"

#include <max.h>

namespace brimwave {
namespace {

constexpr wchar_t refused[] =
    L"FBX export failed (FBX exporter not available or export was rejected — is the FBX plugin "
    L"installed in 3ds Max?)";

constexpr wchar_t notCreated[] = L"FBX was not created:\n";
constexpr wchar_t whyNotCreated[] = L"\n\nPossible reasons:\n"
                                    L"• Exchange Folder is not accessible from Windows\n"
                                    L"• No write permissions\n"
                                    L"• FBX export settings prohibit export";

} // namespace

bool ExportFbx(const std::wstring& path, std::wstring& failure) {
    failure.clear();
    BOOL accepted = FALSE;
    Attempt([&] {
        if (Interface* core = GetCOREInterface())
            accepted = core->ExportToFile(path.c_str(), TRUE, 0, nullptr);
    });
    if (!accepted)
        failure = refused;
    else if (!PathExists(path))
        failure = notCreated + path + whyNotCreated;
    return failure.empty();
}

} // namespace brimwave
