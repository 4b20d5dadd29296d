#pragma once
// What the definitions of a parameter block are called, looked up without a scan.
#include "host/text.h"

#include <max.h>

#include <iparamb2.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brimwave {

/// One definition of a block, as the index keeps it. `name` belongs to the host and is not
/// necessarily unique.
struct ParamDefinition {
    ParamID id = 0;
    ParamType2 type = TYPE_FLOAT;
    std::wstring_view name;
};

/// Compares names as the host's internal names are compared: letter case does not count.
[[nodiscard]] std::wstring FoldParamName(std::wstring_view name);

/// Definitions of one block descriptor. Definitions without a name are left out.
class DescriptorIndex {
  public:
    explicit DescriptorIndex(const ParamBlockDesc2& descriptor);

    /// All definitions in their order.
    [[nodiscard]] const std::vector<ParamDefinition>& Definitions() const { return definitions_; }
    /// Positions, within Definitions(), of those with that folded name; null when there is none.
    [[nodiscard]] const std::vector<std::uint16_t>* Find(std::wstring_view foldedName) const;
    /// Positions of the definitions that hold texture maps (scalar and table), in order.
    [[nodiscard]] const std::vector<std::uint16_t>& Texmaps() const { return texmaps_; }

  private:
    std::vector<ParamDefinition> definitions_;
    std::vector<std::uint16_t> texmaps_;
    std::unordered_map<std::wstring, std::vector<std::uint16_t>, TextHash, std::equal_to<>> byName_;
};

/// One DescriptorIndex for each descriptor met, built at the first look-up. Lives as long as one
/// export: the host keeps the descriptors of its classes for at least that long.
class ParamIndex {
  public:
    [[nodiscard]] const DescriptorIndex& For(const ParamBlockDesc2& descriptor);

  private:
    std::unordered_map<const ParamBlockDesc2*, DescriptorIndex> descriptors_;
};

} // namespace brimwave
