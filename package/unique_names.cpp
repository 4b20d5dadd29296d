#include "package/unique_names.h"

#include "host/attempt.h"
#include "host/sdk_compat.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <memory_resource>

namespace brimwave {
namespace {

/// Names taken so far, and for each which number to try next when it comes again: all lower ones
/// stay taken. A flat table, since with many names each step to another place in memory counts:
/// 100,000 names take the standard library's map six to nine times as long, which would be an
/// eighth to a fifth of what writing their package costs.
class UsedNames {
  public:
    /// `most`: names that will be taken.
    explicit UsedNames(size_t most) : slots_(std::bit_ceil(2 * most + 1)) { names_.reserve(most); }

    /// Null when the name is taken for the first time, else a name of its own, which is taken too.
    /// It stays where it is until the end.
    const wchar_t* Take(std::wstring_view text) {
        Slot* slot = &Find(text);
        if (slot->place == 0) {
            Enter(*slot, text);
            return nullptr;
        }
        int& number = names_[slot->place - 1].nextNumber;
        do {
            SetCandidate(text, number++);
            slot = &Find(candidate_);
        } while (slot->place != 0);
        return Enter(*slot, candidate_);
    }

  private:
    struct Name {
        std::wstring_view text;
        int nextNumber = 1;
    };
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // in the list, from 1; 0: free
    };

    /// The name's slot, or the free one where it belongs.
    Slot& Find(std::wstring_view text) {
        const std::uint64_t hash = std::hash<std::wstring_view>{}(text);
        const auto upper = static_cast<std::uint32_t>(hash >> 32);
        for (size_t i = hash;; ++i) {
            Slot& slot = slots_[i & (slots_.size() - 1)];
            if (slot.place == 0)
                slot.hash = upper;
            if (slot.place == 0 || (slot.hash == upper && names_[slot.place - 1].text == text))
                return slot;
        }
    }

    const wchar_t* Enter(Slot& slot, std::wstring_view text) {
        auto* const copy = static_cast<wchar_t*>(
            memory_.allocate((text.size() + 1) * sizeof(wchar_t), alignof(wchar_t)));
        *std::copy(text.begin(), text.end(), copy) = L'\0';
        names_.push_back({{copy, text.size()}});
        slot.place = static_cast<std::uint32_t>(names_.size());
        return copy;
    }

    /// The name followed by "_%03d".
    void SetCandidate(std::wstring_view name, int number) {
        char digits[16];
        const char* const end = std::to_chars(digits, std::end(digits), number).ptr;
        const std::ptrdiff_t zeros = std::max<std::ptrdiff_t>(3 - (end - digits), 0);
        candidate_.assign(name);
        candidate_ += L'_';
        candidate_.append(static_cast<size_t>(zeros), L'0');
        candidate_.append(static_cast<const char*>(digits), end);
    }

    std::pmr::monotonic_buffer_resource memory_; // the texts, which live equally long
    std::vector<Name> names_;
    std::vector<Slot> slots_; // at most half of them taken
    std::wstring candidate_;
};

} // namespace

void MakeNamesUnique(const std::vector<INode*>& nodes, PackageLog& log) {
    UsedNames names(nodes.size());
    int renamed = 0;
    const auto makeUnique = [&](INode& node) {
        const wchar_t* const own = names.Take(HostView(node.GetName()));
        if (!own)
            return;
        const std::wstring name = HostText(node.GetName()); // the host's own goes with the renaming
        node.SetName(own);
        ++renamed;
        log.Add({L"WARNING: Duplicate name - renamed '", name, L"' to '", own, L"' in scene"});
    };
    for (INode* const node : nodes)
        if (!Attempt([&] { makeUnique(*node); }))
            log.Add(L"WARNING: An object could not be given a name of its own");
    if (renamed > 0)
        log.Add(L"Total renamed: " + std::to_wstring(renamed) +
                L" object(s). Check scene before saving!");
}

} // namespace brimwave
