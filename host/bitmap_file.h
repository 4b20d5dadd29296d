#pragma once
// Which image file a bitmap map means.
#include "host/params.h"

class BitmapTex;

namespace brimwave {

/// The host's own bitmap; null for any other class.
[[nodiscard]] BitmapTex* AsHostBitmap(MtlBase& map);

/// True for the texture maps whose file is collected: the host's own bitmap, and the bitmap
/// classes of the two renderers by their class name.
[[nodiscard]] bool IsBitmapTexmap(Texmap& map);

/// The path of the map's image as the map holds it; nothing when its class keeps none. What the
/// host throws passes through.
[[nodiscard]] std::optional<std::wstring> FindBitmapPath(ParamReader& params, MtlBase& map);

} // namespace brimwave
