#include "pipeline/multi_texture.h"

#include "host/map_slots.h"
#include "host/sdk_compat.h"

#include <algorithm>

namespace brimwave {
namespace {

// MultiTexture: one number ("rnd_by").
constexpr ChoiceScope multiTextureScopes[] = {
    {.materialId = true}, // 0
    {.object = true},     // 1
    {.element = true},    // 2
    {.face = true},       // 3
};

// CoronaMultiMap: a switch for each, which may be on together; releases without the switches
// have one number ("mode"), whose values stand in the same order.
struct ScopeSwitch {
    const wchar_t* param;
    bool ChoiceScope::*part;
};
constexpr ScopeSwitch coronaSwitches[] = {
    {L"randomizeInstance", &ChoiceScope::object},
    {L"randomizePrimitive", &ChoiceScope::face},
    {L"randomizeMaterialId", &ChoiceScope::materialId},
    {L"randomizeMeshElement", &ChoiceScope::element},
};

// One row a class: where its list's weights stand.
struct ClassParams {
    const wchar_t* count;   // how many entries count; null: all
    const wchar_t* weights; // null: all the same
    const wchar_t* variations[3];
};
constexpr ClassParams multiTextureParams = {
    nullptr, nullptr, {L"hue_random", L"saturation_random", L"gamma_random"}};
constexpr ClassParams coronaParams = {
    L"items", L"frequencies", {L"hueRandom", L"saturationRandom", L"gammaRandom"}};

struct Reader {
    ParamReader& params;
    Texmap& map;

    /// A number of any kind; absent when there is no such parameter.
    std::optional<float> Number(const wchar_t* name) {
        return params.FindParamValue(&map, name).Number();
    }

    /// A whole number, kept whole: a seed uses all of its bits.
    std::optional<std::int32_t> Integer(const wchar_t* name) {
        const ParamValue value = params.FindParamValue(&map, name);
        if (value.kind == ParamKind::Int)
            return value.intValue;
        return std::nullopt;
    }

    ChoiceScope MultiTextureScope() {
        const std::int32_t by = Integer(L"rnd_by").value_or(0);
        const bool known = by >= 0 && by < static_cast<int>(std::size(multiTextureScopes));
        return multiTextureScopes[known ? by : 0];
    }

    ChoiceScope CoronaScope() {
        ChoiceScope scope;
        bool found = false;
        for (const ScopeSwitch& each : coronaSwitches)
            if (const std::optional<float> on = Number(each.param)) {
                found = true;
                scope.*each.part = *on != 0;
            }
        if (found)
            return scope;
        const std::int32_t mode = Integer(L"mode").value_or(0);
        const bool known = mode >= 0 && mode < static_cast<int>(std::size(coronaSwitches));
        scope.*coronaSwitches[known ? mode : 0].part = true;
        return scope;
    }

    bool Varies(const ClassParams& names) {
        return std::any_of(std::begin(names.variations), std::end(names.variations),
                           [&](const wchar_t* name) { return Number(name).value_or(0) != 0; });
    }

    /// The weights of the entries that can be chosen; those beyond the last one that a colour
    /// can name are only counted.
    std::vector<std::uint32_t> Weights(MapList list, const ClassParams& names, ChoiceMap& read) {
        const std::int32_t items = names.count ? Integer(names.count).value_or(0) : 0;
        std::vector<std::uint32_t> weights;
        for (const int i : CollectListSlots(params, map, list)) {
            if (items > 0 && i >= items)
                break;
            if (++read.choices > mostChoices) {
                ++read.leftOut;
                continue;
            }
            const std::optional<float> weight =
                names.weights ? params.FindTabNumber(&map, names.weights, i) : std::nullopt;
            weights.push_back(WeightSteps(weight.value_or(1)));
        }
        read.choices -= read.leftOut;
        return weights;
    }
};

} // namespace

bool IsChoiceMap(Texmap& map) {
    return MapListOf(ClassNameOf(map)) != MapList::None;
}

ChoiceMap ReadChoiceMap(ParamReader& params, Texmap& map) {
    const MapList list = MapListOf(ClassNameOf(map));
    const bool corona = list == MapList::CoronaMultiMap;
    const ClassParams& names = corona ? coronaParams : multiTextureParams;
    Reader reader{params, map};
    ChoiceMap read;
    read.name = HostText(map.GetName());
    read.rule.scope = corona ? reader.CoronaScope() : reader.MultiTextureScope();
    read.rule.seed = reader.Integer(L"seed").value_or(0);
    read.varies = reader.Varies(names);
    const std::vector<std::uint32_t> weights = reader.Weights(list, names, read);
    if (!weights.empty())
        read.rule.choice = WeightedChoice(weights);
    return read;
}

} // namespace brimwave
