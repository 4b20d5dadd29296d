#pragma once
#include <string>
#include <string_view>

namespace simhost {

/// Lower case, letter by letter; for comparing names.
[[nodiscard]] std::wstring Fold(std::wstring_view text);

} // namespace simhost
