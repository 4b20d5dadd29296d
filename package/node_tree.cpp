#include "package/node_tree.h"

#include "host/sdk_compat.h"
#include "package/class_dispatch.h"
#include "package/node_children.h"

namespace brimwave {
namespace {

using namespace std::literals;

class NodeWriter {
  public:
    NodeWriter(PackageContext& package, std::wstring& out)
        : package_(package), scratch_(package.nodeScratch), out_(out) {}

    void Write(MtlBase* object, int depth) {
        Begin(object, depth);
        while (openCount_ > 0) {
            OpenNode& node = scratch_.open[openCount_ - 1];
            out_ += node.children.TextBefore(node.next);
            if (node.next < node.children.children.size()) {
                MtlBase* const child = node.children.children[node.next++].object;
                Begin(child, node.depth + 1); // may move `node`
                continue;
            }
            End(node.depth);
            --openCount_;
        }
    }

  private:
    /// Writes a node that needs no further work, or the head of one that stays open.
    void Begin(MtlBase* object, int depth) {
        if (!object) {
            out_ += L"null"sv;
            return;
        }
        if (const int id = package_.registry.Find(object)) {
            out_ += L"{ \"ref\": "sv;
            AppendJsonInt(out_, id);
            out_ += L" }"sv;
            return;
        }
        const int id = package_.registry.Add(object);
        const MSTR className = HostClassName(*object);
        WriteHead(*object, HostView(className), id, depth);
        Open(*object, HostView(className), depth);
    }

    void Open(MtlBase& object, std::wstring_view className, int depth) {
        if (scratch_.open.size() == openCount_)
            scratch_.open.emplace_back();
        OpenNode& node = scratch_.open[openCount_];
        CollectChildren(package_, node.children, object, className, Indent(depth));
        node.next = 0;
        node.depth = depth;
        ++openCount_;
    }

    void WriteHead(MtlBase& object, std::wstring_view className, int id, int depth) {
        const bool isMaterial = object.SuperClassID() == MATERIAL_CLASS_ID;
        const std::wstring_view type = NormaliseClassName(className, isMaterial);
        const std::wstring_view indent = Indent(depth);
        out_ += L"{\n"sv;
        out_ += indent;
        out_ += L"\"node_id\": "sv;
        AppendJsonInt(out_, id);
        out_ += L",\n"sv;
        out_ += indent;
        out_ += L"\"type\": "sv;
        AppendJsonString(out_, type);
        out_ += L",\n"sv;
        out_ += indent;
        out_ += L"\"name\": "sv;
        AppendJsonString(out_, HostView(object.GetName()));
        JsonMembers& members = scratch_.members;
        members.clear();
        WriteClassParams(package_, members, object, type);
        if (!members.empty()) {
            out_ += L",\n"sv;
            out_ += JoinJsonMembers(members, indent);
        }
    }

    /// Valid until a deeper one is asked for.
    std::wstring_view Indent(int depth) {
        const size_t blanks = 2 * static_cast<size_t>(depth);
        if (scratch_.blanks.size() < blanks)
            scratch_.blanks.resize(2 * blanks, L' ');
        return std::wstring_view(scratch_.blanks).substr(0, blanks);
    }

    void End(int depth) {
        out_ += L'\n';
        out_ += Indent(depth);
        out_ += L'}';
    }

    PackageContext& package_;
    NodeScratch& scratch_;
    std::wstring& out_;
    size_t openCount_ = 0;
};

} // namespace

void AppendNodeJson(PackageContext& package, std::wstring& out, MtlBase* object, int depth) {
    NodeWriter(package, out).Write(object, depth);
}

std::wstring BuildNodeJson(PackageContext& package, MtlBase* object, int depth) {
    std::wstring text;
    AppendNodeJson(package, text, object, depth);
    return text;
}

} // namespace brimwave
