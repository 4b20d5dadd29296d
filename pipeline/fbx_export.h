#pragma once
#include <string>

namespace brimwave {

/// Has the host write the whole scene to `path`, by the exporter that it keeps for ".fbx" and
/// with the settings last used there. Blocks. False, with the reason in `failure`, when the host
/// refuses or no file stands at `path` afterwards.
[[nodiscard]] bool ExportFbx(const std::wstring& path, std::wstring& failure);

} // namespace brimwave
