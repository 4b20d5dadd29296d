#include "package/slot_flags.h"

#include "host/text.h"

namespace brimwave {
namespace {

constexpr std::wstring_view flagEndings[] = {L"On", L"_on", L"Enabled", L"Enables", L"_enabled"};

// Tables of switches by slot number, for classes whose tables of maps have no like-named one.
constexpr const wchar_t* slotTables[] = {L"mapEnables", L"mapEnabled", L"Enables", L"Enabled",
                                         L"texmapOn"};

// One switch for the only map of a class.
constexpr const wchar_t* soleSwitches[] = {L"texmapOn", L"mapEnabled", L"Enabled"};

std::optional<bool> AsSwitch(const ParamValue& value) {
    const auto whole = value.Whole();
    return whole ? std::optional(*whole != 0) : std::nullopt;
}

/// "maps" -> "map", "mapList" -> "map"; empty when the name has no plural ending.
std::wstring_view Singular(std::wstring_view name) {
    for (const std::wstring_view ending : {L"List", L"s"})
        if (name.size() > ending.size() && name.ends_with(ending))
            return name.substr(0, name.size() - ending.size());
    return {};
}

/// "texmapDiffuse" -> "texmapOnDiffuse"; empty when the name does not begin with "texmap".
std::wstring TexmapOnName(std::wstring_view name) {
    constexpr std::wstring_view texmap = L"texmap";
    if (name.size() <= texmap.size() || ToLowerW(name.substr(0, texmap.size())) != texmap)
        return {};
    return L"texmapOn" + std::wstring(name.substr(texmap.size()));
}

} // namespace

SlotFlags::SlotFlags(ParamReader& params, MtlBase& object) : params_(params), object_(object) {}

/// The first parameter that holds the map and that no earlier slot has taken.
const TexmapParam* SlotFlags::TakeParamOf(Texmap* map) {
    if (!listed_)
        texmaps_ = params_.ListTexmapParams(&object_);
    listed_ = true;
    for (TexmapParam& param : texmaps_) {
        if (param.map != map)
            continue;
        param.map = nullptr;
        return &param;
    }
    return nullptr;
}

/// Valid until the next call.
std::wstring_view SlotFlags::Joined(std::wstring_view a, std::wstring_view b) {
    joined_.assign(a);
    joined_ += b;
    return joined_;
}

std::optional<bool> SlotFlags::ReadFlag(std::wstring_view name) {
    return AsSwitch(params_.FindParamValue(&object_, name));
}

std::optional<bool> SlotFlags::ReadTableFlag(std::wstring_view name, int index) {
    return AsSwitch(params_.GetTabParamValue(&object_, name, index));
}

std::optional<bool> SlotFlags::ScalarFlag(std::wstring_view stem) {
    for (const std::wstring_view ending : flagEndings)
        if (const auto flag = ReadFlag(Joined(stem, ending)))
            return flag;
    const std::wstring middle = TexmapOnName(stem);
    return middle.empty() ? std::nullopt : ReadFlag(middle);
}

std::optional<bool> SlotFlags::TableFlag(std::wstring_view stem, int index) {
    if (stem.empty())
        return std::nullopt;
    for (const std::wstring_view ending : flagEndings)
        if (const auto flag = ReadTableFlag(Joined(stem, ending), index))
            return flag;
    return std::nullopt;
}

bool SlotFlags::IsEnabled(int slot, Texmap* map, std::wstring_view slotName) {
    if (!map)
        return true;
    if (const TexmapParam* const param = TakeParamOf(map)) {
        auto flag =
            param->index < 0 ? ScalarFlag(param->name) : TableFlag(param->name, param->index);
        if (!flag && param->index >= 0)
            flag = TableFlag(Singular(param->name), param->index);
        if (flag)
            return *flag;
    } else if (const auto flag = ScalarFlag(slotName)) {
        return *flag;
    } else if (const auto texmapFlag = ReadFlag(Joined(L"texmapOn", slotName))) {
        return *texmapFlag;
    }
    for (const wchar_t* const name : slotTables)
        if (const auto flag = ReadTableFlag(name, slot))
            return *flag;
    if (object_.NumSubTexmaps() == 1)
        for (const wchar_t* const name : soleSwitches)
            if (const auto flag = ReadFlag(name))
                return *flag;
    return object_.SubTexmapOn(slot) != 0;
}

} // namespace brimwave
