#pragma once
#include <string>

namespace brimwave {

/// Full path of the open scene's file; empty when it was never saved or the host does not tell.
[[nodiscard]] std::wstring ScenePath();

} // namespace brimwave
