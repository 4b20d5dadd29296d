#pragma once
#include "host/params.h"
#include "package/node_registry.h"
#include "package/package_log.h"

namespace brimwave {

/// What the writers of one package share. Lives as long as that package's writing.
struct PackageContext {
    Interface& host;
    PackageLog& log;
    ParamReader params;
    NodeRegistry registry;
    float metresPerUnit = 1;

    PackageContext(Interface& core, PackageLog& lines);
    PackageContext(const PackageContext&) = delete;
    PackageContext& operator=(const PackageContext&) = delete;

    [[nodiscard]] TimeValue Time() const { return params.Time(); }
};

} // namespace brimwave
