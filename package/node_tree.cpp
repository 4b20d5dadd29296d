#include "package/node_tree.h"

#include "host/sdk_compat.h"
#include "package/class_dispatch.h"
#include "package/node_children.h"

namespace brimwave {
namespace {

using namespace std::literals;

std::wstring Indent(int depth) {
    return std::wstring(2 * static_cast<size_t>(depth), L' ');
}

/// A node whose head is written and whose children are being written.
struct OpenNode {
    NodeChildren children;
    size_t next = 0;
    int depth = 0;
};

class NodeWriter {
  public:
    NodeWriter(PackageContext& package, std::wstring& out) : package_(package), out_(out) {}

    void Write(MtlBase* object, int depth) {
        Begin(object, depth);
        while (!open_.empty()) {
            OpenNode& node = open_.back();
            if (node.next < node.children.pieces.size()) {
                const ChildPiece& piece = node.children.pieces[node.next++];
                out_ += piece.before;
                Begin(piece.object, node.depth + 1); // may move `node` and `piece`
                continue;
            }
            out_ += node.children.after;
            End(node.depth);
            open_.pop_back();
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
        const std::wstring className = ClassNameOf(*object);
        WriteHead(*object, className, id, depth);
        NodeChildren children = CollectChildren(package_, *object, className, Indent(depth));
        if (children.pieces.empty()) {
            out_ += children.after;
            End(depth);
        } else {
            open_.push_back({std::move(children), 0, depth});
        }
    }

    void WriteHead(MtlBase& object, const std::wstring& className, int id, int depth) {
        const bool isMaterial = object.SuperClassID() == MATERIAL_CLASS_ID;
        const std::wstring type = NormaliseClassName(className, isMaterial);
        const std::wstring indent = Indent(depth);
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
        AppendJsonString(out_, HostText(object.GetName()));
        members_.clear();
        WriteClassParams(package_, members_, object, type);
        for (size_t i = 0; i < members_.size(); ++i) {
            out_ += L",\n"sv;
            out_ += indent;
            out_ += members_[i];
        }
    }

    void End(int depth) {
        out_ += L'\n';
        out_.append(2 * static_cast<size_t>(depth), L' ');
        out_ += L'}';
    }

    PackageContext& package_;
    std::wstring& out_;
    std::vector<OpenNode> open_; // from the root of the tree down to the node at hand
    JsonMembers members_;
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
