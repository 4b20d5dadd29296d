#include "text/utf8.h"

#include <cstdint>
#include <optional>

namespace utf8 {

namespace {

constexpr std::uint32_t replacement = 0xfffd;

void AppendUnits(std::wstring& out, std::uint32_t code) {
    if (code < 0x10000) {
        out += static_cast<wchar_t>(code);
        return;
    }
    code -= 0x10000;
    out += static_cast<wchar_t>(0xd800 + (code >> 10));
    out += static_cast<wchar_t>(0xdc00 + (code & 0x3ff));
}

void AppendBytes(std::string& out, std::uint32_t code) {
    const int extra = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    constexpr std::uint32_t leads[] = {0, 0xc0, 0xe0, 0xf0};
    out += static_cast<char>(leads[extra] | (code >> (6 * extra)));
    for (int i = extra - 1; i >= 0; --i)
        out += static_cast<char>(0x80 | ((code >> (6 * i)) & 0x3f));
}

/// Takes one character from the front, at least one byte; null for a broken sequence.
std::optional<std::uint32_t> TakeCode(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    if (lead < 0xc2 || lead >= 0xf5)
        return std::nullopt;
    const int extra = lead >= 0xf0 ? 3 : lead >= 0xe0 ? 2 : 1;
    std::uint32_t code = lead & (0x3fu >> extra);
    for (int i = 0; i < extra; ++i) {
        if (text.empty() || (static_cast<unsigned char>(text[0]) & 0xc0) != 0x80)
            return std::nullopt;
        code = (code << 6) | (static_cast<unsigned char>(text[0]) & 0x3f);
        text.remove_prefix(1);
    }
    const bool overlong = (extra == 2 && code < 0x800) || (extra == 3 && code < 0x10000);
    const bool surrogate = code >= 0xd800 && code < 0xe000;
    return overlong || surrogate || code > 0x10ffff ? std::nullopt : std::optional(code);
}

} // namespace

bool IsValid(std::string_view text) {
    while (!text.empty())
        if (!TakeCode(text))
            return false;
    return true;
}

std::wstring ToWide(std::string_view text) {
    std::wstring out;
    while (!text.empty())
        AppendUnits(out, TakeCode(text).value_or(replacement));
    return out;
}

std::string FromWide(std::wstring_view text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        auto code = static_cast<std::uint32_t>(text[i]) & 0xffffu;
        if (code >= 0xd800 && code < 0xdc00 && i + 1 < text.size()) {
            const auto low = static_cast<std::uint32_t>(text[i + 1]);
            if (low >= 0xdc00 && low < 0xe000) {
                code = 0x10000 + ((code - 0xd800) << 10) + (low - 0xdc00);
                ++i;
            }
        }
        const bool lone = code >= 0xd800 && code < 0xe000;
        AppendBytes(out, lone ? replacement : code);
    }
    return out;
}

} // namespace utf8
