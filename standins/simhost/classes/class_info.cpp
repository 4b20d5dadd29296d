#include "simhost/classes/class_info.h"

#include "simhost/classes/class_name_hash.h"
#include "simhost/classes/fold.h"

namespace simhost {

BlockDesc::BlockDesc(Text name, BlockID id, std::vector<ParamSpec> params)
    : name_(std::move(name)), params_(std::move(params)), defs_(params_.size()) {
    ID = id;
    int_name = name_ ? name_->c_str() : nullptr;
    count = static_cast<USHORT>(params_.size());
    paramdefs = defs_.data();
    for (size_t i = 0; i < params_.size(); ++i) {
        const ParamSpec& spec = params_[i];
        defs_[i].ID = spec.id;
        defs_[i].int_name = spec.name ? spec.name->c_str() : nullptr;
        defs_[i].type = spec.type;
    }
}

int BlockDesc::Find(std::wstring_view name) const {
    int loose = -1;
    for (size_t i = 0; i < params_.size(); ++i) {
        const Text& own = params_[i].name;
        if (own && *own == name)
            return static_cast<int>(i);
        if (loose < 0 && own && EqualFolded(*own, name))
            loose = static_cast<int>(i);
    }
    return loose;
}

ParamPlace ClassInfo::Find(std::wstring_view wanted) const {
    std::wstring_view blockName;
    if (const size_t bar = wanted.find(L'|'); bar != std::wstring_view::npos) {
        blockName = wanted.substr(0, bar);
        wanted = wanted.substr(bar + 1);
    }
    ParamPlace loose;
    for (size_t b = 0; b < blocks.size(); ++b) {
        const BlockDesc* desc = blocks[b].desc.get();
        if (!desc || (!blockName.empty() && (!desc->Name() || *desc->Name() != blockName)))
            continue;
        const int i = desc->Find(wanted);
        if (i < 0)
            continue;
        const ParamPlace place{static_cast<int>(b), i, -1};
        if (*desc->Params()[static_cast<size_t>(i)].name == wanted)
            return place;
        if (!loose.Known())
            loose = place;
    }
    return loose;
}

Class_ID ClassIdOfName(std::wstring_view name) {
    const std::uint64_t hash = HashClassName(name);
    return {static_cast<ULONG>(hash >> 32), static_cast<ULONG>(hash)};
}

} // namespace simhost
