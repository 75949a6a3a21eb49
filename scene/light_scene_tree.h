#pragma once
// LightSceneTree: the delegate component's tree of locations, one light location
// record for each, and beside it what the light list's walk reads of each
// location, in one dense array.

#include <cstdint>
#include <vector>

#include "scene/light_location_data.h"
#include "scene/sorrel_scene_tree.h"

/// The tree's nodes are large: a key, links and a whole record, some 350 bytes
/// that a breadth-first walk would stream through memory for the three flags
/// and the children it reads of each. The walk reads a mirror instead: for
/// each node an entry of 32 bytes, two to a cache line, in one array: the
/// node's children as places in that array, in the same order as the node's
/// own `children`, and the node with whether its record goes on the light list.
class LightSceneTree : public UTIL::SceneTree::SorrelSceneTree<LightLocationData> {
public:
    using Node = UTIL::SceneTree::SorrelLocationNode<LightLocationData>;

    /// Takes `node` out of its parent's children, the last sibling taking its
    /// place, in the tree and in the mirror; the node stays in the index.
    void unlinkFromParent(Node* node);

    /// To be called whenever the record's `excluded`, `isLight` or
    /// `showHandle` may have changed.
    void recordChanged(const Node* node) {
        const LightLocationData& data = node->data;
        const bool listed = !data.excluded && data.isLight && data.showHandle;
        entries[node->slot].nodeAndListed =
            reinterpret_cast<std::uintptr_t>(node) | (listed ? kListed : 0);
    }

    /// Appends the records of `start` and all below it that go on the light
    /// list, breadth first as walk() goes; `queue` is the walk's, kept by the
    /// caller for its capacity.
    void collectListed(const Node* start, std::vector<const LightLocationData*>& records,
                       std::vector<std::uint32_t>& queue) const;

protected:
    void nodeAdded(Node* node) override;
    void nodeRemoving(Node* node) override;

private:
    struct Entry {
        /// Places in `entries`.
        std::vector<std::uint32_t> children;
        /// The node's address, its lowest bit set while its record goes on
        /// the light list: nodes are aligned to 8 bytes.
        std::uintptr_t nodeAndListed = 0;

        const Node* node() const { return reinterpret_cast<const Node*>(nodeAndListed & ~kListed); }
        bool listed() const { return (nodeAndListed & kListed) != 0; }
    };
    static constexpr std::uintptr_t kListed = 1;
    static_assert(alignof(Node) > kListed);

    /// Removed nodes' entries included.
    std::vector<Entry> entries;
    /// Places of removed nodes, given to the next nodes added.
    std::vector<std::uint32_t> freeSlots;
};
