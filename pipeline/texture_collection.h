#pragma once
#include <cstdint>
#include <string>
#include <vector>

class Texmap;

namespace brimwave {

struct TextureCollectResult {
    std::uint32_t copied = 0;          // files handed to the copy, whatever came of it
    std::vector<std::wstring> missing; // "Missing: " + file name, in the order met
};

/// True for the texture maps whose file is collected: the host's own bitmap, and the bitmap
/// classes of the two renderers by their class name.
[[nodiscard]] bool IsBitmapTexmap(Texmap& map);

/// Copies every bitmap file that the materials of geometry nodes and the environment use into
/// the "textures" folder of `jobFolder`, all flat under their own names: of two files of one
/// name the later one stays. A path is copied once, compared as text.
[[nodiscard]] TextureCollectResult CollectTextures(const std::wstring& jobFolder);

} // namespace brimwave
