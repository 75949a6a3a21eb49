// The location tree: insertion by parent path, subtree removal, breadth-first walks.

#include <gtest/gtest.h>

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
    for (const char* path : {"/root/a", "/root/b", "/root/a/x", "/root/b/y", "/root/a/x/z"})
        tree.insert(path, false);
    EXPECT_EQ(pathsOf(tree.walk(root)),
              (Paths{"/root", "/root/a", "/root/b", "/root/a/x", "/root/b/y", "/root/a/x/z"}));
    const Tree& readOnly = tree;
    EXPECT_EQ(pathsOf(readOnly.walk(readOnly.find("/root/b"))), (Paths{"/root/b", "/root/b/y"}));

    EXPECT_EQ(tree.removeSubtree(root), 6u);
    EXPECT_EQ(tree.removing,
              (Paths{"/root/a/x/z", "/root/a/x", "/root/a", "/root/b/y", "/root/b", "/root"}));
    EXPECT_EQ(tree.size(), 0u);
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
    tree.removeSubtree(tree.find("/root"));
    EXPECT_EQ(tree.findOrAdd(top + "/x/w").node, nullptr);
    EXPECT_EQ(tree.size(), 0u);
}

}  // namespace
