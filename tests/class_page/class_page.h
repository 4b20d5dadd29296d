#pragma once
#include <string>

namespace brimwave::testing {

/// The text of docs/package-classes.md as the class tables give it: UTF-8.
[[nodiscard]] std::string ClassPage();

} // namespace brimwave::testing
