#pragma once
#include <string>

namespace brimwave {

/// Makes the profile file able to hold any text. The profile calls write a file in the system's
/// 8-bit code page, losing what that page lacks, unless the file begins with a UTF-16 mark. So a
/// missing or empty file is begun with one, and an 8-bit file is rewritten with its values kept.
/// A read-only file and one that cannot be opened or written stay as they are.
void EnsureUnicodeProfile(const std::wstring& path);

} // namespace brimwave
