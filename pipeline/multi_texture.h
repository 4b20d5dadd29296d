#pragma once
// The maps that choose one of their maps at random.
#include "pipeline/random_choice.h"

#include <string>

class Texmap;

namespace brimwave {

class ParamReader;

/// What gets a choice of its own. Several together mean their combinations: by object and by
/// element is one choice for each element of each object; none at all, one for the whole scene.
struct ChoiceScope {
    bool object = false;
    bool materialId = false;
    bool element = false;
    bool face = false;
    friend bool operator==(const ChoiceScope&, const ChoiceScope&) = default;
};

/// How such a map chooses. Two maps of equal rules make the same choices everywhere, which is
/// how scenes keep the colour and the bump of a plank together.
struct ChoiceRule {
    ChoiceScope scope;
    std::int32_t seed = 0;
    /// Over the maps that can be chosen: those of the map's list that are there and switched on,
    /// in the order of the list, which is the order in which the package writes them.
    WeightedChoice choice{1};
    friend bool operator==(const ChoiceRule&, const ChoiceRule&) = default;
};

/// A map's rule, and what of it could not be kept.
struct ChoiceMap {
    std::wstring name;
    ChoiceRule rule;
    int choices = 0;     ///< maps that can be chosen; the rule counts only with at least one
    int leftOut = 0;     ///< maps beyond the last one that a colour can name
    bool varies = false; ///< hue, saturation or gamma vary with the choice
};

/// The most maps that one list may offer: a colour has 8 bits for the choice.
inline constexpr int mostChoices = 255;

/// Whether the map is a MultiTexture or a CoronaMultiMap.
[[nodiscard]] bool IsChoiceMap(Texmap& map);

/// Reads one. What the host throws passes through.
[[nodiscard]] ChoiceMap ReadChoiceMap(ParamReader& params, Texmap& map);

} // namespace brimwave
