#include "simhost/files/base64.h"

#include <cstdint>

namespace simhost {

std::optional<std::string> DecodeBase64(std::string_view text) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::string_view blanks = " \n\r\t";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0; // of bits that stand there
    bool ended = false;
    for (const char c : text) {
        if (blanks.find(c) != std::string_view::npos)
            continue;
        if (c == '=') {
            ended = true;
            continue;
        }
        const size_t digit = alphabet.find(c);
        if (digit == std::string_view::npos || ended)
            return std::nullopt;
        bits = (bits << 6) | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count);
        }
    }
    return count == 6 ? std::nullopt : std::optional(std::move(bytes));
}

} // namespace simhost
