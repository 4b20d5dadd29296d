#pragma once
// What the writing of a node tree works with; kept from tree to tree for its memory.
#include "host/json_text.h"

class MtlBase;

namespace brimwave {

/// Everything that follows a node's own members up to its closing brace: one text, with children
/// to be written at some places of it. A null child is written as such.
struct NodeChildren {
    struct Child {
        size_t place; // in the text
        MtlBase* object;
    };
    std::wstring text;
    std::vector<Child> children; // in the order of their places

    void Clear() {
        text.clear();
        children.clear();
    }
    /// The text between the child before `i` and this one; past the last child, what is left.
    [[nodiscard]] std::wstring_view TextBefore(size_t i) const {
        const size_t begin = i > 0 ? children[i - 1].place : 0;
        const size_t end = i < children.size() ? children[i].place : text.size();
        return std::wstring_view(text).substr(begin, end - begin);
    }
};

/// A node whose head is written and whose children are being written.
struct OpenNode {
    NodeChildren children;
    size_t next = 0;
    int depth = 0;
};

struct NodeScratch {
    /// Of the node at hand.
    JsonMembers members;
    /// From the root of the tree down to the node at hand; more are kept for their memory.
    std::vector<OpenNode> open;
    std::wstring blanks;
};

} // namespace brimwave
