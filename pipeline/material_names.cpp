#include "pipeline/material_names.h"

#include "host/attempt.h"
#include "host/scene_walk.h"
#include "host/sdk_compat.h"

#include <new>
#include <unordered_map>

namespace brimwave {
namespace {

constexpr std::size_t longestName = 56;
constexpr std::size_t cutName = 49; // leaves room for "_" and the hash

bool IsSafe(wchar_t c) {
    return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') ||
           c == L'-' || c == L'_';
}

void DropTrailingUnderscores(std::wstring& text) {
    text.resize(text.find_last_not_of(L'_') + 1);
}

std::wstring NameOf(Mtl& material) {
    return HostText(material.GetName());
}

/// The distinct materials whose names normalise to one key, as they were met.
struct Group {
    std::wstring key;
    std::vector<Mtl*> members;
};

class GroupList {
  public:
    /// Adds a material and what is inside it. An unnamed one ends the search there.
    void Collect(Mtl& root) {
        walk_.From(&root, [this](MtlBase& object, MaterialParts& parts) {
            auto& material = static_cast<Mtl&>(object);
            if (Add(material))
                AppendSubMaterials(material, parts);
        });
    }

    [[nodiscard]] const std::vector<Group>& Groups() const { return groups_; }

  private:
    bool Add(Mtl& material) {
        std::wstring name;
        Attempt([&] { name = NameOf(material); });
        if (name.empty())
            return false;
        const std::wstring key = NormalizeMaterialName(name);
        const auto [place, isNew] = places_.try_emplace(key, groups_.size());
        if (isNew)
            groups_.push_back({key, {}});
        groups_[place->second].members.push_back(&material);
        return true;
    }

    std::vector<Group> groups_;
    std::unordered_map<std::wstring, std::size_t> places_;
    MaterialWalk walk_;
};

/// "_01", "_02", ... "_99", "_100".
std::wstring MemberSuffix(std::size_t number) {
    return (number < 10 ? L"_0" : L"_") + std::to_wstring(number);
}

/// Renames one material. The entry comes first, so that nothing renamed can be forgotten.
void Rename(Mtl& material, const std::wstring& name, std::vector<MtlRestoreEntry>& entries) {
    Attempt([&] {
        std::wstring oldName = NameOf(material);
        entries.push_back({Animatable::GetHandleByAnim(&material), &material, std::move(oldName)});
        material.SetName(MSTR(name.c_str()));
    });
}

bool IsNamed(Mtl& material, const std::wstring& name) {
    bool same = false;
    Attempt([&] { same = NameOf(material) == name; });
    return same;
}

void RenameGroup(const Group& group, std::vector<MtlRestoreEntry>& entries) {
    if (group.members.size() == 1) {
        if (!IsNamed(*group.members.front(), group.key))
            Rename(*group.members.front(), group.key, entries);
        return;
    }
    for (std::size_t i = 0; i < group.members.size(); ++i)
        Rename(*group.members[i], group.key + MemberSuffix(i + 1), entries);
}

/// The entry's material if it is still there. A handle is trusted alone: the pointer beside it
/// may dangle once the material is deleted.
Mtl* Living(const MtlRestoreEntry& entry) {
    if (entry.handle == 0)
        return entry.material;
    Animatable* const found = Animatable::GetAnimByHandle(entry.handle);
    const bool isMaterial = found && found->SuperClassID() == MATERIAL_CLASS_ID;
    return isMaterial ? static_cast<Mtl*>(found) : nullptr;
}

bool Restore(const MtlRestoreEntry& entry) noexcept {
    bool restored = false;
    Attempt([&] {
        if (Mtl* const material = Living(entry)) {
            material->SetName(MSTR(entry.oldName.c_str()));
            restored = true;
        }
    });
    return restored;
}

} // namespace

std::wstring SanitizeMaterialName(std::wstring_view name) {
    std::wstring safe;
    safe.reserve(name.size());
    for (const wchar_t c : name) {
        const wchar_t unit = IsSafe(c) ? c : L'_';
        if (unit != L'_' || safe.empty() || safe.back() != L'_')
            safe += unit;
    }
    DropTrailingUnderscores(safe);
    return safe;
}

std::wstring ShortNameHash(std::wstring_view name) {
    std::uint32_t hash = 5381;
    for (const wchar_t c : name)
        hash = (hash * 33 + static_cast<std::uint32_t>(c)) & 0xFFFFFF;
    std::wstring digits;
    for (int shift = 20; shift >= 0; shift -= 4)
        digits += L"0123456789abcdef"[(hash >> shift) & 0xF];
    return digits;
}

std::wstring NormalizeMaterialName(std::wstring_view name) {
    std::wstring key = SanitizeMaterialName(name);
    if (key.size() > longestName) {
        key.resize(cutName);
        DropTrailingUnderscores(key);
        key += L"_" + ShortNameHash(name);
    }
    return key;
}

std::vector<MtlRestoreEntry> DeduplicateMaterialNames() {
    GroupList groups;
    for (Mtl* const material : CollectGeometryMaterials())
        groups.Collect(*material);
    std::vector<MtlRestoreEntry> entries;
    const bool remembered = Attempt([&] {
        for (const Group& group : groups.Groups())
            RenameGroup(group, entries);
    });
    if (!remembered) { // out of memory: the caller would not learn what was renamed
        RestoreMaterialNames(entries);
        throw std::bad_alloc();
    }
    return entries;
}

std::uint32_t RestoreMaterialNames(const std::vector<MtlRestoreEntry>& entries) noexcept {
    std::uint32_t failed = 0;
    for (const MtlRestoreEntry& entry : entries)
        if (!Restore(entry))
            ++failed;
    return failed;
}

} // namespace brimwave
