#include "service/url.h"

#include "fuzz/fuzz_input.h"

#include <string_view>

namespace {

unsigned HexDigit(wchar_t c) {
    const auto at = std::wstring_view(L"0123456789ABCDEF").find(c);
    fuzz::Require(at != std::wstring_view::npos);
    return static_cast<unsigned>(at);
}

std::string Decode(std::wstring_view text) {
    std::string bytes;
    while (!text.empty()) {
        const wchar_t c = text.front();
        text.remove_prefix(1);
        if (c == L'%') {
            fuzz::Require(text.size() >= 2);
            bytes += static_cast<char>(HexDigit(text[0]) << 4 | HexDigit(text[1]));
            text.remove_prefix(2);
        } else {
            fuzz::Require(std::wstring_view(L"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                            L"0123456789-._~")
                              .find(c) != std::wstring_view::npos);
            bytes += static_cast<char>(c);
        }
    }
    return bytes;
}

// Reads well-formed UTF-8 back into UTF-16 units.
std::wstring UnitsOf(const std::string& bytes) {
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto first = static_cast<unsigned char>(bytes[i++]);
        const int more = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
        unsigned long c = more == 0 ? first : first & (0x3Fu >> more);
        for (int k = 0; k < more; ++k) {
            fuzz::Require(i < bytes.size() && (bytes[i] & 0xC0) == 0x80);
            c = c << 6 | (static_cast<unsigned char>(bytes[i++]) & 0x3Fu);
        }
        if (c >= 0x10000) {
            text += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
            text += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
        } else {
            text += static_cast<wchar_t>(c);
        }
    }
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = fuzz::Units(data, size);
    const std::wstring back = UnitsOf(Decode(brimwave::UrlEncode(text)));
    // The same text comes back, save for lone surrogates.
    fuzz::Require(back.size() == text.size());
    for (std::size_t i = 0; i < text.size(); ++i)
        fuzz::Require(back[i] == text[i] ||
                      (back[i] == 0xFFFD && text[i] >= 0xD800 && text[i] <= 0xDFFF));
    return 0;
}
