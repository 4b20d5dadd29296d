#include "host/param_index.h"

#include <cwctype>

namespace brimwave {

std::wstring FoldParamName(std::wstring_view name) {
    std::wstring folded(name);
    for (wchar_t& unit : folded) {
        if (unit >= L'A' && unit <= L'Z')
            unit = static_cast<wchar_t>(unit + (L'a' - L'A'));
        else if (unit >= 128) // hardly any name has such letters
            unit = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
    }
    return folded;
}

DescriptorIndex::DescriptorIndex(const ParamBlockDesc2& descriptor) {
    if (!descriptor.paramdefs)
        return;
    definitions_.reserve(descriptor.count);
    for (int i = 0; i < descriptor.count; ++i) {
        const ParamDef& definition = descriptor.paramdefs[i];
        if (!definition.int_name)
            continue;
        const auto position = static_cast<std::uint16_t>(definitions_.size());
        definitions_.push_back({definition.ID, definition.type, definition.int_name});
        byName_[FoldParamName(definition.int_name)].push_back(position);
        if (definition.type == TYPE_TEXMAP || definition.type == TYPE_TEXMAP_TAB)
            texmaps_.push_back(position);
    }
}

const std::vector<std::uint16_t>* DescriptorIndex::Find(std::wstring_view foldedName) const {
    const auto found = byName_.find(foldedName);
    return found == byName_.end() ? nullptr : &found->second;
}

const DescriptorIndex& ParamIndex::For(const ParamBlockDesc2& descriptor) {
    return descriptors_.try_emplace(&descriptor, descriptor).first->second;
}

} // namespace brimwave
