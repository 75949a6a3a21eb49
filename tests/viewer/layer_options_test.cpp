// What the window's panel and keys change reaches the plugin's layers as the
// host sets options: every changed option, under its name and type, and
// nothing that did not change.

#include "apps/window/layer_options.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

#include "apps/scene/scene_file.h"
#include "apps/viewer/light_poses.h"
#include "apps/viewer/scene_setup.h"
#include "apps/viewer/viewer_session.h"
#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/plugin_library.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer_stage.h"
#include "tests/support/reference_balance.h"

using namespace viewer;

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 120;
constexpr const char* kKey = "/root/world/lgt/key";

/// A floor seen from above, one selected light, placing in "Normal".
constexpr const char* kFloorScene = R"({
  "camera": {"eye": [0, 10, 0.01], "target": [0, 0, 0], "width": 160, "height": 120},
  "meshes": [{"name": "floor", "shape": "plane", "size": [20, 20]}],
  "lights": [{"path": "/root/world/lgt/key", "position": [3, 5, 3], "aim": [0, 0, 0]}],
  "selection": ["/root/world/lgt/key"],
  "options": {"Enabled": true, "Mode": "Normal", "DefaultDistance": 4.0,
              "PackageClassName": "SpotPackage"}})";

class LayerOptionsInASession : public testing_support::ReferenceBalanceTest {
protected:
    static void SetUpTestSuite() {
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
        context = std::make_unique<sorrel::GLContext>(kWidth, kHeight);
        plugin = std::make_unique<sorrel::PluginLibrary>(BEAMWRIGHT_PLUGIN_PATH);
    }
    static void TearDownTestSuite() {
        plugin.reset();
        context.reset();
    }
    void SetUp() override {
        ReferenceBalanceTest::SetUp();
        scene = parseScene(kFloorScene, "floor.json", ".");
        session = std::make_unique<ViewerSession>(scene, *plugin, *context);
        held = layerOptionsAfter(scene.options);
    }
    void TearDown() override {
        session.reset();
        ReferenceBalanceTest::TearDown();
    }

    /// Sets what changed, as the window does.
    void change(const LayerOptions& wanted) {
        setLayerOptions(session->placementLayer(), optionChanges(held, wanted));
        held = wanted;
    }

    void pressAt(int x, int y, int modifiers = 0) {
        session->sendEvent(sorrel::leftPress(x, y, modifiers));
        session->sendEvent(sorrel::leftRelease(x, y));
    }

    LightPose key() { return lightPoses(session->stage().scene()).at(kKey); }

    static inline std::unique_ptr<sorrel::GLContext> context;
    static inline std::unique_ptr<sorrel::PluginLibrary> plugin;
    SceneDescription scene;
    std::unique_ptr<ViewerSession> session;
    LayerOptions held;
};

TEST_F(LayerOptionsInASession, EachChangedOptionReachesTheLayersAndNothingElseIsSet) {
    EXPECT_TRUE(held.enabled);
    EXPECT_EQ(held.mode, "Normal");
    EXPECT_EQ(held.defaultDistance, 4.0);
    EXPECT_EQ(held.manipulatorScale, 1.0);  // the layer's own, the scene sets none
    EXPECT_EQ(held.packageClassName, "SpotPackage");
    EXPECT_TRUE(optionChanges(held, held).empty());

    LayerOptions wanted = held;
    wanted.defaultDistance = 2.5;
    change(wanted);
    pressAt(kWidth / 2, kHeight / 2);
    // "Normal" on the floor: the light stands straight above the point, that far.
    EXPECT_NEAR(key().position.y, 2.5, 1e-9);

    wanted.enabled = false;
    change(wanted);
    const LightPose before = key();
    pressAt(kWidth / 4, kHeight / 4);
    EXPECT_FALSE(differ(key(), before)) << "a disabled layer placed the light";

    wanted.enabled = true;
    wanted.packageClassName = "RigPackage";
    change(wanted);
    const LightPoses lights = lightPoses(session->stage().scene());
    pressAt(kWidth / 2, kHeight / 2, sorrel::names::kShiftModifier);
    const std::vector<std::string> added = newLights(lights, lightPoses(session->stage().scene()));
    ASSERT_EQ(added.size(), 1u);
    const sorrel::Location* package =
        session->stage().scene().find(sorrel::parentOf(added.front()));
    ASSERT_NE(package, nullptr);
    EXPECT_EQ(sorrel::readString(package->attributes.child("package.className")), "RigPackage");

    wanted.mode = "";
    change(wanted);
    const LightPose unmoved = key();
    pressAt(kWidth / 4, kHeight / 4);
    EXPECT_FALSE(differ(key(), unmoved)) << "mode \"\" placed the light";
}

}  // namespace
