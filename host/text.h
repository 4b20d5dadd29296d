#pragma once
// Wide text: sequences of UTF-16 units, turned to UTF-8 at the edges.
#include <functional>
#include <string>
#include <string_view>

namespace brimwave {

/// The same text in UTF-8. A surrogate without its partner becomes U+FFFD.
[[nodiscard]] std::string WideToUtf8(std::wstring_view text);

/// Converts one piece into `out` and returns the number of bytes written. `out` must have room
/// for MaxUtf8Size(text.size()); the piece holds at most `maxUtf8Piece` units and must not end
/// between the two halves of a pair (see Utf8PieceLength).
[[nodiscard]] size_t ConvertUtf8Piece(std::wstring_view text, char* out);
inline constexpr size_t maxUtf8Piece = 16 * 1024;
[[nodiscard]] constexpr size_t MaxUtf8Size(size_t units) {
    return units * 3;
}
/// Length of the next piece of `text`: at most `maxUtf8Piece`, and no pair is cut in two.
[[nodiscard]] size_t Utf8PieceLength(std::wstring_view text);

enum class TextEncoding {
    Utf8,
    System, ///< the 8-bit code page of this machine
};
/// The text of such bytes, of 2 GB at most.
[[nodiscard]] std::wstring DecodeText(std::string_view bytes, TextEncoding encoding);

/// `text` without blanks, tabs, carriage returns and line feeds at both ends.
[[nodiscard]] constexpr std::wstring_view Trimmed(std::wstring_view text) {
    constexpr std::wstring_view blanks = L" \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::wstring_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// A copy with every unit passed through the C library's wide lower-casing.
[[nodiscard]] std::wstring ToLowerW(std::wstring_view text);
/// Whether the two are the same after ToLowerW.
[[nodiscard]] bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b);

/// For tables of texts that are searched by a part of another text.
struct TextHash {
    using is_transparent = void;
    size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>{}(text); }
};

} // namespace brimwave
