// The picture size of converted scenes: the host's own default.
#pragma once

namespace sceneconv {

inline constexpr int kRenderWidth = 640;
inline constexpr int kRenderHeight = 480;
inline constexpr double kRenderAspect = double{kRenderWidth} / kRenderHeight;

} // namespace sceneconv
