#include "package/lights.h"

#include "host/attempt.h"
#include "host/scene_walk.h"
#include "host/sdk_compat.h"
#include "package/classes/class_lists.h"
#include "package/ies_profile.h"

#include <algorithm>

namespace brimwave {
namespace {

struct LightNode {
    INode* node;
    const ClassEntry* entry;
    int group;
};

/// Null for what is no light of a known class.
const ClassEntry* FindLight(PackageContext& package, Object& object) {
    const std::wstring className = ClassNameOf(object);
    for (const ClassEntry& entry : Lights())
        if (std::ranges::find(entry.classNames, className) != entry.classNames.end())
            return &entry;
    const ClassEntry& photometric = Lights().back();
    if (object.SuperClassID() != LIGHT_CLASS_ID)
        return nullptr;
    const ParamValue web = package.params.FindParamValue(&object, photometric.webFile);
    return web.stringValue.empty() ? nullptr : &photometric;
}

/// Finds the lights and numbers their objects; nodes that share one object are one group.
class LightList {
  public:
    explicit LightList(PackageContext& package) : package_(package) {}

    void Add(INode& node) {
        Object* const object = node.EvalWorldState(package_.Time(), TRUE).obj;
        const ClassEntry* const entry = object ? FindLight(package_, *object) : nullptr;
        if (!entry)
            return;
        const auto next = static_cast<int>(groups_.size());
        const int group = groups_.try_emplace(node.GetObjectRef(), next).first->second;
        lights_.push_back({&node, entry, group});
    }
    [[nodiscard]] const std::vector<LightNode>& Lights() const { return lights_; }
    [[nodiscard]] size_t GroupCount() const { return groups_.size(); }

  private:
    PackageContext& package_;
    std::vector<LightNode> lights_;
    std::unordered_map<const Object*, int> groups_;
};

std::wstring TransformJson(PackageContext& package, INode& node, Animatable& light) {
    const TimeValue time = package.Time();
    const Matrix3 transform = node.GetNodeTM(time);
    Point3 position, scale;
    Quat rotation;
    DecomposeMatrix(transform, position, rotation, scale);
    const auto place = [&](std::wstring& out, const Point3& p) {
        const float metres = package.metresPerUnit;
        AppendJsonTriple(out, p.x * metres, p.y * metres, p.z * metres);
    };
    std::wstring text = L"{\"position\":";
    place(text, position);
    text += L",\"quat\":" + FormatJsonQuat(rotation) + L",\"scale\":";
    AppendJsonTriple(text, scale.x, scale.y, scale.z);
    for (int i = 0; i < 3; ++i) {
        const Point3 row = transform.GetRow(i);
        text += i == 0 ? L",\"basis\":[" : L",";
        AppendJsonTriple(text, row.x, row.y, row.z);
    }
    text += L"]}";
    const ParamValue targeted = package.params.FindParamValue(&light, L"targeted");
    INode* const target = targeted.boolValue ? node.GetTarget() : nullptr;
    if (target) {
        text += L",\"target_transform\":{\"position\":";
        place(text, target->GetNodeTM(time).GetTrans());
        text += L'}';
    }
    return text;
}

/// Writes the entries into one text.
class LightWriter {
  public:
    explicit LightWriter(PackageContext& package) : package_(package) {}

    void Write(const LightNode& light) {
        // All that the host may fail over is read before anything is written.
        INode& node = *light.node;
        Object* const object = node.EvalWorldState(package_.Time(), TRUE).obj;
        if (!object)
            return;
        const std::wstring name = HostText(node.GetName());
        JsonMembers members;
        package_.params.AppendTable(members, object, light.entry->rows, package_.metresPerUnit);
        IesProfile ies;
        if (!light.entry->webFile.empty())
            ies = ReadIesProfile(package_, *object, light.entry->webFile);
        const std::wstring transform = TransformJson(package_, node, *object);

        std::wstring text = count_++ == 0 ? L",\n  \"lights\": [\n" : L",\n";
        text += L"  {\n    \"light_name\": ";
        AppendJsonString(text, name);
        text += L",\n    \"light_type\": \"";
        text += light.entry->name;
        text += L"\",\n    ";
        if (ies.Named())
            members.AddString(L"ies_file", ies.stored);
        text += JoinJsonMembers(members, L"");
        text += members.empty() ? L"" : L",\n";
        out_.Append(text);
        if (ies.Named())
            WriteIes(ies, name);
        out_.Append(L"\"transform\":" + transform + L",\n    \"instance_group\": " +
                    std::to_wstring(light.group) + L"\n  }");
        package_.log.Add(L"  " + std::wstring(light.entry->name) + L" exported: " + name +
                         L" (group " + std::to_wstring(light.group) + L")");
    }

    Utf8Store Finish(size_t groups) {
        if (count_ > 0) {
            out_.Append(L"\n  ]");
            package_.log.Add(L"Lights exported: " + std::to_wstring(count_) +
                             L" (instance groups: " + std::to_wstring(groups) + L")");
        }
        return std::move(out_);
    }

  private:
    void WriteIes(const IesProfile& ies, const std::wstring& name) {
        const auto fail = [&](const wchar_t* error, const wchar_t* line, const std::wstring& path) {
            out_.Append(std::wstring(L"\"ies_error\":\"") + error + L"\",\n");
            package_.log.Add(L"  " + std::wstring(line) + L" for " + name + L": " + path);
        };
        if (!ies.resolved)
            return fail(L"file not found", L"IES NOT FOUND", ies.stored);
        if (ies.bytes.empty())
            return fail(L"file unreadable", L"IES UNREADABLE", *ies.resolved);
        out_.Append(L"\"ies_data\":\"");
        const size_t characters = AppendIesText(out_, ies.bytes);
        out_.Append(L"\",\n");
        package_.log.Add(L"  IES embedded for " + name + L": " + *ies.resolved + L" (" +
                         std::to_wstring(characters) + L" chars)");
    }

    PackageContext& package_;
    Utf8Store out_;
    int count_ = 0;
};

/// `work(node)`; a light over which the host fails is left out, with a line in the log.
template <class Work>
void Guarded(PackageContext& package, INode& node, Work work) {
    if (!Attempt(work))
        package.log.Add(L"WARNING: Light '" + NodeNameOrEmpty(node) + L"' could not be exported");
}

} // namespace

Utf8Store CollectLightsJson(PackageContext& package, const std::vector<SceneNode>& nodes) {
    LightList list(package);
    for (const SceneNode& entry : nodes)
        if (entry.superClass != 0 && entry.superClass != GEOMOBJECT_CLASS_ID)
            Guarded(package, *entry.node, [&] { list.Add(*entry.node); });
    LightWriter writer(package);
    for (const LightNode& light : list.Lights())
        Guarded(package, *light.node, [&] { writer.Write(light); });
    return writer.Finish(list.GroupCount());
}

} // namespace brimwave
