#pragma once
// A name of its own for every object of a package.
#include "package/package_log.h"

#include <max.h>

#include <vector>

namespace brimwave {

/// Renames, in the scene, each node whose name an earlier one of the list has: name + "_001",
/// "_002", ... the first that is free. Names are compared exactly.
void MakeNamesUnique(const std::vector<INode*>& nodes, PackageLog& log);

} // namespace brimwave
