#pragma once
// Reads a baked vertex colour as docs/vertex-colours.md tells: a reader's side of the encoding,
// which shares nothing with the writer's.
#include <cmath>
#include <optional>

namespace brimwave::testing {

struct DecodedChoice {
    int choice = 0;       // place among the maps that can be chosen, from 0
    int count = 0;        // how many those are
    double variation = 0; // 0..1
};

/// Nothing where the face shows no map that chooses, and where the colour is no choice at all.
/// The numbers may have been kept as floats or in 8 bits.
inline std::optional<DecodedChoice> DecodeChoice(double red, double green, double blue) {
    const long choice = std::lround(red * 255);
    const long count = std::lround(green * 255);
    if (count < 1 || count > 255 || choice < 0 || choice >= count)
        return std::nullopt;
    return DecodedChoice{static_cast<int>(choice), static_cast<int>(count), blue};
}

} // namespace brimwave::testing
