#include "package/package_context.h"

#include "host/units.h"

namespace brimwave {

PackageContext::PackageContext(Interface& core, PackageLog& lines)
    : host(core), log(lines), metresPerUnit(MetresPerSystemUnit()) {}

} // namespace brimwave
