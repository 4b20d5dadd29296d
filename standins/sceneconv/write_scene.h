// From a file of any format to the scene file.
#pragma once

#include "sceneconv/warnings.h"

#include <cstddef>
#include <filesystem>

namespace sceneconv {

/// What a conversion made, for a line of report.
struct Summary {
    std::size_t nodes = 0;
    std::size_t objects = 0;
    std::size_t materials = 0;
    std::size_t maps = 0;
};

/// Reads `input` and writes `output`. Throws ConvertError with one clear line; no output file is
/// left behind then.
Summary Convert(const std::filesystem::path& input, const std::filesystem::path& output,
                Warnings& warnings);

} // namespace sceneconv
