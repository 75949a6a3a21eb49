#pragma once
// UTIL::SceneTree::SceneTree: a tree of nodes stored by full location path, linked
// to parent and children, and walked breadth first.

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "scene/breadth_first_iterator.h"

namespace UTIL::SceneTree {

/// Node has the fields `path`, `depth`, `parent`, `children` and `data` of
/// SorrelLocationNode. IndexMap maps a path to a Node by value and must keep the
/// addresses of nodes and keys over insertion and rehashing, as std::unordered_map
/// does: nodes point at one another and at their own key, and users of the tree
/// keep pointers to payloads. PathClimber gives a path's parent path.
///
/// The index is the whole state: no root pointer, no count. Several nodes without
/// parent may stand side by side; a walk starts wherever the caller looks up.
/// findOrAdd remembers the parent it found last, since siblings tend to come
/// one after another; every removal forgets it.
template <class Node, class Iterator, class ConstIterator, class IndexMap, class PathClimber>
class SceneTree {
public:
    SceneTree() = default;
    // Nodes point into this tree's own index; a copy would point into the original.
    SceneTree(const SceneTree&) = delete;
    SceneTree& operator=(const SceneTree&) = delete;
    virtual ~SceneTree() = default;

    /// Called for each node just before it is erased. By then its children are gone
    /// from the index, though its `children` still lists them.
    virtual void nodeRemoving(Node* /*node*/) {}

    /// Removes `node` and everything below it, children before parents, and returns
    /// how many nodes went. `node` stays in its parent's `children`: unlinking it
    /// first is the caller's matter.
    virtual std::uint64_t removeSubtree(Node* node) {
        lastParent = nullptr;
        std::uint64_t removed = 0;
        for (Node* const child : node->children) removed += removeSubtree(child);
        nodeRemoving(node);
        // Erased by position, since the key that `path` points at dies with the node.
        index.erase(index.find(*node->path));
        return removed + 1;
    }

    /// Called for each new node as the last step of its insertion.
    virtual void nodeAdded(Node* /*node*/) {}

    Node* find(const std::string& path) {
        const auto entry = index.find(path);
        return entry == index.end() ? nullptr : &entry->second;
    }
    const Node* find(const std::string& path) const {
        const auto entry = index.find(path);
        return entry == index.end() ? nullptr : &entry->second;
    }

    Node* findOrInsert(const std::string& path, bool createMissingParents) {
        Node* const existing = find(path);
        return existing ? existing : insert(path, createMissingParents);
    }

    /// Adds a node for `path`, which must not be in the tree yet. A path whose parent
    /// path is empty ("/root", "") becomes a node without parent. Otherwise the parent
    /// must be in the tree, or, with `createMissingParents`, is made first; when it
    /// cannot be had the result is null and nothing has changed.
    Node* insert(const std::string& path, bool createMissingParents) {
        const std::string parentPath = PathClimber::parentPath(path);
        if (parentPath.empty()) return insertRoot(path);
        // A path without '/' is its own parent's path: no place in the tree, and
        // climbing from it would never end.
        if (parentPath == path) return nullptr;
        Node* const parent =
            createMissingParents ? findOrInsert(parentPath, true) : find(parentPath);
        return parent ? insertChild(parent, path) : nullptr;
    }

    Node* insertRoot(const std::string& path) {
        Node* const node = emplace(path);
        node->depth = 1;
        nodeAdded(node);
        return node;
    }

    Node* insertChild(Node* parent, const std::string& path) { return link(parent, emplace(path)); }

    /// What findOrAdd answers: the node, and whether it was added.
    struct Found {
        Node* node = nullptr;
        bool added = false;
    };

    /// The node at `path` if the tree has it; otherwise the node that
    /// insert(path, false) would add, added with one look-up of the path, whose
    /// text becomes its key. Null, and the tree as it was, where insert would
    /// give null.
    Found findOrAdd(std::string&& path) {
        const auto [entry, added] = index.try_emplace(std::move(path));
        Node* const node = &entry->second;
        if (!added) return {node, false};
        node->path = &entry->first;
        const std::string_view parentPath = PathClimber::parentOf(entry->first);
        if (parentPath.empty()) {
            node->depth = 1;
            nodeAdded(node);
            return {node, true};
        }
        // A path without '/' is its own parent's path: it has no place in the tree.
        Node* const parent = parentPath != entry->first ? findParent(parentPath) : nullptr;
        if (parent == nullptr) {
            index.erase(entry);
            return {};
        }
        return {link(parent, node), true};
    }

    /// Breadth first from `start`, which comes first; a null start walks nothing.
    WalkRange<Iterator> walk(Node* start) { return WalkRange<Iterator>(Iterator(start)); }
    WalkRange<ConstIterator> walk(const Node* start) const {
        return WalkRange<ConstIterator>(ConstIterator(start));
    }

    std::size_t size() const { return index.size(); }

protected:
    /// Room for eight children at once, one small block, spares the
    /// reallocations at 1, 2 and 4 that most groups of a scene would go
    /// through; a parent of fewer holds a few unused slots.
    static constexpr std::size_t kFirstChildren = 8;

    IndexMap index;

private:
    Node* link(Node* parent, Node* node) {
        node->depth = parent->depth + 1;
        node->parent = parent;
        if (parent->children.empty()) parent->children.reserve(kFirstChildren);
        parent->children.push_back(node);
        nodeAdded(node);
        return node;
    }

    Node* findParent(std::string_view path) {
        if (lastParent == nullptr || *lastParent->path != path) {
            // The index looks up strings only; the kept key is reused, not made anew.
            parentKey.assign(path);
            Node* const found = find(parentKey);
            if (found == nullptr) return nullptr;
            lastParent = found;
        }
        return lastParent;
    }

    Node* lastParent = nullptr;
    std::string parentKey;

    Node* emplace(const std::string& path) {
        const auto [entry, added] = index.try_emplace(path);
        assert(added && "a path is inserted once");
        static_cast<void>(added);
        Node& node = entry->second;
        node.path = &entry->first;
        return &node;
    }
};

}  // namespace UTIL::SceneTree
