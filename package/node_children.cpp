#include "package/node_children.h"

#include "host/sdk_compat.h"
#include "package/layers.h"
#include "package/slot_flags.h"

namespace brimwave {
namespace {

using namespace std::literals;

/// Builds the pieces of one node.
class ChildCollector {
  public:
    ChildCollector(PackageContext& package, MtlBase& object, const std::wstring& indent)
        : package_(package), object_(object), indent_(indent) {}

    NodeChildren Collect(std::wstring_view className) {
        if (className == L"MultiTexture" && object_.SuperClassID() == TEXMAP_CLASS_ID)
            AddTextureList();
        const std::vector<Slot> slots = ReadSlots();
        AddDisabledNames(slots);
        for (const Slot& slot : slots)
            if (slot.enabled)
                AddSlotChild(slot);
        if (object_.SuperClassID() == MATERIAL_CLASS_ID)
            AddLayers(static_cast<Mtl&>(object_), className);
        if (childCount_ > 0)
            text_ += L"\n" + indent_ + L"}";
        result_.after = std::move(text_);
        return std::move(result_);
    }

  private:
    struct Slot {
        std::wstring name;
        Texmap* map;
        bool enabled;
    };

    /// What was gathered since the last child leads up to this one.
    void AddChild(MtlBase* child) {
        result_.pieces.push_back({std::move(text_), child});
        text_.clear();
    }

    /// Starts the next member of "children", whose text follows.
    void BeginChildMember() {
        text_ += childCount_++ == 0 ? L",\n" + indent_ + L"\"children\": {\n" : L",\n";
        text_ += indent_;
    }

    void AddTextureList() {
        text_ += L",\n" + indent_ + L"\"textures\": [\n";
        bool first = true;
        const int count = object_.NumSubTexmaps();
        for (int i = 0; i < count; ++i) {
            Texmap* const map = object_.GetSubTexmap(i);
            if (!map || !package_.params.IsEntryOn(&object_, L"submap_on", i))
                continue;
            if (!first)
                text_ += L",\n"sv;
            first = false;
            AddChild(map);
        }
        text_ += L"\n]"sv;
    }

    std::vector<Slot> ReadSlots() {
        std::vector<Slot> slots;
        SlotFlags flags(package_.params, object_);
        const int count = object_.NumSubTexmaps();
        for (int i = 0; i < count; ++i) {
            Texmap* const map = object_.GetSubTexmap(i);
            if (!map)
                continue;
            std::wstring name = SlotNameOf(object_, i);
            if (name.empty())
                name = L"slot_" + std::to_wstring(i);
            const bool enabled = flags.IsEnabled(i, map, name);
            slots.push_back({std::move(name), map, enabled});
        }
        return slots;
    }

    void AddDisabledNames(const std::vector<Slot>& slots) {
        bool first = true;
        for (const Slot& slot : slots) {
            if (slot.enabled)
                continue;
            text_ += first ? L",\n" + indent_ + L"\"disabled_slots\": [" : L", ";
            first = false;
            AppendJsonString(text_, slot.name);
        }
        if (!first)
            text_ += L']';
    }

    void AddSlotChild(const Slot& slot) {
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
        text_ += L"  \"layer_" + std::to_wstring(number) + L"\": {\n" + indent_;
        text_ += L"    \"material\": "sv;
        AddChild(layer.material);
        if (layer.enabled) {
            text_ += L",\n" + indent_ + L"    \"enabled\": ";
            text_ += BoolToJson(*layer.enabled);
        }
        text_ += L",\n" + indent_ + L"    \"blend_amount\": " + layer.amount;
        text_ += L"\n" + indent_ + L"  }";
    }

    PackageContext& package_;
    MtlBase& object_;
    const std::wstring& indent_;
    NodeChildren result_;
    std::wstring text_; // since the last child
    int childCount_ = 0;
};

} // namespace

NodeChildren CollectChildren(PackageContext& package, MtlBase& object, std::wstring_view className,
                             const std::wstring& indent) {
    return ChildCollector(package, object, indent).Collect(className);
}

} // namespace brimwave
