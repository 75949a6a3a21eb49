// The stand-in manipulator honours the placement layer's flags: in "Fixed
// Rotation" the light moves without turning, a locked position holds the light
// where it stands, the shadow handles show in "Shadow" only; and the tour runs
// on an asset with a light of its own, placing and hovering that one light,
// on Blender's FBX (in centimetres) and Collada, and on the same scene in every format
// Assimp writes.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "apps/scene/scene_file.h"
#include "apps/viewer/scene_setup.h"
#include "apps/viewer/tour.h"
#include "apps/viewer/viewer_session.h"
#include "host/core/attribute_model.h"
#include "host/core/names.h"
#include "host/core/option_id_generator.h"
#include "host/core/plugin_library.h"
#include "host/render/scene_renderer.h"
#include "host/siblings/light_move_handle.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer_stage.h"
#include "tests/support/near.h"
#include "tests/support/reference_balance.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/small_assets.h"

using namespace viewer;
using sorrel::Vec3;
using testing_support::near;

namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr double kTolerance = 1e-9;

/// A floor and one selected light aiming at its middle from the side.
constexpr const char* kFloorScene = R"({
  "camera": {"eye": [0, 6, 9], "target": [0, 0, 0], "width": 320, "height": 240},
  "meshes": [{"name": "floor", "shape": "plane", "size": [30, 30]}],
  "lights": [{"path": "/root/world/lgt/key", "position": [5, 4, 0], "aim": [0, 0, 0]}],
  "selection": ["/root/world/lgt/key"],
  "options": {"Enabled": true, "DefaultDistance": 4, "DefaultShadowFallDistance": 3}})";

const sorrel::PluginLibrary& plugin() {
    static const sorrel::PluginLibrary library(BEAMWRIGHT_PLUGIN_PATH);
    return library;
}

class ManipulatorFlags : public testing_support::ReferenceBalanceTest {
protected:
    static void SetUpTestSuite() {
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
        context = std::make_unique<sorrel::GLContext>(kWidth, kHeight);
    }
    static void TearDownTestSuite() { context.reset(); }
    void TearDown() override {
        session.reset();
        ReferenceBalanceTest::TearDown();
    }

    void open(const SceneDescription& scene) {
        session = std::make_unique<ViewerSession>(scene, plugin(), *context);
    }
    sorrel::Matrix keyWorld() {
        return *session->stage().scene().worldTransform("/root/world/lgt/key");
    }
    /// Counts the pixels in the shadow handles' colour.
    int shadowHandlePixels() {
        context->makeCurrent();
        session->drawFrame();
        const sorrel::RgbaImage picture = context->readPixels();
        int count = 0;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                const auto rgba = picture.at(x, y);
                count += rgba[0] > 150 && rgba[1] < 140 && rgba[2] > 230 ? 1 : 0;
            }
        return count;
    }

    static inline std::unique_ptr<sorrel::GLContext> context;
    std::unique_ptr<ViewerSession> session;
};

TEST_F(ManipulatorFlags, FixedRotationMovesWithoutTurningAndShadowShowsTheShadowHandles) {
    open(parseScene(kFloorScene, "test.json", "."));
    const sorrel::Matrix before = keyWorld();
    session->setOption(sorrel::names::kMode, sorrel::stringAttr("Fixed Rotation"));
    EXPECT_TRUE(session->stage().manipulator().flags().fixedRotation);
    session->sendEvent(sorrel::leftPress(160, 150));
    session->sendEvent(sorrel::leftRelease(160, 150));
    const sorrel::Matrix moved = keyWorld();
    EXPECT_FALSE(near(sorrel::matrixRow(moved, 3), sorrel::matrixRow(before, 3), 1e-3))
        << "the light did not move";
    for (int row = 0; row < 3; ++row)
        EXPECT_TRUE(near(sorrel::matrixRow(moved, row), sorrel::matrixRow(before, row), kTolerance))
            << "the light turned: row " << row;

    EXPECT_EQ(shadowHandlePixels(), 0) << "shadow handles outside \"Shadow\"";
    session->setOption(sorrel::names::kMode, sorrel::stringAttr("Shadow"));
    EXPECT_GT(shadowHandlePixels(), 20);
    EXPECT_EQ(session->stage().manipulator().shadowFallDistance("/root/world/lgt/key"), 3.0);
    session->setOption(sorrel::names::kMode, sorrel::stringAttr("Face - Center"));
    EXPECT_TRUE(session->stage().manipulator().flags().handleAtOrigin);
}

TEST_F(ManipulatorFlags, ALockedPositionHoldsTheLightWhereItStands) {
    sorrel::ViewerStage stage(kWidth, kHeight, {0, 6, 9}, {0, 0, 0});
    SceneDescription scene = parseScene(kFloorScene, "test.json", ".");
    vrt::Stage usdStage;
    putSceneIntoStage(scene, stage, usdStage);
    const std::string key = "/root/world/lgt/key";
    const sorrel::Matrix before = *stage.scene().worldTransform(key);
    sorrel::LightMoveCounts counts;
    bool locked = true;
    sorrel::LightMoveHandle handle(stage.delegate(), key, counts, [&locked] {
        sorrel::ManipulatorFlags flags;
        flags.positionLocked = locked;
        return flags;
    });
    const auto lightData = [] {
        return sorrel::groupAttr(
            {{sorrel::names::kLightDataPosition, sorrel::doublesAttr({1, 2, 3})},
             {sorrel::names::kLightDataDirection, sorrel::doublesAttr({0, -1, 0})}});
    };
    const std::uint64_t id = sorrel::OptionIdGenerator::instance().idOf(sorrel::names::kLightData);
    handle.setOption(id, lightData());
    EXPECT_EQ(counts.held, 1u);
    EXPECT_EQ(counts.moves, 0u);
    EXPECT_EQ(*stage.scene().worldTransform(key), before);
    locked = false;
    handle.setOption(id, lightData());
    EXPECT_EQ(counts.moves, 1u);
    EXPECT_TRUE(near(sorrel::matrixRow(*stage.scene().worldTransform(key), 3), {1, 2, 3}, 1e-9));
}

TEST_F(ManipulatorFlags, TheTourRunsOnAnAssetPlacingItsFirstLight) {
    testing_support::TempFolder folder;
    // Only the spot: the scene's one light is placed and hovered.
    const std::string gltf = testing_support::writeGltfScene(folder);
    SceneDescription scene = loadScene(gltf);
    scene.lights.resize(1);
    // Back far enough that the handle stays in view at any distance the modes give it.
    scene.camera.eye = {0, 3, 20};
    scene.camera.width = kWidth, scene.camera.height = kHeight;
    open(scene);
    const TourReport report = runTour(*session, *context, folder.path());
    EXPECT_EQ(report.light, "/root/world/lgt/Key_Light_001");
    EXPECT_EQ(report.hoveredLight, report.light);
    EXPECT_EQ(report.modes.size(), 12u);
}

TEST_F(ManipulatorFlags, TheTourRunsOnEveryFormat) {
    testing_support::TempFolder folder;
    std::vector<std::string> assets{std::string(BEAMWRIGHT_TEST_DATA) + "/set.fbx",
                                    std::string(BEAMWRIGHT_TEST_DATA) + "/set.dae"};
    for (const auto& written : testing_support::writeEveryFormat(folder))
        assets.push_back(written.path);
    for (const std::string& path : assets) {
        SceneDescription scene = loadScene(path);
        scene.camera.width = kWidth, scene.camera.height = kHeight;
        open(scene);
        const TourReport report = runTour(*session, *context, folder.path());
        EXPECT_EQ(report.light, scene.lights.front().path) << path;
        EXPECT_FALSE(report.packageLight.empty()) << path;
        session.reset();
    }
}

}  // namespace
