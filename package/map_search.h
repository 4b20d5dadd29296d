#pragma once
// Scripts that read what only the host's script engine shows of one texture map.
#include <max.h>

#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

enum class MapSearch {
    Output,       // local "mp"
    GradientRamp, // local "gr"
    Properties,   // local "mp"; goes through the sub-materials of any root
};

/// Runs `body`, an expression whose value is a text, with the map in the search's local. The map
/// is taken by its handle; where the engine does not know handles, it is searched by its name,
/// first in the materials of all objects, then in all materials of the scene, and the first map
/// of that name is taken. Nothing when the script fails or answers "ERROR:..".
[[nodiscard]] std::optional<std::wstring> RunOnMap(MtlBase& map, MapSearch search,
                                                   std::wstring_view body);

} // namespace brimwave
