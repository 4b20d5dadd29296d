#pragma once
#include "host/asset_paths.h"
#include "host/params.h"
#include "package/node_registry.h"
#include "package/node_scratch.h"
#include "package/package_log.h"

namespace brimwave {

struct ClassRow;

/// What the writers of one package share. Lives as long as that package's writing.
struct PackageContext {
    Interface& host;
    PackageLog& log;
    ParamReader params;
    NodeRegistry registry;
    AssetFinder assets;
    /// By the class names met so far; null for one without a writer.
    std::unordered_map<std::wstring, const ClassRow*, TextHash, std::equal_to<>> classRows;
    NodeScratch nodeScratch;
    float metresPerUnit = 1;

    PackageContext(Interface& core, PackageLog& lines);
    PackageContext(const PackageContext&) = delete;
    PackageContext& operator=(const PackageContext&) = delete;

    [[nodiscard]] TimeValue Time() const { return params.Time(); }
};

} // namespace brimwave
