#pragma once
#include <max.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brimwave {

/// One renamed material and the name to give back.
struct MtlRestoreEntry {
    AnimHandle handle = 0; // 0: none was given, `material` itself is used
    Mtl* material = nullptr;
    std::wstring oldName;
};

/// The name with every UTF-16 unit outside a..z, A..Z, 0..9, "-" and "_" replaced by "_", runs of
/// "_" made one, and none left at the end. May be empty.
[[nodiscard]] std::wstring SanitizeMaterialName(std::wstring_view name);

/// Six lower-case hexadecimal digits that tell long names apart.
[[nodiscard]] std::wstring ShortNameHash(std::wstring_view name);

/// SanitizeMaterialName, cut to at most 56 units: a longer one keeps its beginning and ends in
/// the hash of `name`.
[[nodiscard]] std::wstring NormalizeMaterialName(std::wstring_view name);

/// Renames, in the open scene, every material of geometry nodes (sub-materials included) whose
/// name is unsafe, too long or shared, and returns what it renamed, in that order. Materials
/// without a name are left alone, together with what is inside them. Names made unique within
/// their group may still equal another material's name.
[[nodiscard]] std::vector<MtlRestoreEntry> DeduplicateMaterialNames();

/// Gives the old names back. Returns how many could not be: deleted meanwhile, or no material.
std::uint32_t RestoreMaterialNames(const std::vector<MtlRestoreEntry>& entries) noexcept;

/// The scene's material names made unique for as long as this lives, or until Restore.
class UniqueMaterialNames {
  public:
    UniqueMaterialNames() : entries_(DeduplicateMaterialNames()) {}
    UniqueMaterialNames(const UniqueMaterialNames&) = delete;
    UniqueMaterialNames& operator=(const UniqueMaterialNames&) = delete;
    ~UniqueMaterialNames() { Restore(); }

    void Restore() noexcept {
        RestoreMaterialNames(entries_);
        entries_.clear();
    }

  private:
    std::vector<MtlRestoreEntry> entries_;
};

} // namespace brimwave
