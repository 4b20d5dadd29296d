#include "package/package_log.h"

#include "package/utf8_store.h"

namespace brimwave {

std::wstring LogPathFor(std::wstring_view packagePath) {
    return std::wstring(packagePath.substr(0, packagePath.rfind(L'.'))) + L".log";
}

void WriteLogFile(const std::wstring& path, const PackageLog& log) {
    Utf8File file(path);
    for (const std::wstring& line : log.Lines()) {
        file.Write(line);
        file.Write(L"\n");
    }
}

} // namespace brimwave
