#pragma once
#include "package/package_context.h"

namespace brimwave {

/// The "environment" member of the package, beginning with its comma; always written.
[[nodiscard]] std::wstring BuildEnvironmentJson(PackageContext& package);

} // namespace brimwave
