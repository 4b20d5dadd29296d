#pragma once
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace fuzz {

// The input as UTF-16 units, whatever they are: every lone surrogate and control character may
// come. Most units are single bytes, so that the fuzzer can spell words.
inline std::wstring Units(const std::uint8_t* data, std::size_t size) {
    std::wstring text;
    for (std::size_t i = 0; i < size; ++i) {
        const bool wide = data[i] >= 0x80 && i + 1 < size;
        text += static_cast<wchar_t>(wide ? data[i] << 8 | data[i + 1] : data[i]);
        i += wide;
    }
    return text;
}

// Ends the run with a report when a promise is broken.
inline void Require(bool kept) {
    if (!kept)
        std::abort();
}

} // namespace fuzz
