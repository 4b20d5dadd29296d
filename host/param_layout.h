#pragma once
// The parameter blocks of an object, taken together.
#include "host/param_index.h"

#include <span>

namespace brimwave {

enum class RowUnit : std::uint8_t {
    AsStored,
    Length, // a length, written only as a float and scaled by the table's length scale
};

/// One row of a parameter table: which host parameter is written under which JSON key.
struct ParamRow {
    std::wstring_view param;
    std::wstring_view key = {};
    std::wstring_view note = {}; // what the documents say of it: scale, meaning of the numbers
    RowUnit unit = RowUnit::AsStored;
};

/// One definition in one of several blocks.
struct BlockParam {
    size_t block = 0; // position among the blocks
    const ParamDefinition* definition = nullptr;
};

/// Parameters of all objects whose blocks have the same descriptors in the same order. What was
/// asked for once is kept.
class ParamLayout {
  public:
    /// The next block. All are added before anything is asked for.
    void Add(const DescriptorIndex& block) { blocks_.push_back(&block); }
    [[nodiscard]] const std::vector<const DescriptorIndex*>& Blocks() const { return blocks_; }
    /// The definitions of that name in block and definition order. Letter case does not count.
    [[nodiscard]] const std::vector<BlockParam>& Named(std::wstring_view name);

    /// A row of a table and the first scalar parameter of its name whose type has a kind.
    struct TableParam {
        const ParamRow* row;
        BlockParam param;
    };
    /// The rows that have one, in their order; valid until another table is asked for. The rows
    /// must outlive this.
    [[nodiscard]] const std::vector<TableParam>& ParamsOf(std::span<const ParamRow> rows);

  private:
    struct Table {
        std::span<const ParamRow> rows;
        std::vector<TableParam> params;
    };
    std::vector<const DescriptorIndex*> blocks_;
    std::unordered_map<std::wstring, std::vector<BlockParam>, TextHash, std::equal_to<>> named_;
    std::vector<Table> tables_; // few: those of one class
};

} // namespace brimwave
