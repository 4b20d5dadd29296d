#include "package/object_entry.h"

#include "host/sdk_compat.h"
#include "package/displacement.h"
#include "package/material_json.h"
#include "package/object_list.h"

#include <triobj.h>

#include <algorithm>

namespace brimwave {
namespace {

/// The world-state object as a triangle mesh; frees it when the conversion made a new one.
class ConvertedMesh {
  public:
    ConvertedMesh(INode& node, TimeValue time) : source_(node.EvalWorldState(time, TRUE).obj) {
        if (source_ && source_->CanConvertToType(triObjectClassID))
            converted_ = source_->ConvertToType(time, triObjectClassID);
    }
    ~ConvertedMesh() {
        if (converted_ && converted_ != source_)
            converted_->MaybeAutoDelete();
    }
    ConvertedMesh(const ConvertedMesh&) = delete;
    ConvertedMesh& operator=(const ConvertedMesh&) = delete;

    /// Null when the object is none and cannot become one.
    [[nodiscard]] const Mesh* Get() const {
        auto* const triangles = dynamic_cast<TriObject*>(converted_);
        return triangles ? &triangles->GetMesh() : nullptr;
    }

  private:
    Object* source_;
    Object* converted_ = nullptr;
};

std::wstring ObjectClass(INode& node, TimeValue time) {
    Object* const object = node.EvalWorldState(time, TRUE).obj;
    return object ? ClassNameOf(*object) : std::wstring();
}

/// `read()`; when the host fails over it, `fallback` and an error that names the member.
template <class Read>
std::wstring Guarded(std::vector<std::wstring>& errors, const wchar_t* what,
                     const wchar_t* fallback, Read read) {
    try {
        return read();
    } catch (...) {
        errors.emplace_back(std::wstring(what) + L" exception");
        return fallback;
    }
}

std::wstring ErrorsJson(const std::vector<std::wstring>& errors) {
    std::wstring text = L"[";
    for (const std::wstring& error : errors) {
        if (text.size() > 1)
            text += L',';
        AppendJsonString(text, error);
    }
    text += L']';
    return text;
}

} // namespace

ObjectEntryWriter::ObjectEntryWriter(PackageContext& package)
    : package_(package), seen_(size_t{1} << 16) {}

void ObjectEntryWriter::CollectIds(const Mesh& mesh, std::vector<int>& ids) {
    const int faces = mesh.getNumFaces();
    for (int i = 0; i < faces; ++i) {
        const MtlID id = mesh.faces[i].getMatID();
        if (seen_[id])
            continue;
        seen_[id] = true;
        ids.push_back(id + 1);
    }
    for (const int id : ids)
        seen_[static_cast<size_t>(id - 1)] = false;
    std::sort(ids.begin(), ids.end());
}

std::wstring ObjectEntryWriter::MaterialIds(INode& node) {
    std::vector<int> ids;
    const ConvertedMesh mesh(node, package_.Time());
    if (mesh.Get())
        CollectIds(*mesh.Get(), ids);
    std::wstring text = L"[";
    for (const int id : ids) {
        if (text.size() > 1)
            text += L',';
        AppendJsonInt(text, id);
    }
    text += L']';
    return text;
}

std::wstring ObjectEntryWriter::Write(INode& node) {
    std::vector<std::wstring> errors;
    const std::wstring name = Guarded(errors, L"object_name", L"", [&] { return NodeName(node); });
    const std::wstring ids =
        Guarded(errors, L"material_ids", L"[]", [&] { return MaterialIds(node); });
    const std::wstring material = Guarded(errors, L"material", L"null", [&] {
        return buildMaterialJson(package_, node.GetMtl(), errors);
    });
    const std::wstring displacement = Guarded(errors, L"displacement_mod", L"null", [&] {
        return ProbeDisplacementJson(package_, node);
    });
    const std::wstring className =
        Guarded(errors, L"object_class", L"", [&] { return ObjectClass(node, package_.Time()); });
    for (const std::wstring& error : errors)
        package_.log.Add(L"[" + name + L"] " + error);

    std::wstring entry;
    entry.reserve(material.size() + displacement.size() + name.size() + 256);
    entry += L"  {\n    \"object_name\": ";
    AppendJsonString(entry, name);
    entry += L",\n    \"object_class\": ";
    AppendJsonString(entry, className);
    entry += L",\n    \"layer\": \"\",\n    \"material_ids\": ";
    entry += ids;
    entry += L",\n    \"displacement_mod\": ";
    entry += displacement;
    entry += L",\n    \"errors\": ";
    entry += ErrorsJson(errors);
    entry += L",\n    \"material\": ";
    entry += material;
    entry += L"\n  }";
    return entry;
}

} // namespace brimwave
