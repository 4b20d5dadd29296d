#include "package/package_log.h"

namespace brimwave {

void PackageLog::Add(std::initializer_list<std::wstring_view> parts) {
    line_.clear();
    for (const std::wstring_view part : parts)
        line_ += part;
    line_ += L'\n';
    text_.Append(line_);
    ++count_;
}

std::wstring LogPathFor(std::wstring_view packagePath) {
    return std::wstring(packagePath.substr(0, packagePath.rfind(L'.'))) + L".log";
}

void WriteLogFile(const std::wstring& path, const PackageLog& log) {
    Utf8File file(path);
    file.Write(log.Text());
}

} // namespace brimwave
