#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace simhost {

/// Blanks and line ends are skipped; empty when the text is no base64.
[[nodiscard]] std::optional<std::string> DecodeBase64(std::string_view text);

} // namespace simhost
