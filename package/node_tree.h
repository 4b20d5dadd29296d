#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Appends a material or texture map as a node: "null" for none, `{ "ref": id }` when the
/// package holds it already, else its members, parameters and children. A node at depth d is
/// indented with d times two blanks. Trees of any depth are written without recursion. What the
/// host throws passes through; the text is then unfinished.
void AppendNodeJson(PackageContext& package, std::wstring& out, MtlBase* object, int depth);

[[nodiscard]] std::wstring BuildNodeJson(PackageContext& package, MtlBase* object, int depth);

} // namespace brimwave
