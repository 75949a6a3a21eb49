// The location tree: insertion by parent path, subtree removal, breadth-first walks.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "scene/sorrel_scene_tree.h"

namespace {

using Node = UTIL::SceneTree::SorrelLocationNode<int>;

class Tree : public UTIL::SceneTree::SorrelSceneTree<int> {
public:
    std::vector<std::string> removing;
    void nodeRemoving(Node* node) override {
        EXPECT_EQ(find(*node->path), node) << "a node is announced while still in the tree";
        removing.push_back(*node->path);
    }
};

// What the delegate component does before removing a subtree.
void unlink(Node* node) {
    std::vector<Node*>& siblings = node->parent->children;
    *std::find(siblings.begin(), siblings.end(), node) = siblings.back();
    siblings.pop_back();
}

template <class Range>
std::vector<std::string> pathsOf(const Range& walk) {
    std::vector<std::string> paths;
    for (const Node& node : walk) paths.push_back(*node.path);
    return paths;
}

using Paths = std::vector<std::string>;

TEST(SceneTree, InsertionNeedsTheParentUnlessAskedToMakeIt) {
    Tree tree;
    EXPECT_TRUE(pathsOf(tree.walk(tree.find("/root"))).empty());
    EXPECT_EQ(tree.insert("/root/a", false), nullptr);
    EXPECT_EQ(tree.size(), 0u) << "a refused child leaves nothing behind";
    Node* const root = tree.insert("/root", false);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->depth, 1);
    Node* const a = tree.findOrInsert("/root/a", false);
    ASSERT_NE(a, nullptr) << "the child is taken once its parent has come";
    EXPECT_EQ(tree.findOrInsert("/root/a", false), a);

    const Node* const trailing = tree.insert("/root/a/", false);
    EXPECT_TRUE(trailing && trailing->parent == a) << "a trailing '/' makes a child of its own";
    EXPECT_EQ(tree.insert("noSlash", false), nullptr);
    EXPECT_EQ(tree.insert("noSlash/x", true), nullptr);
    EXPECT_EQ(tree.insert("/other", false)->parent, nullptr);
    EXPECT_EQ(pathsOf(tree.walk(root)), (Paths{"/root", "/root/a", "/root/a/"}));

    Tree made;
    const Node* const leaf = made.insert("/root/a/b", true);
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(leaf->depth, 3);
    EXPECT_EQ(*leaf->parent->parent->path, "/root");
    EXPECT_EQ(made.size(), 3u);
}

TEST(SceneTree, RemovalTakesTheSubtreeChildrenFirstAndWalksGoLevelByLevel) {
    Tree tree;
    Node* const root = tree.insert("/root", false);
    for (const char* path : {"/root/a", "/root/b", "/root/c", "/root/a/x", "/root/b/y"})
        tree.insert(path, false);
    unlink(tree.find("/root/a/x"));
    EXPECT_EQ(tree.removeSubtree(tree.find("/root/a/x")), 1u) << "a leaf is one node";
    unlink(tree.find("/root/a"));
    EXPECT_EQ(tree.removeSubtree(tree.find("/root/a")), 1u);
    tree.insert("/root/d", false);
    EXPECT_EQ(pathsOf(tree.walk(root)),
              (Paths{"/root", "/root/c", "/root/b", "/root/d", "/root/b/y"}))
        << "the last child takes the place of the unlinked one; new ones come last";
    const Tree& readOnly = tree;
    EXPECT_EQ(pathsOf(readOnly.walk(readOnly.find("/root/b"))), (Paths{"/root/b", "/root/b/y"}));

    tree.insert("/root/c/z", false);
    tree.removing.clear();
    EXPECT_EQ(tree.removeSubtree(root), 6u);
    EXPECT_EQ(tree.removing,
              (Paths{"/root/c/z", "/root/c", "/root/b/y", "/root/b", "/root/d", "/root"}));
    EXPECT_EQ(tree.size(), 0u);
}

// A random tree, built and pruned; a plain ordered set of paths says what must remain.
TEST(SceneTree, RandomTreeAgreesWithAPlainSetOfPaths) {
    constexpr std::size_t pathCount = 100000;  // many rehashes of the index
    constexpr int pruneCount = 300;
    std::mt19937 random(/* seed = */ 7);
    const auto anyBelow = [&random](std::size_t end) {
        return std::uniform_int_distribution<std::size_t>(0, end - 1)(random);
    };

    // Each node's payload is its index in `paths`, so that it can name its parent.
    std::vector<std::string> paths{"/root"};
    std::vector<std::size_t> parentOf{0};
    while (paths.size() < pathCount) {
        parentOf.push_back(anyBelow(paths.size()));
        paths.push_back(paths[parentOf.back()] + "/n" + std::to_string(paths.size()));
    }

    Tree tree;
    Node* const root = tree.insert("/root", false);
    for (std::size_t i = 1; i < pathCount; ++i) {
        Node* const node = tree.insert(paths[i], false);
        ASSERT_NE(node, nullptr) << paths[i];
        node->data = static_cast<int>(i);
    }
    EXPECT_EQ(tree.find("/root"), root) << "nodes stay put while the index grows";

    std::set<std::string> expected(paths.begin(), paths.end());
    for (int i = 0; i < pruneCount; ++i) {
        const std::string& path = paths[1 + anyBelow(pathCount - 1)];
        Node* const node = tree.find(path);
        ASSERT_EQ(node != nullptr, expected.count(path) > 0) << path;
        if (node == nullptr) continue;
        // Below "/p" lie exactly the paths from "/p/" up to, not including, "/p0".
        const auto below = expected.lower_bound(path + "/");
        const auto after = expected.lower_bound(path + "0");
        const auto count = static_cast<std::uint64_t>(std::distance(below, after)) + 1;
        expected.erase(below, after);
        expected.erase(path);
        unlink(node);
        ASSERT_EQ(tree.removeSubtree(node), count) << path;
    }

    ASSERT_EQ(tree.size(), expected.size());
    int lastDepth = 1;
    for (const Node& node : tree.walk(root)) {
        ASSERT_EQ(expected.erase(*node.path), 1u)
            << "visited once, and only if kept: " << *node.path;
        ASSERT_GE(node.depth, lastDepth) << "levels come in order";
        lastDepth = node.depth;
        if (node.parent) {
            ASSERT_EQ(node.parent->data, static_cast<int>(parentOf[node.data]));
            ASSERT_EQ(node.depth, node.parent->depth + 1);
        }
    }
    EXPECT_TRUE(expected.empty()) << "every kept node is visited";
}

TEST(SceneTree, FindOrAddAddsOnlyWhereInsertWouldAndForgetsRemovedParents) {
    Tree tree;
    // Short enough to live inside its node, where a stale look at it would still match.
    const std::string top = "/root/a";
    EXPECT_TRUE(tree.findOrAdd("/root").added);
    const auto parent = tree.findOrAdd(std::string(top));
    ASSERT_TRUE(parent.added);
    const auto child = tree.findOrAdd(top + "/x");
    ASSERT_TRUE(child.added);
    EXPECT_EQ(child.node->parent, parent.node);
    EXPECT_EQ(child.node->depth, 3);
    EXPECT_EQ(*child.node->path, top + "/x");
    const auto again = tree.findOrAdd(top + "/x");
    EXPECT_FALSE(again.added);
    EXPECT_EQ(again.node, child.node);

    // No parent, or a path without '/': nothing added, the tree as it was.
    EXPECT_EQ(tree.findOrAdd("/root/b/x").node, nullptr);
    EXPECT_EQ(tree.findOrAdd("no slash").node, nullptr);
    EXPECT_EQ(tree.size(), 3u);
    EXPECT_EQ(tree.find("/root/b/x"), nullptr);

    // The parent found last goes with a subtree: a child of its path has none.
    ASSERT_TRUE(tree.findOrAdd(top + "/x/z").added);
    unlink(parent.node);
    tree.removeSubtree(parent.node);
    EXPECT_EQ(tree.findOrAdd(top + "/x/w").node, nullptr);
    EXPECT_EQ(tree.size(), 1u);
}

}  // namespace
