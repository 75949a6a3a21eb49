#pragma once
// SorrelLocationNode: one location of the scene tree, with its payload.

#include <cstdint>
#include <string>
#include <vector>

namespace UTIL::SceneTree {

/// Owned by the tree's index, which keeps its address fixed for its whole life;
/// the links between nodes therefore are plain pointers.
template <class Payload>
struct SorrelLocationNode {
    // What a walk reads of every node comes first, the children and then the
    // payload, whose leading fields are its hot ones: in a node of the index
    // they follow the key, so that most nodes are walked in one cache line.
    // What only an insertion reads comes after the payload.

    /// Provided, not defaulted, so that a node the index makes is not first
    /// zeroed whole, some 300 bytes, and then given its members' own values.
    SorrelLocationNode() {}

    /// Direct children: appended when made, unlinked by swapping with the last.
    std::vector<SorrelLocationNode*> children;
    Payload data{};
    /// Null for a node without parent.
    SorrelLocationNode* parent = nullptr;
    /// The node's own key inside the index: its full location path.
    const std::string* path = nullptr;
    /// 1 for a node without parent, else the parent's depth + 1.
    std::int32_t depth = 0;
    /// Free for the owner of the tree, which may keep the node's place in an
    /// array of its own here; beside `depth`, it takes no room of its own.
    std::uint32_t slot = 0;
};

}  // namespace UTIL::SceneTree
