#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace brimwave {

struct TextureCollectResult {
    std::uint32_t copied = 0;          // files handed to the copy, whatever came of it
    std::vector<std::wstring> missing; // "Missing: " + file name, in the order met
};

/// Copies every bitmap file that the materials of geometry nodes and the environment use into
/// the "textures" folder of `jobFolder`, all flat under their own names: of two files of one
/// name the later one stays. A path is copied once, compared as text.
[[nodiscard]] TextureCollectResult CollectTextures(const std::wstring& jobFolder);

} // namespace brimwave
