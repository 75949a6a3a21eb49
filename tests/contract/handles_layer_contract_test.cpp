// The handles layer from end to end in the stand-in viewer: loaded from
// Beamwright.so, switched on through the placement layer, drawing the lights
// that the light component lists, and hovering and picking through the host's
// picking machinery.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "host/core/names.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer_stage.h"
#include "tests/support/light_attributes.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;

namespace {

constexpr std::int32_t kSize = 200;  // pixels, both sides
constexpr const char* kKey = "/root/lights/key";
constexpr const char* kFill = "/root/lights/fill";
constexpr std::array<std::uint8_t, 4> kKeyColour = {255, 0, 255, 255};
constexpr std::array<std::uint8_t, 4> kFillColour = {0, 255, 255, 255};
constexpr std::array<std::uint8_t, 4> kNothing = {0, 0, 0, 0};
/// From a handle's tip into its head, pixels (the head opens to the right at scale 1).
constexpr std::int32_t kIntoHead = 6;
constexpr float kByteMax = 255.0f;

/// A light at `position` pointing along -x, its centre of interest `distance` ahead.
Matrix pointingLeft(const Vec3& position) {
    return {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, position.x, position.y, position.z, 1};
}

AttrRef light(double distance, const std::array<std::uint8_t, 4>& colour) {
    const auto unit = [](std::uint8_t byte) { return byte / kByteMax; };
    return testing_support::lightAttributes(
        distance, {{"viewer.default.drawOptions.color",
                    floatsAttr({unit(colour[0]), unit(colour[1]), unit(colour[2])})}});
}

AttrRef mouseMove(const PickArea& pixel) {
    return sorrel::mouseEvent(sorrel::names::kMouseMove, pixel.x, pixel.y);
}

class HandlesInViewer : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
        gl = std::make_unique<GLContext>(kSize, kSize);
        stage = std::make_unique<ViewerStage>(kSize, kSize, Vec3{0, 0, 8}, Vec3{0, 0, 0},
                                              &testing_support::plugin());
        picking = std::make_unique<Picking>(stage->viewport(), *gl);
        picking->install();

        stage->delegate().putLocation("/root", testing_support::groupAttributes());
        stage->delegate().putLocation("/root/lights", testing_support::groupAttributes());
        stage->delegate().putLocation(kKey, light(3.0, kKeyColour), pointingLeft({3, 0, 0}));
        stage->delegate().putLocation(kFill, light(2.0, kFillColour), pointingLeft({2, 2, 0}));
    }
    void TearDown() override {
        // The layers give their GL objects up while the context still exists.
        picking.reset();
        stage.reset();
        gl.reset();
        PluginContractTest::TearDown();
    }

    LayerObject& handles() { return *stage->viewport().pluginLayer(sorrel::names::kHandlesLayer); }
    LayerObject& placement() {
        return *stage->viewport().pluginLayer(sorrel::names::kPlacementLayer);
    }
    /// A pixel inside the head of the handle whose tip lies on `centreOfInterest`.
    PickArea headOf(const Vec3& centreOfInterest) const {
        PickArea pixel = pixelOfPoint(stage->viewport(), centreOfInterest);
        pixel.x += kIntoHead;
        pixel.y += 1;
        return pixel;
    }
    RgbaImage drawn() {
        gl->makeCurrent();
        glClearColor(0.0f, 0.0f, 0.0f, 0.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        handles().draw();
        return gl->readPixels();
    }
    std::string pickedAt(const PickArea& pixel) {
        const std::vector<PickHit> hits = picking->pickAll(pixel);
        return hits.size() == 1 ? hits[0].attribute.child("location").stringValue() : "";
    }
    std::unique_ptr<GLContext> gl;
    std::unique_ptr<ViewerStage> stage;
    std::unique_ptr<Picking> picking;
};

TEST_F(HandlesInViewer, LightsOfTheSceneAreDrawnPickedHoveredAndFollowed) {
    const PickArea keyHead = headOf({0, 0, 0});
    const PickArea fillHead = headOf({0, 2, 0});
    EXPECT_EQ(drawn().at(keyHead.x, keyHead.y), kNothing) << "the layer starts switched off";
    EXPECT_EQ(handles().getOption(sorrel::names::kIsUILayer).intValue(), 1);
    AttrRef untouched = stringAttr("untouched");
    float depth = 2.0f;
    EXPECT_FALSE(handles().pick(keyHead.x, keyHead.y, 1, 1, false, untouched, &depth))
        << "the layer takes part in picking only by drawing";

    // The host sets both layers of the plugin through the placement layer.
    placement().setOption(sorrel::names::kEnabled, intAttr(1));
    RgbaImage image = drawn();
    EXPECT_EQ(image.at(keyHead.x, keyHead.y), kKeyColour);
    EXPECT_EQ(image.at(fillHead.x, fillHead.y), kFillColour);
    EXPECT_EQ(pickedAt(keyHead), kKey);
    EXPECT_EQ(pickedAt(fillHead), kFill);

    const std::uint64_t redraws = stage->viewport().dirtyCount();
    EXPECT_FALSE(handles().event(mouseMove(keyHead))) << "the layer never uses an event up";
    EXPECT_FALSE(handles().event(mouseMove(keyHead)));
    EXPECT_EQ(stage->viewport().dirtyCount(), redraws + 1) << "one redraw for the new hover";
    EXPECT_EQ(drawn().at(keyHead.x, keyHead.y), kKeyColour) << "a hovered light keeps its colour";

    // Handles follow the scene: a moved group carries its lights, a removed one takes them.
    stage->delegate().moveLocation("/root/lights", translationMatrix(0, -2, 0));
    EXPECT_EQ(drawn().at(keyHead.x, keyHead.y), kFillColour);
    EXPECT_EQ(pickedAt(keyHead), kFill);
    stage->delegate().removeLocation("/root/lights");
    EXPECT_EQ(drawn().at(keyHead.x, keyHead.y), kNothing);
    EXPECT_EQ(pickedAt(keyHead), "");
}

}  // namespace
