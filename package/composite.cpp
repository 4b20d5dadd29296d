#include "package/composite.h"

namespace brimwave {
namespace {

/// Reads the tables of one layered object. An entry that is missing is 0, a flag is on.
class LayerTables {
  public:
    LayerTables(ParamReader& params, MtlBase& object) : params_(params), object_(object) {}

    /// -1 when the object has no such table.
    [[nodiscard]] int Count(const wchar_t* table) { return params_.CountElements(&object_, table); }
    void AppendInt(std::wstring& out, const wchar_t* table, int layer) {
        AppendJsonInt(out, static_cast<int>(Number(table, layer)));
    }
    void AppendFloat(std::wstring& out, const wchar_t* table, int layer) {
        AppendJsonFloat(out, Number(table, layer));
    }
    [[nodiscard]] std::wstring_view Flag(const wchar_t* table, int layer) {
        return BoolToJson(params_.FindTabNumber(&object_, table, layer).value_or(1.0f) != 0.0f);
    }

  private:
    float Number(const wchar_t* table, int layer) {
        return params_.FindTabNumber(&object_, table, layer).value_or(0.0f);
    }
    ParamReader& params_;
    MtlBase& object_;
};

/// `append(out, i)` writes layer i after its index.
template <class Append>
void AppendLayers(JsonMembers& members, int count, Append append) {
    if (count < 0)
        return;
    members.AddInt(L"num_layers", count);
    std::wstring layers = L"[";
    for (int i = 0; i < count; ++i) {
        layers += i == 0 ? L"{\"index\":" : L",{\"index\":";
        AppendJsonInt(layers, i + 1);
        append(layers, i);
        layers += L'}';
    }
    layers += L']';
    members.AddRaw(L"layers", layers);
}

} // namespace

void AppendCompositeMap(PackageContext& package, JsonMembers& members, MtlBase& map,
                        const ClassEntry&) {
    LayerTables tables(package.params, map);
    AppendLayers(members, tables.Count(L"blendMode"), [&](std::wstring& out, int i) {
        const std::wstring_view enabled = tables.Flag(L"mapEnabled", i);
        out += L",\"blend_mode\":";
        tables.AppendInt(out, L"blendMode", i);
        out += L",\"opacity\":";
        tables.AppendFloat(out, L"opacity", i);
        out += L",\"layer_enabled\":";
        out += enabled;
        out += L",\"mask_enabled\":";
        out += tables.Flag(L"maskEnabled", i);
        out += L",\"enabled\":";
        out += enabled;
    });
}

void AppendCompositeMaterial(PackageContext& package, JsonMembers& members, MtlBase& material,
                             const ClassEntry&) {
    LayerTables tables(package.params, material);
    AppendLayers(members, tables.Count(L"amount"), [&](std::wstring& out, int i) {
        out += L",\"mix_type\":";
        tables.AppendInt(out, L"mixType", i);
        out += L",\"amount\":";
        tables.AppendFloat(out, L"amount", i);
        out += L",\"enabled\":";
        out += tables.Flag(L"mapEnables", i);
    });
}

} // namespace brimwave
