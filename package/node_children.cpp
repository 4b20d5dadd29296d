#include "package/node_children.h"

#include "host/map_slots.h"
#include "package/layers.h"

namespace brimwave {
namespace {

using namespace std::literals;

/// Builds the pieces of one node.
class ChildCollector {
  public:
    ChildCollector(PackageContext& package, NodeChildren& out, MtlBase& object,
                   std::wstring_view indent)
        : package_(package), object_(object), indent_(indent), out_(out) {}

    void Collect(std::wstring_view className) {
        if (className == L"MultiTexture" && object_.SuperClassID() == TEXMAP_CLASS_ID)
            AddTextureList();
        const std::vector<MapSlot> slots = ReadMapSlots(package_.params, object_);
        AddDisabledNames(slots);
        for (const MapSlot& slot : slots)
            if (slot.enabled)
                AddSlotChild(slot);
        if (object_.SuperClassID() == MATERIAL_CLASS_ID)
            AddLayers(static_cast<Mtl&>(object_), className);
        if (childCount_ > 0)
            Append({L"\n"sv, indent_, L"}"sv});
    }

  private:
    void Append(std::initializer_list<std::wstring_view> parts) {
        for (const std::wstring_view part : parts)
            text_ += part;
    }

    void AddChild(MtlBase* child) { out_.children.push_back({text_.size(), child}); }

    /// Starts the next member of "children", whose text follows.
    void BeginChildMember() {
        if (childCount_++ == 0)
            Append({L",\n"sv, indent_, L"\"children\": {\n"sv, indent_});
        else
            Append({L",\n"sv, indent_});
    }

    void AddTextureList() {
        Append({L",\n"sv, indent_, L"\"textures\": [\n"sv});
        bool first = true;
        for (const int slot : CollectListSlots(package_.params, object_, MapList::MultiTexture)) {
            if (!first)
                text_ += L",\n"sv;
            first = false;
            AddChild(object_.GetSubTexmap(slot));
        }
        text_ += L"\n]"sv;
    }

    void AddDisabledNames(const std::vector<MapSlot>& slots) {
        bool first = true;
        for (const MapSlot& slot : slots) {
            if (slot.enabled)
                continue;
            if (first)
                Append({L",\n"sv, indent_, L"\"disabled_slots\": ["sv});
            else
                text_ += L", "sv;
            first = false;
            AppendJsonString(text_, slot.name);
        }
        if (!first)
            text_ += L']';
    }

    void AddSlotChild(const MapSlot& slot) {
        BeginChildMember();
        text_ += L"  "sv;
        AppendJsonString(text_, slot.name);
        text_ += L": "sv;
        AddChild(slot.map);
    }

    void AddLayers(Mtl& material, std::wstring_view className) {
        int number = 0;
        for (const Layer& layer : ReadLayers(package_, material, className))
            AddLayer(++number, layer);
    }

    void AddLayer(int number, const Layer& layer) {
        BeginChildMember();
        Append({L"  \"layer_"sv, std::to_wstring(number), L"\": {\n"sv, indent_,
                L"    \"material\": "sv});
        AddChild(layer.material);
        if (layer.enabled)
            Append({L",\n"sv, indent_, L"    \"enabled\": "sv, BoolToJson(*layer.enabled)});
        Append({L",\n"sv, indent_, L"    \"blend_amount\": "sv, layer.amount, L"\n"sv, indent_,
                L"  }"sv});
    }

    PackageContext& package_;
    MtlBase& object_;
    std::wstring_view indent_;
    NodeChildren& out_;
    std::wstring& text_ = out_.text;
    int childCount_ = 0;
};

} // namespace

void CollectChildren(PackageContext& package, NodeChildren& out, MtlBase& object,
                     std::wstring_view className, std::wstring_view indent) {
    out.Clear();
    ChildCollector(package, out, object, indent).Collect(className);
}

} // namespace brimwave
