// The placement layer from end to end in the stand-in viewer: a floor under
// the cursor, a selected light, and the host's own snapping layer and
// manipulator doing their parts.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/ray_cast.h"
#include "host/viewer_stage.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;

namespace {

constexpr const char* kLight = "/root/world/lgt/key";
constexpr double kDistance = 4.0;
constexpr std::int32_t kPixelX = 400;
constexpr std::int32_t kPixelY = 300;
// Snapped points travel as floats.
constexpr double kTolerance = 1e-5;

AttrRef press(int button, int buttons, int modifiers) {
    return groupAttr({{"type", stringAttr("MouseButtonPress")},
                      {"data", groupAttr({{"x", intAttr(kPixelX)},
                                          {"y", intAttr(kPixelY)},
                                          {"button", intAttr(button)},
                                          {"buttons", intAttr(buttons)},
                                          {"modifiers", intAttr(modifiers)}})}});
}

struct Pose {
    Vec3 position;
    Vec3 direction;  // the light's local -Z, world space
};

Pose worldPose(const Scene& scene, const std::string& path) {
    const Matrix world = *scene.worldTransform(path);
    return {{world[12], world[13], world[14]},
            normalizedOrZero(Vec3{-world[8], -world[9], -world[10]})};
}

void expectNear(const Vec3& actual, const Vec3& expected, const std::string& what) {
    EXPECT_NEAR(actual.x, expected.x, kTolerance) << what;
    EXPECT_NEAR(actual.y, expected.y, kTolerance) << what;
    EXPECT_NEAR(actual.z, expected.z, kTolerance) << what;
}

class PlacementInViewer : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        stage = std::make_unique<ViewerStage>(640, 480, Vec3{2, 9, 12}, Vec3{0, 0, 0},
                                              &testing_support::plugin());
        Mesh floor = Mesh::plane(20, 20, 4);
        stage->scene().meshes().emplace("floor", std::move(floor));
        stage->delegate().putLocation("/root/world/lgt", groupAttr({}), translationMatrix(0, 1, 0));
        stage->delegate().putLocation(kLight, lightAttributes(), translationMatrix(3, 4, 0));
        stage->select({kLight});

        LayerObject& layer = placement();
        layer.setOption("Enabled", intAttr(1));
        layer.setOption("DefaultDistance", doubleAttr(kDistance));

        const auto ray = rayThroughPixel(stage->viewport(), kPixelX, kPixelY);
        hit = castRay(stage->scene(), *ray).value();
    }
    void TearDown() override {
        stage.reset();
        PluginContractTest::TearDown();
    }

    LayerObject& placement() { return *stage->viewport().pluginLayer("BeamwrightLayer"); }
    static AttrRef lightAttributes() {
        return groupAttr({{"type", stringAttr("light")},
                          {"geometry", groupAttr({{"centerOfInterest", doubleAttr(5.0)}})}});
    }

    /// The pose that the mode's formula gives for the snapped point and normal.
    Pose expectedPose(const std::string& mode, const Pose& before) const {
        const Vec3 p = hit.hit.point;
        const Vec3 n = hit.hit.normal;
        const Vec3 eye = {2, 9, 12};
        if (mode == "Fixed Rotation" || mode == "Normal" || mode == "Shadow")
            return {p + n * kDistance, -n};
        const Vec3 v = p - eye;
        const Vec3 r = normalizedOrZero(v - n * (2 * dot(v, n)));
        if (mode == "Reflection") return {p + r * kDistance, -r};
        if (mode == "Specular") {
            const Vec3 h = normalizedOrZero(n + r);
            return {p + h * kDistance, -h};
        }
        const bool oriented = mode.find("Oriented to Normal") != std::string::npos;
        const Vec3 direction = oriented ? n : before.direction;
        if (mode.rfind("Face", 0) == 0) return {hit.hit.faceCentre, direction};
        if (mode == "Object - Center") return {hit.boundsCentre, direction};
        return {p, direction};
    }

    std::unique_ptr<GLContext> gl = std::make_unique<GLContext>(64, 64);
    std::unique_ptr<ViewerStage> stage;
    SceneHit hit;
};

TEST_F(PlacementInViewer, LeftPressMovesTheSelectedLightByEveryPlacingMode) {
    const char* modes[] = {"Fixed Rotation",
                           "Normal",
                           "Specular",
                           "Reflection",
                           "Shadow",
                           "Face - Center",
                           "Face - Center - Oriented to Normal",
                           "Object Surface",
                           "Object Surface - Oriented to Normal",
                           "Object - Center"};
    ASSERT_GT(hit.hit.normal.y, 0.99) << "the cursor lies over the floor";
    for (const char* mode : modes) {
        stage->scene().find(kLight)->local = translationMatrix(3, 4, 0);
        const Pose before = worldPose(stage->scene(), kLight);
        placement().setOption("Mode", stringAttr(mode));
        EXPECT_FALSE(placement().event(press(1, 1, 0))) << mode;

        const Pose after = worldPose(stage->scene(), kLight);
        const Pose expected = expectedPose(mode, before);
        expectNear(after.position, expected.position, std::string(mode) + ": position");
        expectNear(after.direction, expected.direction, std::string(mode) + ": direction");
    }
}

TEST_F(PlacementInViewer, ShiftPressCreatesAPackageAimedDownOverTheFloor) {
    placement().setOption("Mode", stringAttr("Normal"));
    placement().setOption("PackageClassName", stringAttr("SpotPackage"));
    const std::size_t locationsBefore = stage->scene().locations().size();
    EXPECT_TRUE(placement().event(press(1, 1, 0x02000000)));
    ASSERT_EQ(stage->scene().locations().size(), locationsBefore + 2) << "a package and its light";

    const std::string light = "/root/world/lgt/package1/light";
    ASSERT_TRUE(stage->scene().contains(light));
    const Pose pose = worldPose(stage->scene(), light);
    expectNear(pose.direction, {0, -1, 0}, "the package's light points down");
    expectNear(pose.position, hit.hit.point + Vec3{0, kDistance, 0}, "it stands over the point");
    EXPECT_EQ(
        stage->scene().find(light)->attributes.child("geometry.centerOfInterest").doubleValue(),
        kDistance);
    // The selected light stays where it was: a Shift press sends no placement.
    expectNear(worldPose(stage->scene(), kLight).position, {3, 5, 0}, "the selected light");
}

TEST_F(PlacementInViewer, DragOverEmptySpaceLeavesTheLightAlone) {
    stage->scene().meshes().clear();
    placement().setOption("Mode", stringAttr("Normal"));
    EXPECT_FALSE(placement().event(press(1, 1, 0)));
    expectNear(worldPose(stage->scene(), kLight).position, {3, 5, 0}, "unmoved");
}

}  // namespace
