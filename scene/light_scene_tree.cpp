#include "scene/light_scene_tree.h"

#include <algorithm>

namespace {

/// Takes `value` out of `list`, the last element taking its place.
template <class T>
void swapOut(std::vector<T>& list, const T& value) {
    std::iter_swap(std::find(list.begin(), list.end(), value), list.end() - 1);
    list.pop_back();
}

}  // namespace

void LightSceneTree::unlinkFromParent(Node* node) {
    if (node->parent == nullptr) return;
    swapOut(node->parent->children, node);
    swapOut(entries[node->parent->slot].children, node->slot);
}

void LightSceneTree::collectListed(const Node* start,
                                   std::vector<const LightLocationData*>& records,
                                   std::vector<std::uint32_t>& queue) const {
    // Breadth first through a queue that is appended behind and read in
    // front, never popped: room for every entry at once.
    queue.clear();
    queue.reserve(entries.size());
    queue.push_back(start->slot);
    for (std::size_t next = 0; next < queue.size(); ++next) {
        const Entry& visited = entries[queue[next]];
        // An unlisted location does not hide what lies below it.
        if (visited.listed()) records.push_back(&visited.node()->data);
        queue.insert(queue.end(), visited.children.begin(), visited.children.end());
    }
}

void LightSceneTree::nodeAdded(Node* node) {
    // The entry stays empty, off the list, until recordChanged: only a listed
    // entry's node is read.
    if (freeSlots.empty()) {
        // Grown when the index has just grown its buckets, in the same event:
        // a large block asked for makes the heap first sweep the small blocks
        // freed since the last, and just after the index's there are few.
        if (entries.size() == entries.capacity())
            entries.reserve(std::max(index.bucket_count(), entries.size() + 1));
        node->slot = static_cast<std::uint32_t>(entries.size());
        entries.emplace_back();
    } else {
        node->slot = freeSlots.back();
        freeSlots.pop_back();
    }
    if (node->parent == nullptr) return;
    std::vector<std::uint32_t>& siblings = entries[node->parent->slot].children;
    if (siblings.empty()) siblings.reserve(kFirstChildren);
    siblings.push_back(node->slot);
}

void LightSceneTree::nodeRemoving(Node* node) {
    Entry& removed = entries[node->slot];
    removed.children.clear();
    removed.nodeAndListed = 0;
    freeSlots.push_back(node->slot);
}
