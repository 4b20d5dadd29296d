#pragma once
#include "host/material_ids.h"
#include "package/package_context.h"
#include "package/utf8_store.h"

namespace brimwave {

/// Writes the entries of the objects of one package.
class ObjectEntryWriter {
  public:
    explicit ObjectEntryWriter(PackageContext& package) : package_(package) {}

    /// Appends the entry of one node, from its "{" to its "}". Whatever fails is named in the
    /// entry's "errors" and in the log, and the rest of the entry is written.
    void Append(Utf8Store& out, INode& node);

  private:
    template <class Read>
    void ReadOr(std::wstring& text, const wchar_t* what, const wchar_t* fallback, Read read);
    void ReadParts(INode& node);
    void AppendMaterialIds(INode& node);

    PackageContext& package_;
    MaterialIdFinder idFinder_;
    // Parts of the entry at hand, kept for their memory.
    std::wstring name_, className_, materialIds_, displacement_, material_, head_;
    std::vector<std::wstring> errors_;
};

} // namespace brimwave
