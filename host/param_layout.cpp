#include "host/param_layout.h"

#include "host/param_read.h"

namespace brimwave {

const std::vector<BlockParam>& ParamLayout::Named(std::wstring_view name) {
    if (const auto known = named_.find(name); known != named_.end())
        return known->second;
    const std::wstring folded = FoldParamName(name);
    std::vector<BlockParam> params;
    for (size_t block = 0; block < blocks_.size(); ++block)
        if (const auto* const positions = blocks_[block]->Find(folded))
            for (const std::uint16_t position : *positions)
                params.push_back({block, &blocks_[block]->Definitions()[position]});
    return named_.emplace(name, std::move(params)).first->second;
}

const std::vector<ParamLayout::TableParam>& ParamLayout::ParamsOf(std::span<const ParamRow> rows) {
    for (const Table& table : tables_)
        if (table.rows.data() == rows.data() && table.rows.size() == rows.size())
            return table.params;
    Table table{rows, {}};
    for (const ParamRow& row : rows)
        for (const BlockParam& param : Named(row.param))
            if (ScalarKindOf(param.definition->type) != ParamKind::None) {
                table.params.push_back({&row, param});
                break;
            }
    return tables_.emplace_back(std::move(table)).params;
}

} // namespace brimwave
