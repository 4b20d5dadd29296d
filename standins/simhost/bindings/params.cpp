#include "simhost/bindings/params.h"

#include "simhost/bindings/param_value.h"
#include "simhost/bindings/scene_value.h"
#include "simhost/script/convert.h"
#include "simhost/script/number.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

std::wstring Squeezed(std::wstring_view name) {
    std::wstring squeezed = Lower(name);
    std::erase_if(squeezed, [](wchar_t unit) { return unit == L'_' || unit == L' '; });
    return squeezed;
}

// The host's scripts spell some parameters with underscores ("Output_Amount") that their
// definitions write without.
ParamPlace FindParam(const Entity& entity, const std::wstring& name) {
    if (const ParamPlace place = entity.FindParam(name); place.Known())
        return place;
    const std::wstring wanted = Squeezed(name);
    for (size_t b = 0; b < entity.Blocks().size(); ++b) {
        if (!entity.Blocks()[b])
            continue;
        const auto& params = entity.Blocks()[b]->Shape().Params();
        for (size_t i = 0; i < params.size(); ++i) {
            if (params[i].name && !params[i].name->empty() && Squeezed(*params[i].name) == wanted)
                return {static_cast<int>(b), static_cast<int>(i), -1};
        }
    }
    return {};
}

// What scripts call a sub-object, beside its role; -1 when the class has no such one.
int FindSubObject(const Entity& entity, const std::wstring& name) {
    const auto& specs = entity.Class().subObjects;
    for (size_t i = 0; i < specs.size(); ++i) {
        const std::wstring role = Lower(specs[i].role);
        const bool placement = role == L"uvgen" && (name == L"coords" || name == L"coordinates");
        if (name == ScriptWord(role) || placement)
            return static_cast<int>(i);
    }
    return -1;
}

// A ramp's flag: flag__1 is the start, flag__2 the end, all others lie between.
class RampFlag final : public Object {
  public:
    RampFlag(Entity& ramp, int64_t number)
        : ramp_(Animatable::GetHandleByAnim(ramp.Self())), number_(number) {}
    void Print(Printer& printer, bool) const override {
        printer.Append(L"SubAnim:Flag__" + std::to_wstring(number_));
    }
    [[nodiscard]] std::wstring ClassName() const override { return L"SubAnim"; }
    std::optional<Value> FindProperty(const std::wstring& name) override {
        if (name != L"position" && name != L"color")
            return std::nullopt;
        Entity* ramp = EntityOf(Animatable::GetAnimByHandle(ramp_));
        if (!ramp)
            RaiseRuntime(L"attempt to access a deleted scene object");
        const Value table = ReadParam(*ramp, ramp->FindParam(name + L"s"));
        return table.AsObject()->FindElement(Value::Integer64(number_));
    }

  private:
    AnimHandle ramp_;
    int64_t number_;
};

std::optional<Value> FindRampFlag(Entity& entity, const std::wstring& name) {
    constexpr std::wstring_view prefix = L"flag__";
    const ParamPlace positions = entity.FindParam(L"positions");
    if (!name.starts_with(prefix) || !positions.Known())
        return std::nullopt;
    const auto number = FindNumber(std::wstring_view(name).substr(prefix.size()));
    const Value table = ReadParam(entity, positions);
    const int64_t count = table.AsObject()->FindProperty(L"count")->AsWhole();
    if (!number || !number->value.IsWhole() || number->value.AsWhole() < 1 ||
        number->value.AsWhole() > count) {
        return std::nullopt;
    }
    return Value(std::make_shared<RampFlag>(entity, number->value.AsWhole()));
}

} // namespace

std::wstring ScriptWord(std::wstring_view name) {
    std::wstring word(name);
    for (wchar_t& unit : word)
        unit = IsWordUnit(unit) ? unit : L'_';
    return word;
}

std::optional<Value> FindEntityProperty(Entity& entity, const std::wstring& name) {
    // A class can have both a sub-object and a parameter that refers to it.
    const int sub = FindSubObject(entity, name);
    if (sub >= 0 && entity.SubObject(sub)) {
        entity.faults.Check(Call::GetReference);
        return WrapThing(entity.SubObject(sub));
    }
    const ParamPlace place = sub < 0 ? FindParam(entity, name) : entity.FindParam(name);
    if (place.Known())
        return ReadParam(entity, place);
    if (sub >= 0)
        return Value(); // an empty role
    // A material shows its shader's parameters as its own.
    if (Entity* shader = EntityOf(entity.SubObject(L"shader"))) {
        if (auto property = FindEntityProperty(*shader, name))
            return property;
    }
    return FindRampFlag(entity, name);
}

bool SetEntityProperty(Entity& entity, const std::wstring& name, const Value& value) {
    const ParamPlace place =
        FindSubObject(entity, name) < 0 ? FindParam(entity, name) : entity.FindParam(name);
    if (place.Known()) {
        SetParam(entity, place, value);
        return true;
    }
    Entity* shader = EntityOf(entity.SubObject(L"shader"));
    return shader && SetEntityProperty(*shader, name, value);
}

void CollectEntityProperties(const Entity& entity, std::vector<std::wstring>& names) {
    for (const auto& block : entity.Blocks()) {
        if (block) {
            for (const ParamSpec& param : block->Shape().Params()) {
                if (param.name && !param.name->empty())
                    names.push_back(*param.name);
            }
        }
    }
}

} // namespace simhost::script
