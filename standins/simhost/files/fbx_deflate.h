#pragma once
#include <string>
#include <string_view>

namespace simhost {

/// Packs bytes the way FBX arrays are packed (a zlib stream). False in a build without zlib or
/// when packing failed; the array is then written as it is, which every reader takes too.
[[nodiscard]] bool FbxDeflate(std::string_view plain, std::string& packed);

} // namespace simhost
