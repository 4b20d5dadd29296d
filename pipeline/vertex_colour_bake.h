#pragma once

namespace brimwave {

/// Bakes the random choice of MultiTexture and CoronaMultiMap maps into the vertex colours of
/// the meshes that use them. So far it only counts those maps and says in the host's log, on
/// lines that begin "[Brimwave VC]", that they stay as they are.
void BakeMultiTextureVC();

} // namespace brimwave
