// The placement layer from end to end in the stand-in viewer: a floor under
// the cursor, a selected light, and the host's own snapping layer and
// manipulator doing their parts.

#include <gtest/gtest.h>

#include <memory>

#include "host/core/names.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/ray_cast.h"
#include "host/viewer_stage.h"
#include "tests/support/near.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;
using testing_support::near;

namespace {

constexpr const char* kLight = "/root/world/lgt/key";
constexpr double kDistance = 4.0;
constexpr std::int32_t kPixelX = 400;
constexpr std::int32_t kPixelY = 300;
// Snapped points travel as floats.
constexpr double kTolerance = 1e-5;

class PlacementInViewer : public testing_support::PluginContractTest {
protected:
    void TearDown() override {
        stage.reset();
        PluginContractTest::TearDown();
    }
    std::unique_ptr<GLContext> gl = std::make_unique<GLContext>(64, 64);
    std::unique_ptr<ViewerStage> stage;
};

TEST_F(PlacementInViewer, LeftPressStandsTheSelectedLightOverTheFloorAimingDown) {
    stage = std::make_unique<ViewerStage>(640, 480, Vec3{2, 9, 12}, Vec3{0, 0, 0},
                                          &testing_support::plugin());
    stage->scene().meshes().emplace("floor", Mesh::plane(20, 20, 4));
    stage->delegate().putLocation("/root/world/lgt", groupAttr({}), translationMatrix(0, 1, 0));
    stage->delegate().putLocation(kLight, groupAttr({{"type", stringAttr("light")}}),
                                  translationMatrix(3, 4, 0));
    stage->select({kLight});
    LayerObject& placement = *stage->viewport().pluginLayer(sorrel::names::kPlacementLayer);
    placement.setOption(sorrel::names::kEnabled, intAttr(1));
    placement.setOption(sorrel::names::kDefaultDistance, doubleAttr(kDistance));
    placement.setOption(sorrel::names::kMode, stringAttr("Normal"));

    const sorrel::MouseButtons left = {sorrel::names::kLeftButton, sorrel::names::kLeftButton};
    EXPECT_FALSE(placement.event(
        sorrel::mouseEvent(sorrel::names::kMouseButtonPress, kPixelX, kPixelY, left)));
    const Vec3 floorPoint =
        castRay(stage->scene(), *rayThroughPixel(stage->viewport(), kPixelX, kPixelY))->hit.point;
    const Matrix world = *stage->scene().worldTransform(kLight);
    EXPECT_TRUE(near(Vec3{world[12], world[13], world[14]}, floorPoint + Vec3{0, kDistance, 0},
                     kTolerance));
    EXPECT_TRUE(near(Vec3{-world[8], -world[9], -world[10]}, Vec3{0, -1, 0}, kTolerance))
        << "the light's local -z aims down at the floor";
}

}  // namespace
