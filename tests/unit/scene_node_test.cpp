// The USD mirror's nodes: paths to nodes, cached world matrices and the
// unlinking that lets a subtree die.

#include "scene/scene_node.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "host/viewer/matrix.h"
#include "support/vector_matrix.h"

using Tessera::Sorrel::ViewerUtils::findOrCreateSceneNode;
using Tessera::Sorrel::ViewerUtils::findSceneNode;
using Tessera::Sorrel::ViewerUtils::Mat4d;
using Tessera::Sorrel::ViewerUtils::removeSceneNode;
using Tessera::Sorrel::ViewerUtils::SceneNode;

namespace {

Mat4d moved(double x, double y, double z) { return Mat4d(sorrel::translationMatrix(x, y, z)); }

double translationX(const Mat4d& m) { return m[3][0]; }

class SceneNodes : public ::testing::Test {
protected:
    void TearDown() override { root->detachChildren(); }

    std::shared_ptr<SceneNode> node(const char* path) {
        return findOrCreateSceneNode(root, vrt::Path(path));
    }

    const std::shared_ptr<SceneNode> root =
        std::make_shared<SceneNode>(vrt::Path::AbsoluteRootPath());
};

TEST_F(SceneNodes, MissingAncestorsAreMadeOnTheWayAndFoundAgain) {
    const auto key = node("/World/Lights/Key");
    EXPECT_EQ(findSceneNode(root, vrt::Path::AbsoluteRootPath()), root);
    EXPECT_EQ(findSceneNode(root, vrt::Path("/World/Lights/Key")), key);
    EXPECT_EQ(node("/World/Lights/Key"), key) << "a known node is not made again";
    EXPECT_EQ(findSceneNode(root, vrt::Path("/World/Lights/Fill")), nullptr);
    EXPECT_EQ(findSceneNode(root, vrt::Path("/Other/Lights")), nullptr);

    const auto lights = findSceneNode(root, vrt::Path("/World/Lights"));
    ASSERT_NE(lights, nullptr);
    EXPECT_EQ(key->parent, lights);
    EXPECT_EQ(lights->parent->parent, root);
    for (const SceneNode* ancestor : {lights.get(), lights->parent.get()})
        EXPECT_TRUE(ancestor->localMatrix == Mat4d() && ancestor->usdAttributes.empty());
}

TEST_F(SceneNodes, WorldMatricesFollowAncestorsOnlyWhenTheyChange) {
    const auto group = node("/World/Group");
    const auto key = node("/World/Group/Key");
    group->setLocalMatrix(moved(10, 0, 0), false);
    // Points are row vectors: the child's own turn applies before the parent's move.
    const Mat4d quarterTurn({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    key->setLocalMatrix(Tessera::Sorrel::ViewerUtils::multiply(quarterTurn, moved(0, 2, 0)), false);
    EXPECT_EQ(key->getWorldMatrix()[0][1], 1.0);
    EXPECT_EQ(translationX(key->getWorldMatrix()), 10.0);

    group->setLocalMatrix(moved(10, 0, 0), false);
    EXPECT_TRUE(key->worldMatrixValid) << "an unchanged matrix invalidates nothing";
    group->setLocalMatrix(moved(20, 0, 0), false);
    EXPECT_FALSE(key->worldMatrixValid);
    EXPECT_EQ(translationX(key->getWorldMatrix()), 20.0);

    Mat4d withNaN = moved(20, 0, 0);
    withNaN[0][0] = std::numeric_limits<double>::quiet_NaN();
    group->setLocalMatrix(withNaN, false);
    key->getWorldMatrix();
    group->setLocalMatrix(withNaN, false);
    EXPECT_FALSE(key->worldMatrixValid) << "a NaN never equals itself, so it counts as a change";

    // A node that ignores its parent is its own world, and shields what lies below.
    const auto fill = node("/World/Group/Key/Fill");
    key->setLocalMatrix(moved(0, 0, 5), true);
    EXPECT_EQ(translationX(fill->getWorldMatrix()), 0.0);
    EXPECT_EQ(fill->getWorldMatrix()[3][2], 5.0);
    group->setLocalMatrix(moved(30, 0, 0), false);
    EXPECT_TRUE(fill->worldMatrixValid);
}

TEST_F(SceneNodes, RemovalUnlinksTheWholeSubtreeSoThatItDies) {
    const std::weak_ptr<SceneNode> group = node("/World/Group");
    const std::weak_ptr<SceneNode> leaf = node("/World/Group/Key/Leaf");
    node("/World/Other");

    EXPECT_FALSE(removeSceneNode(root, vrt::Path("/World/Nowhere")));
    EXPECT_FALSE(removeSceneNode(root, vrt::Path("/Nowhere/Key")));

    EXPECT_TRUE(removeSceneNode(root, vrt::Path("/World/Group")));
    EXPECT_TRUE(group.expired());
    EXPECT_TRUE(leaf.expired());
    EXPECT_NE(findSceneNode(root, vrt::Path("/World/Other")), nullptr);
}

}  // namespace
