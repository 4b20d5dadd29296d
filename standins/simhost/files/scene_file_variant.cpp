// The class of an entry that changes one of the catalogue, or brings its own definitions.
#include "simhost/classes/fold.h"
#include "simhost/files/scene_file_loader.h"
#include "text/utf8.h"

#include <algorithm>

namespace simhost {

namespace {

/// The member "name"; null without it, too.
Text NameIn(const JsonView& view) {
    const auto name = view.Find("name");
    return name && !name->IsNull() ? Text(name->Text()) : Text();
}

/// Builds the variant of one entry. The class's own slots follow their parameters to new places.
class VariantBuilder {
  public:
    VariantBuilder(const JsonView& entry, ClassPtr base, SClass_ID kind)
        : entry_(entry), base_(std::move(base)), info_(std::make_shared<ClassInfo>()) {
        if (base_) {
            *info_ = *base_;
        } else {
            info_->name = entry.Member("class").Text();
            info_->localizedName = info_->scriptName = info_->name;
            info_->kind = info_->superClass = kind;
            info_->classId = ClassIdOfName(info_->name);
        }
    }
    ClassVariant Build();

  private:
    struct Draft {
        std::optional<Text> name; // empty: a null block
        BlockID id = 0;
        bool hidden = false;
        bool hasDescriptor = true;
        bool touched = false;
        std::vector<ParamSpec> params;
        std::vector<int> origin; // index in the base's block, -1 for new ones
        std::shared_ptr<const BlockDesc> same;
    };
    void Identity();
    void DraftBase();
    void Omit();
    void Block(const JsonView& view);
    void Param(const JsonView& view, Draft& draft, std::vector<ParamPlace>& places, int block);
    void Finish();
    void MoveSlots();
    void SlotList();
    [[nodiscard]] ParamPlace Moved(ParamPlace place) const;
    [[nodiscard]] ParamPlace PlaceOf(const JsonView& view, const char* indexMember,
                                     const JsonView& slot) const;

    const JsonView& entry_;
    ClassPtr base_;
    std::shared_ptr<ClassInfo> info_;
    std::vector<Draft> drafts_;
    ClassVariant variant_;
};

ClassVariant VariantBuilder::Build() {
    Identity();
    bool replace = false;
    entry_.Read("replace_blocks", replace);
    if (base_ && !replace)
        DraftBase();
    Omit();
    entry_.ForElementsOf("blocks", [&](const JsonView& block) { Block(block); });
    Finish();
    MoveSlots();
    SlotList();
    if (const auto roles = entry_.Find("sub_objects"); roles && !base_)
        roles->ForMembers([&](const std::string& role, const JsonView&) {
            info_->subObjects.push_back({utf8::ToWide(role), L""});
        });
    variant_.info = info_;
    return std::move(variant_);
}

void VariantBuilder::Identity() {
    if (const auto id = entry_.Find("class_id")) {
        id->Array(2);
        info_->classId = Class_ID(id->Element(0).Code(), id->Element(1).Code());
    }
    if (const auto number = entry_.Find("super_class"); number && !number->IsText())
        info_->superClass = number->Unsigned();
    entry_.Read("localized_class", info_->localizedName);
    entry_.Read("converts", info_->converts);
}

void VariantBuilder::DraftBase() {
    for (const BlockSlot& slot : base_->blocks) {
        Draft draft;
        if (slot.desc) {
            draft.name = slot.desc->Name();
            draft.id = slot.desc->ID;
            draft.hidden = slot.hidden;
            draft.hasDescriptor = slot.hasDescriptor;
            draft.params = slot.desc->Params();
            draft.same = slot.desc;
            for (size_t i = 0; i < draft.params.size(); ++i)
                draft.origin.push_back(static_cast<int>(i));
        }
        drafts_.push_back(std::move(draft));
    }
}

void VariantBuilder::Omit() {
    entry_.ForElementsOf("omit_params", [&](const JsonView& name) {
        const std::wstring wanted = name.Text();
        bool found = false;
        for (Draft& draft : drafts_)
            for (size_t i = draft.params.size(); i-- > 0;)
                if (draft.params[i].name && EqualFolded(*draft.params[i].name, wanted)) {
                    draft.params.erase(draft.params.begin() + static_cast<std::ptrdiff_t>(i));
                    draft.origin.erase(draft.origin.begin() + static_cast<std::ptrdiff_t>(i));
                    draft.touched = found = true;
                }
        if (!found)
            name.Complain("the class has no such parameter");
    });
}

void VariantBuilder::Block(const JsonView& view) {
    if (view.IsNull()) {
        variant_.explicitBlocks.push_back(static_cast<int>(drafts_.size()));
        variant_.explicitParams.emplace_back();
        drafts_.emplace_back();
        return;
    }
    view.OnlyMembers(
        {"name", "id", "params", "descriptor", "throws", "throw_kind", "answers_nothing"});
    const Text name = NameIn(view);
    auto at = std::find_if(drafts_.begin(), drafts_.end(), [&](const Draft& draft) {
        return name && draft.name && *draft.name == name;
    });
    if (at == drafts_.end()) {
        Draft draft;
        draft.name = name;
        draft.id = static_cast<BlockID>(drafts_.size());
        at = drafts_.insert(drafts_.end(), std::move(draft));
    }
    at->touched = true;
    if (const auto id = view.Find("id"))
        at->id = static_cast<BlockID>(id->Integer());
    view.Read("descriptor", at->hasDescriptor);
    const int block = static_cast<int>(at - drafts_.begin());
    variant_.explicitBlocks.push_back(block);
    std::vector<ParamPlace>& places = variant_.explicitParams.emplace_back();
    view.ForElementsOf("params", [&](const JsonView& param) { Param(param, *at, places, block); });
}

void VariantBuilder::Param(const JsonView& view, Draft& draft, std::vector<ParamPlace>& places,
                           int block) {
    view.OnlyMembers({"name", "id", "type", "value"});
    ParamSpec spec;
    spec.name = NameIn(view);
    const JsonView typeView = view.Member("type");
    const auto type = TypeOfName(typeView.Utf8());
    if (!type)
        typeView.Expected("a parameter type");
    spec.type = *type;
    spec.value = DefaultOf(*type);
    auto known = draft.params.end();
    if (spec.name && !spec.name->empty() && base_)
        known = std::find_if(draft.params.begin(), draft.params.end(), [&](const ParamSpec& p) {
            return p.name && EqualFolded(*p.name, *spec.name);
        });
    if (known != draft.params.end())
        spec.id = known->id;
    else
        for (const ParamSpec& other : draft.params)
            spec.id = std::max(spec.id, static_cast<ParamID>(other.id + 1));
    if (const auto id = view.Find("id"))
        spec.id = static_cast<ParamID>(id->Integer());
    places.push_back({block, static_cast<int>(known - draft.params.begin()), -1});
    if (known != draft.params.end()) {
        *known = std::move(spec);
    } else {
        draft.params.push_back(std::move(spec));
        draft.origin.push_back(-1);
    }
}

void VariantBuilder::Finish() {
    info_->blocks.clear();
    for (Draft& draft : drafts_) {
        BlockSlot slot;
        slot.hidden = draft.hidden;
        slot.hasDescriptor = draft.hasDescriptor;
        if (draft.name && !draft.touched)
            slot.desc = draft.same;
        else if (draft.name)
            slot.desc = std::make_shared<BlockDesc>(*draft.name, draft.id, std::move(draft.params));
        info_->blocks.push_back(std::move(slot));
    }
}

ParamPlace VariantBuilder::Moved(ParamPlace place) const {
    if (!place.Known() || place.block >= static_cast<int>(drafts_.size()))
        return {};
    const auto& origin = drafts_[static_cast<size_t>(place.block)].origin;
    const auto at = std::find(origin.begin(), origin.end(), place.index);
    if (at == origin.end())
        return {};
    place.index = static_cast<int>(at - origin.begin());
    return place;
}

void VariantBuilder::MoveSlots() {
    for (SlotSpec& slot : info_->slots) {
        slot.map = Moved(slot.map);
        slot.on = Moved(slot.on);
    }
    std::erase_if(info_->slots, [](const SlotSpec& slot) { return !slot.map.Known(); });
    for (SubMtlSpec& sub : info_->subMtls)
        sub.mtl = Moved(sub.mtl);
    std::erase_if(info_->subMtls, [](const SubMtlSpec& sub) { return !sub.mtl.Known(); });
}

ParamPlace VariantBuilder::PlaceOf(const JsonView& view, const char* indexMember,
                                   const JsonView& slot) const {
    ParamPlace place = info_->Find(view.Text());
    if (!place.Known())
        view.Complain("the class has no such parameter");
    slot.Read(indexMember, place.element);
    return place;
}

void VariantBuilder::SlotList() {
    if (entry_.Has("slot_list"))
        info_->slots.clear();
    entry_.ForElementsOf("slot_list", [&](const JsonView& view) {
        view.OnlyMembers({"name", "param", "index", "on_param", "on_index", "map", "on"});
        SlotSpec slot;
        slot.name = NameIn(view);
        if (const auto param = view.Find("param")) {
            slot.map = PlaceOf(*param, "index", view);
            const auto& desc = *info_->blocks[static_cast<size_t>(slot.map.block)].desc;
            if (ElementType(desc.Params()[static_cast<size_t>(slot.map.index)].type) != TYPE_TEXMAP)
                param->Complain("this parameter holds no texture map");
        }
        if (const auto param = view.Find("on_param"))
            slot.on = PlaceOf(*param, "on_index", view);
        info_->slots.push_back(std::move(slot));
    });
}

} // namespace

ClassVariant BuildVariant(const JsonView& entry, const ClassPtr& base, SClass_ID kind) {
    return VariantBuilder(entry, base, kind).Build();
}

} // namespace simhost
