#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace brimwave {

struct VRayConversionResult {
    bool attempted = false;
    bool ok = false;
    std::int32_t converted = 0; // nodes; -1 when the script's count cannot be read
    std::wstring error;
};

/// Converts the V-Ray materials of the open scene by the Corona converter script found on this
/// machine, when the environment variable BRIMWAVE_VRAY_CONVERT asks for it (1 to 7 characters,
/// the first "1"). Nothing is attempted when it does not ask, when no material is V-Ray's, or
/// when the host refuses the script; `error` then tells the last of these.
[[nodiscard]] VRayConversionResult ConvertVRayMaterials();

/// What the script's reply means; nothing stands for a script that gave none.
[[nodiscard]] VRayConversionResult ReadVRayReply(const std::optional<std::wstring>& reply);

} // namespace brimwave
