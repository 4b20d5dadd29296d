#pragma once
#include <string>

namespace brimwave {

/// The form in which the platform's file calls take a full path of any length: they refuse 260
/// and more characters in the plain form. Short paths come back as they are.
[[nodiscard]] std::wstring LongPath(const std::wstring& path);

} // namespace brimwave
