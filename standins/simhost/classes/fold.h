#pragma once
// Names of the scene, compared without regard to letter case.
#include <string_view>

namespace simhost {

/// Letter by letter.
[[nodiscard]] bool EqualFolded(std::wstring_view a, std::wstring_view b);

} // namespace simhost
