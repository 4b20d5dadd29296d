#include "tests/class_page/class_page.h"

#include "host/text.h"
#include "package/classes/class_lists.h"

#include <algorithm>
#include <map>

namespace brimwave::testing {
namespace {

constexpr std::wstring_view introduction = LR"(# Classes of the scene package

Printed by `print_class_tables` from the tables in `package/classes/` (see [building](building.md));
changes are made there. [The format](package-format.md) says what surrounds these rows and what the
members mean that are computed rather than taken from one parameter.

A row says under which member a parameter of the host is written, in the order of writing. Every
spelling that the object has is written. Values are as the host stores them, unless the row says
otherwise.

A class of materials or maps is found by its `type` in lower case: by its whole name, failing that
by a part of it. Of several parts that a name has, the first of these counts:

)";

std::wstring Code(std::wstring_view text) {
    return L"`" + std::wstring(text) + L"`";
}

/// "`a`, `b`".
template <class List, class TextOf>
std::wstring Codes(const List& list, TextOf textOf) {
    std::wstring text;
    for (const auto& element : list)
        text += (text.empty() ? L"" : L", ") + Code(textOf(element));
    return text;
}

/// The parts of names of all classes, by their rank.
std::wstring PartOrder() {
    std::multimap<int, std::wstring_view> parts;
    for (const ClassFamily& family : ClassFamilies())
        for (const ClassEntry& entry : family.classes)
            for (const NamePart& part : entry.nameParts)
                parts.emplace(part.rank, part.text);
    std::wstring list;
    for (const auto& [rank, text] : parts)
        list += L"- " + Code(text) + L"\n";
    return list;
}

std::wstring Remark(const ParamRow& row) {
    std::wstring text = row.unit == RowUnit::Length ? L"in metres" : L"";
    if (!text.empty() && !row.note.empty())
        text += L"; ";
    return text.append(row.note);
}

void AppendRows(std::wstring& page, const std::vector<ParamRow>& rows) {
    if (rows.empty())
        return;
    const auto hasRemark = [](const ParamRow& row) { return !Remark(row).empty(); };
    const bool remarks = std::ranges::any_of(rows, hasRemark);
    page += remarks ? L"\n| parameter | member | |\n|---|---|---|\n"
                    : L"\n| parameter | member |\n|---|---|\n";
    for (const ParamRow& row : rows) {
        page += L"| " + Code(row.param) + L" | " + Code(row.key) + L" |";
        page += remarks ? L" " + Remark(row) + L" |\n" : L"\n";
    }
}

/// How the class is found and what it is called.
void AppendNames(std::wstring& page, const ClassEntry& entry) {
    const auto sentence = [&](const wchar_t* begin, const std::wstring& codes) {
        if (!codes.empty())
            page += L"\n" + std::wstring(begin) + codes + L".\n";
    };
    sentence(L"Class: ", Codes(entry.classNames, [](const auto& name) { return name; }));
    sentence(L"Every class with a part of its name that is one of: ",
             Codes(entry.nameParts, [](const NamePart& part) { return part.text; }));
    for (const TypeName& name : entry.types)
        sentence((L"Type of the host's " + Code(name.className) + L": ").c_str(), Code(name.type));
    sentence(L"Web file: ", entry.webFile.empty() ? L"" : Code(entry.webFile));
}

void AppendClass(std::wstring& page, const ClassEntry& entry) {
    AppendNames(page, entry);
    AppendRows(page, entry.rows);
    if (!entry.note.empty())
        page += L"\n" + std::wstring(entry.note) + L"\n";
    AppendRows(page, entry.rowsAfter);
}

} // namespace

std::string ClassPage() {
    std::wstring page = std::wstring(introduction) + PartOrder();
    for (const ClassFamily& family : ClassFamilies()) {
        page += L"\n## " + std::wstring(family.heading) + L"\n";
        for (const ClassEntry& entry : family.classes) {
            if (entry.name != family.heading)
                page += L"\n### " + std::wstring(entry.name) + L"\n";
            AppendClass(page, entry);
        }
    }
    return WideToUtf8(page);
}

} // namespace brimwave::testing
