#pragma once
// Light distributions that travel inside the package.
#include "package/package_context.h"
#include "package/utf8_store.h"

namespace brimwave {

/// The IES file of one light.
struct IesProfile {
    std::wstring stored;                  // path as the light holds it; empty: no file is named
    std::optional<std::wstring> resolved; // path under which the file was found
    std::string bytes;                    // its content; empty when it cannot be read

    [[nodiscard]] bool Named() const { return !stored.empty(); }
};

/// Reads the file that the light's parameter names. A file that is not there, or cannot be read,
/// is reported by the result.
[[nodiscard]] IesProfile ReadIesProfile(PackageContext& package, Animatable& light,
                                        std::wstring_view parameter);

/// Appends the file's text, in the system's code page, escaped for a JSON string. Works piece by
/// piece, so that a large file is not held as wide text. Returns the number of characters.
size_t AppendIesText(Utf8Store& out, std::string_view bytes);

} // namespace brimwave
