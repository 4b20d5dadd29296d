// The scene file.
#pragma once

#include "sceneconv/scene_json.h"
#include "sceneconv/source_scene.h"

#include <filesystem>

namespace sceneconv {

/// The whole scene file as JSON. `output` is where it is going to be: embedded pictures are
/// written beside it.
[[nodiscard]] Json SceneJson(const SourceScene& scene, const std::filesystem::path& output,
                             Warnings& warnings);

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
