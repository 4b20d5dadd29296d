#include "simhost/script/source.h"

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "simhost/bindings/host_path.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

// Windows-1252 0x80..0x9F; the five unassigned bytes keep their number.
constexpr uint16_t windows1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendCode(std::wstring& text, uint32_t code) {
    if (code < 0x10000) {
        text.push_back(static_cast<wchar_t>(code));
        return;
    }
    text.push_back(static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)));
    text.push_back(static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
}

// Reads one UTF-8 sequence at `at` and moves past it; false for anything malformed.
bool NextUtf8(std::string_view bytes, size_t& at, uint32_t& code) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    const int more = lead < 0x80                    ? 0
                     : lead >= 0xC2 && lead <= 0xDF ? 1
                     : lead >= 0xE0 && lead <= 0xEF ? 2
                     : lead >= 0xF0 && lead <= 0xF4 ? 3
                                                    : -1;
    if (more < 0 || at + static_cast<size_t>(more) >= bytes.size())
        return false;
    code = more == 0 ? lead : lead & (0x3Fu >> more);
    for (int i = 1; i <= more; ++i) {
        const auto next = static_cast<unsigned char>(bytes[at + static_cast<size_t>(i)]);
        if ((next & 0xC0) != 0x80)
            return false;
        code = (code << 6) | (next & 0x3F);
    }
    constexpr uint32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    if (code < smallest[more] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
        return false;
    at += static_cast<size_t>(more) + 1;
    return true;
}

std::optional<std::wstring> StrictUtf8(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    uint32_t code = 0;
    for (size_t at = 0; at < bytes.size();) {
        if (!NextUtf8(bytes, at, code))
            return std::nullopt;
        AppendCode(text, code);
    }
    return text;
}

std::wstring Utf16(std::string_view bytes, bool bigEndian) {
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text.push_back(static_cast<wchar_t>(bigEndian ? first << 8 | second : second << 8 | first));
    }
    return text;
}

std::wstring Latin(std::string_view bytes) {
    std::wstring text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text.push_back(byte >= 0x80 && byte < 0xA0 ? static_cast<wchar_t>(windows1252[byte - 0x80])
                                                   : static_cast<wchar_t>(byte));
    }
    return text;
}

// Scripts are mostly ASCII, so UTF-16 without a mark shows as zeros at every second byte.
bool LooksLikeUtf16(std::string_view bytes, size_t zeroAt) {
    const size_t pairs = std::min<size_t>(bytes.size() / 2, 512);
    if (pairs < 2)
        return false;
    size_t zeros = 0;
    size_t otherZeros = 0;
    for (size_t i = 0; i < pairs; ++i) {
        zeros += bytes[2 * i + zeroAt] == '\0' ? 1u : 0u;
        otherZeros += bytes[2 * i + 1 - zeroAt] == '\0' ? 1u : 0u;
    }
    return otherZeros == 0 && zeros * 4 >= pairs * 3;
}

} // namespace

std::wstring FromUtf8(std::string_view bytes) {
    std::wstring text;
    uint32_t code = 0;
    for (size_t at = 0; at < bytes.size();) {
        if (!NextUtf8(bytes, at, code)) {
            code = 0xFFFD;
            ++at;
        }
        AppendCode(text, code);
    }
    return text;
}

std::wstring DecodeSource(std::string_view bytes) {
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        const std::string_view body = bytes.substr(3);
        if (auto text = StrictUtf8(body))
            return *text;
        return Latin(body);
    }
    if (bytes.starts_with("\xFF\xFE"))
        return Utf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF"))
        return Utf16(bytes.substr(2), true);
    if (LooksLikeUtf16(bytes, 1))
        return Utf16(bytes, false);
    if (LooksLikeUtf16(bytes, 0))
        return Utf16(bytes, true);
    if (auto text = StrictUtf8(bytes))
        return *text;
    return Latin(bytes);
}

std::optional<std::wstring> DecodeTwoByteShape(std::string_view bytes) {
    if (bytes.find('\0') != std::string_view::npos || StrictUtf8(bytes))
        return std::nullopt;
    constexpr wchar_t letter = 0x4E00;
    std::wstring text;
    text.reserve(bytes.size());
    for (size_t i = 0; i < bytes.size(); ++i) {
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            text.push_back(static_cast<wchar_t>(lead));
            continue;
        }
        const auto next = i + 1 < bytes.size() ? static_cast<unsigned char>(bytes[i + 1]) : 0;
        const bool isPair = lead != 0x80 && lead != 0xFF && next >= 0x40 && next != 0x7F;
        const bool isHalfWidth = lead >= 0xA1 && lead <= 0xDF;
        if (!isPair && !isHalfWidth)
            return std::nullopt;
        i += isPair ? 1u : 0u;
        text.push_back(letter);
    }
    return text;
}

std::optional<std::string> ReadWholeFile(std::wstring_view path, size_t limit) {
    std::error_code error;
    const std::filesystem::path file = ToHostPath(path);
    if (!std::filesystem::is_regular_file(file, error))
        return std::nullopt;
    const auto size = std::filesystem::file_size(file, error);
    if (error || size > limit)
        return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::string bytes(static_cast<size_t>(size), '\0');
    if (!in.read(bytes.data(), static_cast<std::streamsize>(bytes.size())) && !bytes.empty())
        return std::nullopt;
    return bytes;
}

} // namespace simhost::script
