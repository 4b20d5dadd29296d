#pragma once
#include "service/http.h"

#include <string>
#include <string_view>

namespace brimwave {

/// Sends the package file as a job: a POST of its exact bytes to `baseAddress` +
/// "/node/api/v1/jobs". Blocks. The file is held in memory once. A file that cannot be read gives
/// "Cannot read JSON file: " + path and no request; everything else is PostJobRequest's result.
[[nodiscard]] HttpResult SubmitJob(std::wstring_view baseAddress, const std::wstring& packagePath,
                                   std::wstring_view token, std::wstring_view jobName,
                                   std::wstring_view targetVersion);

/// Posts `body` with the header "X-Job-Name" (percent-encoded) and, for the versions "5.1" and
/// "5.2" alone, "X-Blender-Target-Version". The answer is returned as it is.
[[nodiscard]] HttpResult PostJobRequest(std::wstring_view url, std::wstring_view token,
                                        std::string_view body, std::wstring_view jobName,
                                        std::wstring_view targetVersion);

} // namespace brimwave
