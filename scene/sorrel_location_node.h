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
    /// The node's own key inside the index: its full location path.
    const std::string* path = nullptr;
    /// 1 for a node without parent, else the parent's depth + 1.
    std::int32_t depth = 0;
    /// Null for a node without parent.
    SorrelLocationNode* parent = nullptr;
    /// Direct children: appended when made, unlinked by swapping with the last.
    std::vector<SorrelLocationNode*> children;
    Payload data{};
};

}  // namespace UTIL::SceneTree
