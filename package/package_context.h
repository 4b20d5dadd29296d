#pragma once
#include "host/asset_paths.h"
#include "host/params.h"
#include "package/node_registry.h"
#include "package/node_scratch.h"
#include "package/package_log.h"

namespace brimwave {

struct ClassEntry;

/// What the writers of one package share. Lives as long as that package's writing.
struct PackageContext {
    Interface& host;
    PackageLog& log;
    ParamReader params;
    NodeRegistry registry;
    AssetFinder assets;
    /// By the types met so far; null for an unknown class.
    std::unordered_map<std::wstring, const ClassEntry*, TextHash, std::equal_to<>> classes;
    NodeScratch nodeScratch;
    float metresPerUnit = 1;

    PackageContext(Interface& core, PackageLog& lines);
    PackageContext(const PackageContext&) = delete;
    PackageContext& operator=(const PackageContext&) = delete;

    [[nodiscard]] TimeValue Time() const { return params.Time(); }
};

} // namespace brimwave
