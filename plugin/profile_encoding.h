#pragma once
#include <string>

namespace brimwave {

/// Makes the profile file able to hold any text. The profile calls write a file in the system's
/// 8-bit code page, losing what that page lacks, unless the file begins with a UTF-16 mark. So a
/// missing or empty file is begun with one, and an 8-bit file is rewritten with its values kept.
/// A file that cannot be opened or written stays as it is. False for a read-only file, which is
/// not to be written at all.
[[nodiscard]] bool EnsureUnicodeProfile(const std::wstring& path);

} // namespace brimwave
