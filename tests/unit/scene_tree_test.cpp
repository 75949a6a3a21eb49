// The location tree: insertion by parent path, subtree removal, breadth-first walks.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
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
    EXPECT_EQ(tree.find("/root"), nullptr);
    EXPECT_TRUE(pathsOf(tree.walk(tree.find("/root"))).empty());

    EXPECT_EQ(tree.insert("/root/a", false), nullptr);
    EXPECT_EQ(tree.size(), 0u) << "a refused child leaves nothing behind";
    Node* const root = tree.insert("/root", false);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->depth, 1);
    EXPECT_EQ(root->parent, nullptr);
    Node* const a = tree.findOrInsert("/root/a", false);
    ASSERT_NE(a, nullptr) << "the child is taken once its parent has come";
    EXPECT_EQ(tree.findOrInsert("/root/a", false), a);
    EXPECT_EQ(a->depth, 2);
    EXPECT_EQ(a->parent, root);

    Node* const trailing = tree.insert("/root/a/", false);
    ASSERT_NE(trailing, nullptr);
    EXPECT_EQ(trailing->parent, a) << "a trailing '/' makes a child of its own";
    EXPECT_EQ(tree.insert("noSlash", false), nullptr);
    EXPECT_EQ(tree.insert("noSlash/x", true), nullptr);
    EXPECT_EQ(tree.insert("/other", false)->parent, nullptr);
    EXPECT_EQ(pathsOf(tree.walk(root)), (Paths{"/root", "/root/a", "/root/a/"}));

    Tree made;
    const Node* const leaf = made.insert("/root/a/b", true);
    ASSERT_NE(leaf, nullptr);
    EXPECT_EQ(leaf->depth, 3);
    EXPECT_EQ(leaf->parent->depth, 2);
    EXPECT_EQ(*leaf->parent->parent->path, "/root");
    EXPECT_EQ(made.size(), 3u);
}

TEST(SceneTree, NodesKeysAndPayloadsStayPutWhileTheTreeGrows) {
    constexpr int childCount = 20000;  // many rehashes of the index
    Tree tree;
    Node* const root = tree.insert("/root", false);
    const std::string* const key = root->path;
    std::vector<Node*> children;
    for (int i = 0; i < childCount; ++i) {
        children.push_back(tree.insert("/root/c" + std::to_string(i), false));
    }
    EXPECT_EQ(tree.find("/root"), root);
    EXPECT_EQ(root->path, key);
    EXPECT_EQ(root->children, children);
}

TEST(SceneTree, RemovalTakesTheSubtreeChildrenFirst) {
    Tree tree;
    Node* const root = tree.insert("/root", false);
    for (const char* path : {"/root/a", "/root/b", "/root/c", "/root/a/x", "/root/b/y"}) {
        tree.insert(path, false);
    }
    unlink(tree.find("/root/a/x"));
    EXPECT_EQ(tree.removeSubtree(tree.find("/root/a/x")), 1u) << "a leaf is one node";
    unlink(tree.find("/root/a"));
    EXPECT_EQ(tree.removeSubtree(tree.find("/root/a")), 1u);
    EXPECT_EQ(pathsOf(tree.walk(root)), (Paths{"/root", "/root/c", "/root/b", "/root/b/y"}))
        << "the last child takes the place of the unlinked one";
    tree.insert("/root/d", false);
    EXPECT_EQ(pathsOf(tree.walk(root)),
              (Paths{"/root", "/root/c", "/root/b", "/root/d", "/root/b/y"}));

    tree.insert("/root/c/z", false);
    tree.removing.clear();
    EXPECT_EQ(tree.removeSubtree(root), 6u);
    EXPECT_EQ(tree.removing,
              (Paths{"/root/c/z", "/root/c", "/root/b/y", "/root/b", "/root/d", "/root"}));
    EXPECT_EQ(tree.size(), 0u);
}

TEST(SceneTree, WalkGoesLevelByLevelInChildOrder) {
    Tree tree;
    for (const char* path :
         {"/root", "/root/b", "/root/b/x", "/root/a", "/root/a/z", "/root/a/y", "/root/b/x/deep"}) {
        tree.insert(path, false);
    }
    const Paths expected{"/root",     "/root/b",   "/root/a",       "/root/b/x",
                         "/root/a/z", "/root/a/y", "/root/b/x/deep"};
    for (Node& node : tree.walk(tree.find("/root"))) node.data = node.depth;
    const Tree& readOnly = tree;
    EXPECT_EQ(pathsOf(readOnly.walk(readOnly.find("/root"))), expected);
    EXPECT_EQ(pathsOf(tree.walk(tree.find("/root/b"))),
              (Paths{"/root/b", "/root/b/x", "/root/b/x/deep"}));
    EXPECT_EQ(tree.find("/root/b/x/deep")->data, 4) << "the walk may write payloads";
}

// A random tree, built and pruned; a plain ordered set of paths says what must remain.
TEST(SceneTree, RandomTreeAgreesWithAPlainSetOfPaths) {
    constexpr std::size_t pathCount = 100000;
    constexpr int pruneCount = 300;
    std::mt19937 random(/* seed = */ 7);

    // Each node's payload is its index in `paths`, so that it can name its parent.
    std::vector<std::string> paths{"/root"};
    std::vector<int> parentOf{-1};
    while (paths.size() < pathCount) {
        const int parent =
            std::uniform_int_distribution<int>(0, static_cast<int>(paths.size()) - 1)(random);
        paths.push_back(paths[parent] + "/n" + std::to_string(paths.size()));
        parentOf.push_back(parent);
    }

    Tree tree;
    std::vector<bool> inTree(pathCount);
    std::size_t inTreeCount = 0;
    std::vector<int> order(pathCount);
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), random);
    // Shuffled, many a child comes before its parent and is refused; in the order of
    // making, which the second round follows, every parent comes first.
    for (const bool shuffled : {true, false}) {
        if (!shuffled) std::sort(order.begin(), order.end());
        for (const int i : order) {
            Node* const node = tree.findOrInsert(paths[i], false);
            ASSERT_EQ(node != nullptr, i == 0 || inTree[parentOf[i]]) << paths[i];
            if (!node || inTree[i]) continue;
            node->data = i;
            inTree[i] = true;
            ++inTreeCount;
        }
        ASSERT_EQ(tree.size(), inTreeCount) << "refused paths leave nothing behind";
    }

    std::set<std::string> expected(paths.begin(), paths.end());
    for (int i = 0; i < pruneCount; ++i) {
        const std::string& path =
            paths[std::uniform_int_distribution<std::size_t>(1, paths.size() - 1)(random)];
        Node* const node = tree.find(path);
        ASSERT_EQ(node != nullptr, expected.count(path) > 0) << path;
        if (!node) continue;
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
    std::set<const Node*> visited;
    int lastDepth = 1;
    for (const Node& node : tree.walk(tree.find("/root"))) {
        EXPECT_TRUE(expected.count(*node.path)) << *node.path;
        EXPECT_GE(node.depth, lastDepth) << "levels come in order";
        lastDepth = node.depth;
        if (node.parent) {
            EXPECT_EQ(node.parent->data, parentOf[node.data]);
            EXPECT_EQ(node.depth, node.parent->depth + 1);
            EXPECT_TRUE(visited.count(node.parent)) << "a parent comes before its children";
        }
        EXPECT_TRUE(visited.insert(&node).second) << "each node is visited once";
    }
    EXPECT_EQ(visited.size(), expected.size());
}

}  // namespace
