// The picture size of converted scenes: the host's own default.
#pragma once

namespace sceneconv {

inline constexpr int renderWidth = 640;
inline constexpr int renderHeight = 480;
inline constexpr double renderAspect = double{renderWidth} / renderHeight;

} // namespace sceneconv
