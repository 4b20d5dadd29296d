#include "package/class_dispatch.h"

#include "host/text.h"
#include "package/classes/class_lists.h"
#include "package/map_output.h"

#include <map>

namespace brimwave {
namespace {

/// The classes of materials and maps by their names.
class ClassIndex {
  public:
    ClassIndex() {
        for (const ClassFamily& family : ClassFamilies())
            if (family.kind != ClassKind::Other)
                for (const ClassEntry& entry : family.classes)
                    Add(entry, family.kind);
    }

    /// `type` in lower case. Null when no class has that name.
    [[nodiscard]] const ClassEntry* Find(const std::wstring& type) const {
        if (const auto found = byName_.find(type); found != byName_.end())
            return found->second;
        for (const auto& [rank, part] : byPart_)
            if (type.find(part.text) != std::wstring::npos)
                return part.entry;
        return nullptr;
    }

    /// Empty when the class is written under the host's name.
    [[nodiscard]] std::wstring_view FindType(std::wstring_view className, ClassKind kind) const {
        const auto found = types_.find(className);
        if (found == types_.end())
            return {};
        const Types& types = found->second;
        const bool preferMap = kind == ClassKind::Map ? !types.map.empty() : types.material.empty();
        return preferMap ? types.map : types.material;
    }

  private:
    struct Part {
        std::wstring_view text;
        const ClassEntry* entry;
    };
    /// Where only one kind has a name of its own, the other takes it too.
    struct Types {
        std::wstring_view material, map;
    };

    void Add(const ClassEntry& entry, ClassKind kind) {
        for (const std::wstring_view name : entry.classNames)
            byName_.emplace(name, &entry);
        for (const NamePart& part : entry.nameParts)
            byPart_.emplace(part.rank, Part{part.text, &entry});
        for (const TypeName& name : entry.types) {
            Types& types = types_[name.className];
            (kind == ClassKind::Map ? types.map : types.material) = name.type;
        }
    }

    std::unordered_map<std::wstring_view, const ClassEntry*> byName_;
    std::map<int, Part> byPart_; // by rank
    std::unordered_map<std::wstring_view, Types> types_;
};

const ClassIndex& Classes() {
    static const ClassIndex index;
    return index;
}

const ClassEntry* FindMemoised(PackageContext& package, std::wstring_view type) {
    const auto known = package.classes.find(type);
    return known != package.classes.end()
               ? known->second
               : package.classes.emplace(type, FindClass(type)).first->second;
}

} // namespace

const ClassEntry* FindClass(std::wstring_view type) {
    return Classes().Find(ToLowerW(type));
}

std::wstring_view NormaliseClassName(std::wstring_view className, bool isMaterial) {
    const std::wstring_view type =
        Classes().FindType(className, isMaterial ? ClassKind::Material : ClassKind::Map);
    return type.empty() ? className : type;
}

void WriteClassParams(PackageContext& package, JsonMembers& members, MtlBase& object,
                      std::wstring_view type) {
    if (const ClassEntry* const entry = FindMemoised(package, type)) {
        const auto append = [&](const std::vector<ParamRow>& rows) {
            if (!rows.empty())
                package.params.AppendTable(members, &object, rows, package.metresPerUnit);
        };
        append(entry->rows);
        if (entry->writer)
            entry->writer(package, members, object, *entry);
        append(entry->rowsAfter);
    }
    if (object.SuperClassID() == TEXMAP_CLASS_ID)
        AppendMapOutput(package, members, object);
}

} // namespace brimwave
