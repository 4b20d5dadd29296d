#include "host/text.h"

#include <windows.h>

#include <algorithm>
#include <cwctype>
#include <limits>

namespace brimwave {
namespace {

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

wchar_t ToLowerUnit(wchar_t unit) {
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
}

} // namespace

size_t Utf8PieceLength(std::wstring_view text) {
    if (text.size() <= maxUtf8Piece)
        return text.size();
    return IsHighSurrogate(text[maxUtf8Piece - 1]) ? maxUtf8Piece - 1 : maxUtf8Piece;
}

size_t ConvertUtf8Piece(std::wstring_view text, char* out) {
    if (text.empty())
        return 0;
    const int written =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out,
                            static_cast<int>(MaxUtf8Size(text.size())), nullptr, nullptr);
    return written > 0 ? static_cast<size_t>(written) : 0;
}

std::string WideToUtf8(std::wstring_view text) {
    std::string utf8;
    while (!text.empty()) {
        const size_t length = Utf8PieceLength(text);
        const size_t size = utf8.size();
        utf8.resize(size + MaxUtf8Size(length));
        utf8.resize(size + ConvertUtf8Piece(text.substr(0, length), utf8.data() + size));
        text.remove_prefix(length);
    }
    return utf8;
}

std::wstring DecodeText(std::string_view bytes, TextEncoding encoding) {
    const UINT codePage = encoding == TextEncoding::Utf8 ? CP_UTF8 : CP_ACP;
    constexpr size_t most = std::numeric_limits<int>::max();
    const int size = static_cast<int>(std::min(bytes.size(), most));
    const int units = MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0);
    std::wstring text(static_cast<size_t>(std::max(units, 0)), L'\0');
    MultiByteToWideChar(codePage, 0, bytes.data(), size, text.data(), units);
    return text;
}

std::wstring ToLowerW(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), ToLowerUnit);
    return lower;
}

bool EqualsIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](wchar_t unitA, wchar_t unitB) {
        return ToLowerUnit(unitA) == ToLowerUnit(unitB);
    });
}

} // namespace brimwave
