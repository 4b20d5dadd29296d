#pragma once
#include "package/package_context.h"

namespace brimwave {

/// Writes the entries of the objects of one package.
class ObjectEntryWriter {
  public:
    explicit ObjectEntryWriter(PackageContext& package);

    /// The entry of one node, from its "{" to its "}". Whatever fails is named in the entry's
    /// "errors" and in the log, and the rest of the entry is written.
    [[nodiscard]] std::wstring Write(INode& node);

  private:
    std::wstring MaterialIds(INode& node);
    void CollectIds(const Mesh& mesh, std::vector<int>& ids);

    PackageContext& package_;
    std::vector<bool> seen_; // by material id
};

} // namespace brimwave
