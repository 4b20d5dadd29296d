#include "package/object_list.h"

#include "host/sdk_compat.h"
#include "host/text.h"

#include <algorithm>
#include <charconv>
#include <memory_resource>
#include <unordered_map>

namespace brimwave {
namespace {

/// Names taken so far, and for each which number to try next when it comes again: all lower ones
/// stay taken.
class UsedNames {
  public:
    explicit UsedNames(size_t expected) : next_(&memory_) { next_.reserve(expected); }

    /// Null when the name is taken for the first time, else a name of its own, which is taken too.
    /// It stays where it is until the end.
    const std::pmr::wstring* Take(std::wstring_view name) {
        const auto taken = next_.find(name);
        if (taken == next_.end()) {
            next_.emplace(name, 1);
            return nullptr;
        }
        do
            SetCandidate(name, taken->second++);
        while (next_.contains(std::wstring_view(candidate_)));
        return &next_.emplace(std::wstring_view(candidate_), 1).first->first;
    }

  private:
    /// The name followed by "_%03d".
    void SetCandidate(std::wstring_view name, int number) {
        char digits[16];
        const char* const end = std::to_chars(digits, std::end(digits), number).ptr;
        candidate_.assign(name);
        candidate_ += L'_';
        candidate_.append(static_cast<size_t>(std::max<std::ptrdiff_t>(3 - (end - digits), 0)),
                          L'0');
        candidate_.append(static_cast<const char*>(digits), end);
    }

    std::pmr::monotonic_buffer_resource memory_; // many small pieces that live equally long
    std::pmr::unordered_map<std::pmr::wstring, int, TextHash, std::equal_to<>> next_;
    std::wstring candidate_;
};

SceneNode Classify(INode& node, TimeValue time, PackageLog& log) {
    try {
        Object* const object = node.EvalWorldState(time, TRUE).obj;
        return {&node, object ? object->SuperClassID() : 0};
    } catch (...) {
        log.Add(L"WARNING: Object of '" + NodeNameOrEmpty(node) + L"' could not be evaluated");
        return {&node, 0};
    }
}

int ChildCount(INode& node) {
    try {
        return node.NumberOfChildren();
    } catch (...) {
        return 0;
    }
}

INode* ChildOf(INode& node, int i) {
    try {
        return node.GetChildNode(i);
    } catch (...) {
        return nullptr;
    }
}

bool HasMaterial(INode& node, PackageLog& log) {
    try {
        return node.GetMtl() != nullptr;
    } catch (...) {
        log.Add(L"WARNING: Material of '" + NodeNameOrEmpty(node) + L"' could not be read");
        return false;
    }
}

} // namespace

std::wstring NodeName(INode& node) {
    return HostText(node.GetName());
}

std::wstring NodeNameOrEmpty(INode& node) noexcept {
    try {
        return NodeName(node);
    } catch (...) {
        return {};
    }
}

std::vector<SceneNode> CollectSceneNodes(Interface& host, TimeValue time, PackageLog& log) {
    struct Level {
        INode* node;
        int nextChild;
        int childCount;
    };
    std::vector<SceneNode> nodes;
    std::vector<Level> path; // from the root down to the node at hand; trees may be deep
    if (INode* const root = host.GetRootNode())
        path.push_back({root, 0, ChildCount(*root)});
    while (!path.empty()) {
        Level& level = path.back();
        if (level.nextChild < level.childCount) {
            if (INode* const child = ChildOf(*level.node, level.nextChild++))
                path.push_back({child, 0, ChildCount(*child)});
            continue;
        }
        INode* const finished = level.node;
        path.pop_back();
        if (!path.empty()) // the root itself is no object
            nodes.push_back(Classify(*finished, time, log));
    }
    return nodes;
}

std::vector<INode*> CollectObjects(const std::vector<SceneNode>& nodes, PackageLog& log) {
    std::vector<INode*> objects;
    for (const SceneNode& entry : nodes)
        if (entry.superClass == GEOMOBJECT_CLASS_ID && HasMaterial(*entry.node, log))
            objects.push_back(entry.node);
    log.Add(L"Geometry objects with materials: " + std::to_wstring(objects.size()));
    return objects;
}

void MakeNamesUnique(const std::vector<INode*>& nodes, PackageLog& log) {
    UsedNames names(nodes.size());
    int renamed = 0;
    for (INode* const node : nodes) {
        try {
            const std::pmr::wstring* const own = names.Take(HostView(node->GetName()));
            if (!own)
                continue;
            const std::wstring name = NodeName(*node); // the host's own goes with the renaming
            node->SetName(own->c_str());
            ++renamed;
            log.Add({L"WARNING: Duplicate name - renamed '", name, L"' to '", *own, L"' in scene"});
        } catch (...) {
            log.Add(L"WARNING: An object could not be given a name of its own");
        }
    }
    if (renamed > 0)
        log.Add(L"Total renamed: " + std::to_wstring(renamed) +
                L" object(s). Check scene before saving!");
}

} // namespace brimwave
