#include "package/object_entry.h"

#include "host/attempt.h"
#include "host/converted_mesh.h"
#include "host/sdk_compat.h"
#include "package/displacement.h"
#include "package/material_json.h"

namespace brimwave {
namespace {

using namespace std::literals;

void AppendObjectClass(std::wstring& out, INode& node, TimeValue time) {
    if (Object* const object = node.EvalWorldState(time, TRUE).obj)
        out += HostView(HostClassName(*object));
}

void AppendErrors(std::wstring& out, const std::vector<std::wstring>& errors) {
    out += L'[';
    for (const std::wstring& error : errors) {
        if (out.back() != L'[')
            out += L',';
        AppendJsonString(out, error);
    }
    out += L']';
}

} // namespace

/// `read()` appends to `text`; when the host fails over it, the text is `fallback` and an error
/// names the member.
template <class Read>
void ObjectEntryWriter::ReadOr(std::wstring& text, const wchar_t* what, const wchar_t* fallback,
                               Read read) {
    text.clear();
    if (Attempt(read))
        return;
    text = fallback;
    errors_.emplace_back(std::wstring(what) + L" exception");
}

void ObjectEntryWriter::AppendMaterialIds(INode& node) {
    const TimeValue now = package_.Time();
    const ConvertedMesh mesh(node.EvalWorldState(now, TRUE).obj, now);
    materialIds_ += L'[';
    if (mesh.Get())
        for (const MtlID id : idFinder_.Collect(*mesh.Get())) {
            if (materialIds_.size() > 1)
                materialIds_ += L',';
            AppendJsonInt(materialIds_, id + 1);
        }
    materialIds_ += L']';
}

void ObjectEntryWriter::ReadParts(INode& node) {
    errors_.clear();
    ReadOr(name_, L"object_name", L"", [&] { name_ += HostView(node.GetName()); });
    ReadOr(materialIds_, L"material_ids", L"[]", [&] { AppendMaterialIds(node); });
    ReadOr(material_, L"material", L"null",
           [&] { material_ = buildMaterialJson(package_, node.GetMtl(), errors_); });
    ReadOr(displacement_, L"displacement_mod", L"null",
           [&] { ProbeDisplacementJson(package_, displacement_, node); });
    ReadOr(className_, L"object_class", L"",
           [&] { AppendObjectClass(className_, node, package_.Time()); });
}

void ObjectEntryWriter::Append(Utf8Store& out, INode& node) {
    ReadParts(node);
    for (const std::wstring& error : errors_)
        package_.log.Add({L"["sv, name_, L"] "sv, error});

    head_ = L"  {\n    \"object_name\": "sv;
    AppendJsonString(head_, name_);
    head_ += L",\n    \"object_class\": "sv;
    AppendJsonString(head_, className_);
    head_ += L",\n    \"layer\": \"\",\n    \"material_ids\": "sv;
    head_ += materialIds_;
    head_ += L",\n    \"displacement_mod\": "sv;
    head_ += displacement_;
    head_ += L",\n    \"errors\": "sv;
    AppendErrors(head_, errors_);
    head_ += L",\n    \"material\": "sv;
    out.Append(head_);
    material_ += L"\n  }"sv; // written from where it stands: it can be long
    out.Append(material_);
}

} // namespace brimwave
