#pragma once
#include <cstdint>
#include <filesystem>
#include <vector>

namespace brimwave::testing {

/// A decoded picture, one 32-bit colour a pixel, rows from the top.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> colours;

    [[nodiscard]] std::size_t DistinctColours() const;
    /// Pixels that differ; all of them when the sizes do.
    [[nodiscard]] std::size_t DifferentFrom(const Pixels& other) const;
};

/// An empty picture when the file is none.
[[nodiscard]] Pixels LoadPixels(const std::filesystem::path& file);

} // namespace brimwave::testing
