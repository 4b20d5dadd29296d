#include "simhost/files/base64.h"

#include <array>
#include <cstdint>

namespace simhost {

namespace {

constexpr std::uint8_t bad = 255;

constexpr std::array<std::uint8_t, 256> MakeDigits() {
    std::array<std::uint8_t, 256> digits{};
    digits.fill(bad);
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (size_t i = 0; i < alphabet.size(); ++i)
        digits[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return digits;
}

} // namespace

std::optional<std::string> DecodeBase64(std::string_view text) {
    static constexpr auto digits = MakeDigits();
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t bits = 0;
    int count = 0;
    bool ended = false;
    for (const char c : text) {
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t')
            continue;
        if (c == '=') {
            ended = true;
            continue;
        }
        const std::uint8_t digit = digits[static_cast<unsigned char>(c)];
        if (digit == bad || ended)
            return std::nullopt;
        bits = (bits << 6) | digit;
        if (++count % 4 == 0) {
            bytes += static_cast<char>(bits >> 16);
            bytes += static_cast<char>(bits >> 8);
            bytes += static_cast<char>(bits);
            bits = 0;
        }
    }
    switch (count % 4) {
    case 1:
        return std::nullopt;
    case 2:
        bytes += static_cast<char>(bits >> 4);
        break;
    case 3:
        bytes += static_cast<char>(bits >> 10);
        bytes += static_cast<char>(bits >> 2);
        break;
    default:
        break;
    }
    return bytes;
}

} // namespace simhost
