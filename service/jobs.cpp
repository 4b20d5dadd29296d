#include "service/jobs.h"

#include "host/files.h"
#include "service/url.h"

namespace brimwave {

HttpResult SubmitJob(std::wstring_view baseAddress, const std::wstring& packagePath,
                     std::wstring_view token, std::wstring_view jobName,
                     std::wstring_view targetVersion) {
    const std::optional<std::string> body = ReadWholeFile(packagePath);
    if (!body)
        return {.text = L"Cannot read JSON file: " + packagePath};
    return PostJobRequest(std::wstring(baseAddress).append(L"/node/api/v1/jobs"), token, *body,
                          jobName, targetVersion);
}

HttpResult PostJobRequest(std::wstring_view url, std::wstring_view token, std::string_view body,
                          std::wstring_view jobName, std::wstring_view targetVersion) {
    std::wstring headers = L"X-Job-Name: " + UrlEncode(jobName);
    if (targetVersion == L"5.1" || targetVersion == L"5.2")
        headers.append(L"\r\nX-Blender-Target-Version: ").append(targetVersion);
    return HttpRequest(url, L"POST", token, body, headers);
}

} // namespace brimwave
