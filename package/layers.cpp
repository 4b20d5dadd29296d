#include "package/layers.h"

namespace brimwave {
namespace {

/// How a family of classes keeps its layers.
struct LayerFamily {
    const wchar_t* marker;      // the table parameter by which the family is known
    int bases;                  // sub-materials before the first layer
    const wchar_t* amounts;     // table of amounts by layer; null when there is none
    const wchar_t* amountStem;  // parameter of one layer: stem and number; null when there is none
    int firstNumber;            // number of the first layer's parameter
    const wchar_t* switches[4]; // tables of switches by layer; the first that exists counts
};

constexpr LayerFamily families[] = {
    {L"blendAmounts",
     0,
     L"blendAmounts",
     L"blend_",
     1,
     {L"layersOn", L"layerEnabled", L"mapEnables", nullptr}},
    {L"coatMtl_enable", 1, nullptr, L"blend_", 0, {L"coatMtl_enable", nullptr}}, // VRayBlendMtl
    {L"layers", 1, L"amounts", nullptr, 0, {nullptr}},                           // CoronaLayeredMtl
};

class LayerReader {
  public:
    LayerReader(ParamReader& params, Mtl& material, const LayerFamily& family)
        : params_(params), material_(material), family_(family), switches_(FindSwitches()) {}

    std::vector<Layer> Read() {
        std::vector<Layer> layers;
        const int count = material_.NumSubMtls();
        for (int i = 0; i < count; ++i) {
            const int layer = i - family_.bases;
            layers.push_back({material_.GetSubMtl(i), Enabled(layer), Amount(layer)});
        }
        return layers;
    }

  private:
    const wchar_t* FindSwitches() {
        for (const wchar_t* const table : family_.switches)
            if (table && params_.CountElements(&material_, table) >= 0)
                return table;
        return nullptr;
    }

    std::optional<bool> Enabled(int layer) {
        if (!switches_)
            return std::nullopt;
        return params_.FindTabNumber(&material_, switches_, layer).value_or(1.0f) != 0.0f;
    }

    std::wstring Amount(int layer) {
        if (layer < 0) // a base
            return L"1";
        if (family_.amounts) {
            const ParamValue value = params_.GetTabParamValue(&material_, family_.amounts, layer);
            if (value.kind == ParamKind::Int)
                return std::to_wstring(value.intValue);
            if (const auto number = params_.FindTabNumber(&material_, family_.amounts, layer))
                return FormatJsonFloat(*number);
        }
        return family_.amountStem ? OwnAmount(layer) : L"null";
    }

    /// The layer's own parameter as stored; of a colour, which blends each channel, the mean.
    std::wstring OwnAmount(int layer) {
        const std::wstring name = family_.amountStem + std::to_wstring(layer + family_.firstNumber);
        const ParamValue value = params_.FindParamValue(&material_, name);
        switch (value.kind) {
        case ParamKind::Float:
            return FormatJsonFloat(value.floatValue);
        case ParamKind::Int:
            return std::to_wstring(value.intValue);
        case ParamKind::Color:
            return FormatJsonFloat((value.color.r + value.color.g + value.color.b) / 3.0f);
        default:
            return L"null";
        }
    }

    ParamReader& params_;
    Mtl& material_;
    const LayerFamily& family_;
    const wchar_t* switches_;
};

} // namespace

std::vector<Layer> ReadLayers(PackageContext& package, Mtl& material, std::wstring_view className) {
    for (const LayerFamily& family : families)
        if (package.params.CountElements(&material, family.marker) >= 0)
            return LayerReader(package.params, material, family).Read();
    if (className != L"Material Output Selector" && className != L"Material_Output_Selector")
        return {};
    auto* const source = dynamic_cast<Mtl*>(package.params.FindParamRef(&material, L"source"));
    if (!source)
        return {};
    return {{source, std::nullopt, L"1"}};
}

} // namespace brimwave
