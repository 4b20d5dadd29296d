#include "simhost/files/fbx_deflate.h"

#ifdef SIMHOST_ZLIB
#include <zlib.h>
#endif

namespace simhost {

#ifdef SIMHOST_ZLIB

// zlib counts with 32 bits on Windows, and packing may make a little more of it.
constexpr std::size_t largestPacked = 0xf0000000u;

bool FbxDeflate(std::string_view plain, std::string& packed) {
    if (plain.size() > largestPacked)
        return false;
    const auto plainSize = static_cast<uLong>(plain.size());
    uLongf size = compressBound(plainSize);
    packed.resize(size);
    // The fast level: geometry hardly shrinks further at the slow ones.
    const int result = compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                                 reinterpret_cast<const Bytef*>(plain.data()), plainSize, 1);
    packed.resize(size);
    return result == Z_OK;
}

#else

bool FbxDeflate(std::string_view /*plain*/, std::string& /*packed*/) {
    return false;
}

#endif

} // namespace simhost
