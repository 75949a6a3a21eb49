// The light list's walk over the dense mirror of the location tree: the same
// records, in the same order, as a walk of the tree itself, through removals
// that reorder siblings and additions that take removed nodes' places.

#include "scene/light_scene_tree.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Node = LightSceneTree::Node;
using Records = std::vector<const LightLocationData*>;

/// What the light list held before the mirror: the tree walked, records tested.
Records walkedRecords(LightSceneTree& tree) {
    Records records;
    for (const Node& node : tree.walk(tree.find("/root"))) {
        const LightLocationData& data = node.data;
        if (!data.excluded && data.isLight && data.showHandle) records.push_back(&data);
    }
    return records;
}

Records collectedRecords(const LightSceneTree& tree) {
    Records records;
    std::vector<std::uint32_t> queue;
    tree.collectListed(tree.find("/root"), records, queue);
    return records;
}

/// A location added as the component adds one; every third not a light,
/// every fifth excluded.
void add(LightSceneTree& tree, const std::string& path, int index) {
    Node* const node = tree.findOrAdd(std::string(path)).node;
    ASSERT_NE(node, nullptr) << path;
    node->data.excluded = index % 5 == 0;
    node->data.isLight = index % 3 != 0;
    node->data.showHandle = true;
    tree.recordChanged(node);
}

void remove(LightSceneTree& tree, const std::string& path) {
    Node* const node = tree.find(path);
    tree.unlinkFromParent(node);
    tree.removeSubtree(node);
}

TEST(LightSceneTree, TheMirrorListsWhatTheTreeWalkListsThroughRemovalsAndReuse) {
    LightSceneTree tree;
    add(tree, "/root", 1);
    int index = 2;
    for (const char* group : {"/root/a", "/root/b", "/root/c"}) {
        add(tree, group, index++);
        for (int child = 0; child < 12; ++child)
            add(tree, std::string(group) + "/n" + std::to_string(child), index++);
    }
    EXPECT_EQ(collectedRecords(tree), walkedRecords(tree));
    EXPECT_FALSE(collectedRecords(tree).empty());

    // The last sibling takes a removed one's place; a group's whole subtree goes.
    remove(tree, "/root/a/n3");
    remove(tree, "/root/b");
    remove(tree, "/root/c/n0");
    EXPECT_EQ(collectedRecords(tree), walkedRecords(tree));

    // New nodes take the removed nodes' places in the mirror, without their children.
    add(tree, "/root/d", index++);
    for (int child = 0; child < 6; ++child) add(tree, "/root/d/m" + std::to_string(child), index++);
    add(tree, "/root/a/n3", index++);
    EXPECT_EQ(collectedRecords(tree), walkedRecords(tree));

    // A record that leaves the list, and one that joins it.
    Node* const leaving = tree.find("/root/a/n1");
    leaving->data.showHandle = false;
    tree.recordChanged(leaving);
    Node* const joining = tree.find("/root/d/m0");
    joining->data.excluded = false;
    joining->data.isLight = true;
    tree.recordChanged(joining);
    EXPECT_EQ(collectedRecords(tree), walkedRecords(tree));
}

}  // namespace
