#pragma once
// The breadth-first walk over a scene tree, as an iterator and its range.

#include <cstddef>
#include <deque>
#include <iterator>
#include <type_traits>
#include <utility>

namespace UTIL::SceneTree {

/// Visits a node, then all nodes one level below it, and so on; siblings come in the
/// order of their parent's `children`. Node may be const for read-only walks. The
/// pending nodes belong to the iterator, so the tree is not changed by walking; it
/// must not gain or lose nodes while a walk is under way.
template <class Node>
class BreadthFirstIterator {
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = std::remove_const_t<Node>;
    using difference_type = std::ptrdiff_t;
    using pointer = Node*;
    using reference = Node&;

    /// The end of every walk.
    BreadthFirstIterator() = default;

    /// A walk from `start`, which comes first; a null start gives an empty walk.
    explicit BreadthFirstIterator(Node* start) {
        if (start) pending.push_back(start);
    }

    reference operator*() const { return *pending.front(); }
    pointer operator->() const { return pending.front(); }

    BreadthFirstIterator& operator++() {
        Node* const visited = pending.front();
        pending.pop_front();
        pending.insert(pending.end(), visited->children.begin(), visited->children.end());
        return *this;
    }

    BreadthFirstIterator operator++(int) {
        BreadthFirstIterator before = *this;
        ++*this;
        return before;
    }

    friend bool operator==(const BreadthFirstIterator& a, const BreadthFirstIterator& b) {
        return a.current() == b.current();
    }
    friend bool operator!=(const BreadthFirstIterator& a, const BreadthFirstIterator& b) {
        return !(a == b);
    }

private:
    Node* current() const { return pending.empty() ? nullptr : pending.front(); }

    std::deque<Node*> pending;
};

/// A walk as a range, for range-based for loops.
template <class Iterator>
class WalkRange {
public:
    explicit WalkRange(Iterator start) : start(std::move(start)) {}

    Iterator begin() const { return start; }
    Iterator end() const { return Iterator(); }

private:
    Iterator start;
};

}  // namespace UTIL::SceneTree
