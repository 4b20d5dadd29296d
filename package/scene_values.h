#pragma once
// Values of the whole scene that only the host's script engine gives.
#include <optional>
#include <string>

namespace brimwave {

struct ColorPipeline {
    std::wstring mode = L"unknown";
    std::wstring renderingSpace;
    float displayGamma = 2.2f;
};

/// The renderer's displacement setting for the whole scene.
struct RenderDisplacement {
    float amount = 0;
    bool relative = false;
};

/// "unknown", no space and 2.2 where the host does not answer.
[[nodiscard]] ColorPipeline ReadColorPipeline();
/// Nothing when the current renderer has no such setting.
[[nodiscard]] std::optional<RenderDisplacement> ReadRenderDisplacement();

} // namespace brimwave
