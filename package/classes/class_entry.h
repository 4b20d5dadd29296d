#pragma once
// What a class gives to the package. One entry is all that there is to know of a class.
#include "host/params.h"
#include "package/package_context.h"

namespace brimwave {

struct ClassEntry;

/// Appends members that no row gives.
using ClassWriter = void (*)(PackageContext&, JsonMembers&, MtlBase&, const ClassEntry&);

/// A part of class names. Of several that are found in one name the lowest rank counts.
struct NamePart {
    std::wstring_view text; // in lower case
    int rank;               // over all classes, each its own
};

/// A class that is written under another name than the host's.
struct TypeName {
    std::wstring_view className; // letter case counts
    std::wstring_view type;
};

struct ClassEntry {
    std::wstring_view name;                         // its heading in the documents
    std::vector<std::wstring_view> classNames = {}; // whole; materials and maps in lower case
    std::vector<NamePart> nameParts = {};           // for names that no class has whole
    std::vector<TypeName> types = {};
    std::vector<ParamRow> rows = {}; // in the order of writing; every spelling that exists counts
    ClassWriter writer = nullptr;    // between `rows` and `rowsAfter`
    std::vector<ParamRow> rowsAfter = {};
    std::wstring_view webFile = {}; // of a light: the parameter that names its web file
    std::wstring_view note = {};    // for the documents; stands between the two tables
};

using ClassList = std::vector<ClassEntry>;

} // namespace brimwave
