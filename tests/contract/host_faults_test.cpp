// Beamwright.so in a host that answers less than it is asked: a host table
// refused, a lookup that finds nothing, a world transform that is missing or
// of the wrong type, pick ids of 0. Each time the plugin takes its fallback,
// never crashes and leaks no reference.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "host/core/names.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer/viewer_faults.h"
#include "host/viewer_stage.h"
#include "tests/support/light_attributes.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;
using sorrel::mouseEvent;
using sorrel::names::kLeftButton;
using sorrel::names::kShiftModifier;

namespace {

constexpr std::int32_t kSize = 160;  // pixels, both sides
constexpr const char* kKey = "/root/world/lgt/key";
constexpr const char* kMover = "/root/world/lgt/mover";
constexpr std::array<std::uint8_t, 4> kKeyColour = {255, 0, 255, 255};
constexpr double kKeyDistance = 3.0;
const Vec3 kEye = {0, 6, 8};
const Vec3 kKeyPosition = {3, 2, 0};
/// Where the selected light is placed from: a point of the floor.
const Vec3 kFloorPoint = {0, 0, 3};
constexpr const char* kCameraMessage =
    "This ViewportCamera plugin requires version 2 of the host API. A more recent version of "
    "Sorrel is probably required by this plugin.";

/// What a host sees of one short session of the plugin.
struct Seen {
    std::optional<PickArea> keyDrawnAt;  // a pixel in the key light's colour
    bool keyPicked = false;              // a picker pass there finds the key light
    bool hoverRedrew = false;            // a move there asks for a redraw
    bool moverMoved = false;             // a left press moved the selected light
    bool packageMade = false;            // a Shift press made a light package
    int cameraRefusals = 0;              // entries that handed the camera error to the host
};

/// A light along -x at `position` (world space).
Matrix pointingLeft(const Vec3& position) {
    return {0, 0, -1, 0, 0, 1, 0, 0, 1, 0, 0, 0, position.x, position.y, position.z, 1};
}

class HostFaults : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
        gl = std::make_unique<GLContext>(kSize, kSize);
    }
    void TearDown() override {
        viewerFaults().clear();
        PluginHost::instance().allowAll();
        gl.reset();
        PluginContractTest::TearDown();
    }

    /// Builds a viewer with the faults set now, refuses `table` (when given)
    /// once the viewer stands, uses the plugin as an artist would and tears the
    /// viewer down, leaking no reference. An entry that throws the camera error
    /// is counted and the session goes on.
    Seen session(const char* table = nullptr) {
        const std::int64_t references = AttributeModel::instance().liveReferences();
        const Seen seen = use(table);
        EXPECT_EQ(AttributeModel::instance().liveReferences(), references) << "references leaked";
        return seen;
    }

    Seen use(const char* table) {
        Seen seen;
        const auto attempt = [&seen](const std::function<void()>& step) {
            try {
                step();
            } catch (const std::runtime_error& error) {
                EXPECT_EQ(std::string(error.what()), kCameraMessage);
                ++seen.cameraRefusals;
            }
        };
        ViewerStage stage(kSize, kSize, kEye, {0, 0, 0}, &testing_support::plugin());
        if (table != nullptr) PluginHost::instance().refuse(table);
        Picking picking(stage.viewport(), *gl);
        picking.install();
        stage.scene().meshes().emplace("floor", Mesh::plane(20, 20, 4));
        ViewerDelegate& delegate = stage.delegate();
        for (const char* group : {"/root", "/root/world", "/root/world/lgt"})
            delegate.putLocation(group, testing_support::groupAttributes());
        delegate.putLocation(
            kKey,
            testing_support::lightAttributes(
                kKeyDistance, {{"viewer.default.drawOptions.color", floatsAttr({1, 0, 1})}}),
            pointingLeft(kKeyPosition));
        delegate.putLocation(kMover, testing_support::lightAttributes(1.0),
                             translationMatrix(-3, 2, 0));
        stage.select({kMover});

        LayerObject& handles = *stage.viewport().pluginLayer(sorrel::names::kHandlesLayer);
        LayerObject& placement = *stage.viewport().pluginLayer(sorrel::names::kPlacementLayer);
        placement.setOption(sorrel::names::kEnabled, intAttr(1));
        placement.setOption(sorrel::names::kMode, stringAttr("Normal"));

        attempt([&] {
            gl->makeCurrent();
            glClearColor(0, 0, 0, 0);
            glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
            handles.draw();
            const RgbaImage image = gl->readPixels();
            for (std::int32_t y = 0; y < kSize && !seen.keyDrawnAt; ++y)
                for (std::int32_t x = 0; x < kSize && !seen.keyDrawnAt; ++x)
                    if (image.at(x, y) == kKeyColour) seen.keyDrawnAt = PickArea{x, y};
        });
        const PickArea key = seen.keyDrawnAt.value_or(pixelOfPoint(stage.viewport(), kKeyPosition));
        attempt([&] {
            const std::vector<PickHit> hits = picking.pickAll(key);
            seen.keyPicked = hits.size() == 1 && hits[0].attribute.child("location") &&
                             hits[0].attribute.child("location").stringValue() == kKey;
        });
        attempt([&] {
            const std::uint64_t redraws = stage.viewport().dirtyCount();
            handles.event(mouseEvent(sorrel::names::kMouseMove, key.x, key.y));
            seen.hoverRedrew = stage.viewport().dirtyCount() > redraws;
        });

        const PickArea floor = pixelOfPoint(stage.viewport(), kFloorPoint);
        const Matrix before = stage.scene().find(kMover)->local;
        attempt([&] {
            placement.event(mouseEvent(sorrel::names::kMouseButtonPress, floor.x, floor.y,
                                       {kLeftButton, kLeftButton}));
        });
        seen.moverMoved = stage.scene().find(kMover)->local != before;
        const std::size_t locations = stage.scene().locations().size();
        attempt([&] {
            placement.event(mouseEvent(sorrel::names::kMouseButtonPress, floor.x, floor.y,
                                       {kLeftButton, kLeftButton, kShiftModifier}));
        });
        seen.packageMade = stage.scene().locations().size() > locations;
        gl->makeCurrent();
        return seen;
    }

    std::unique_ptr<GLContext> gl;
};

/// Everything works.
constexpr bool kAll[5] = {true, true, true, true, true};

void expectSeen(const Seen& seen, const bool (&expected)[5], const std::string& fault) {
    EXPECT_EQ(seen.keyDrawnAt.has_value(), expected[0]) << fault << ": key drawn";
    EXPECT_EQ(seen.keyPicked, expected[1]) << fault << ": key picked";
    EXPECT_EQ(seen.hoverRedrew, expected[2]) << fault << ": hover";
    EXPECT_EQ(seen.moverMoved, expected[3]) << fault << ": selected light placed";
    EXPECT_EQ(seen.packageMade, expected[4]) << fault << ": package made";
}

TEST_F(HostFaults, ALookupThatFindsNothingIsPassedOver) {
    expectSeen(session(), kAll, "no fault");
    const struct {
        Lookup lookup;
        const char* name;
        bool expected[5];
    } cases[] = {
        // A layer without a viewport reaches nothing at all.
        {Lookup::kViewport, "viewport", {false, false, false, false, false}},
        // The host answers a missing camera's origin as the world's origin.
        {Lookup::kCamera, "camera", {true, true, true, true, true}},
        // Without the delegate no component and no package command; the
        // manipulator hangs off the viewport.
        {Lookup::kViewerDelegate, "viewer delegate", {false, false, false, true, false}},
        {Lookup::kComponent, "component", {false, false, false, true, true}},
        // "Enabled" never reaches the handles layer, and no snapping answers.
        {Lookup::kLayer, "layers", {false, false, false, false, false}},
        {Lookup::kManipulator, "manipulator", {true, true, true, false, true}},
        {Lookup::kHandle, "manipulator handles", {true, true, true, false, true}},
    };
    for (const auto& fault : cases) {
        viewerFaults().nullLookups = {fault.lookup};
        expectSeen(session(), fault.expected, fault.name);
    }
}

TEST_F(HostFaults, AMissingOrWronglyTypedWorldTransformIsTheIdentity) {
    for (const WorldTransformAnswer answer :
         {WorldTransformAnswer::kNothing, WorldTransformAnswer::kWrongType}) {
        viewerFaults().worldTransform = answer;
        const Seen seen = session();
        ASSERT_TRUE(seen.keyDrawnAt);
        // At the identity the key light stands at the origin looking down -z.
        gl->makeCurrent();
        ViewerStage stage(kSize, kSize, kEye, {0, 0, 0});
        const PickArea atIdentity = pixelOfPoint(stage.viewport(), {0, 0, -kKeyDistance});
        const PickArea placed = pixelOfPoint(stage.viewport(), {0, 2, 0});
        const auto distance = [&seen](const PickArea& to) {
            return std::hypot(seen.keyDrawnAt->x - to.x, seen.keyDrawnAt->y - to.y);
        };
        EXPECT_LT(distance(atIdentity), distance(placed)) << static_cast<int>(answer);
    }
}

TEST_F(HostFaults, PickIdsOfZeroPickNothing) {
    viewerFaults().zeroPickIds = true;
    expectSeen(session(), {true, false, false, true, true}, "pick ids of 0");
}

TEST_F(HostFaults, TheCameraErrorReachesTheHostThroughTheEntryAndLeavesNoStateBehind) {
    const Seen seen = session("ViewportCameraHost");
    EXPECT_EQ(seen.cameraRefusals, 3) << "draw, the picker pass and the hover's picker pass";
    expectSeen(seen, {false, false, false, true, true}, "camera table refused");
    GLint attributeDepth = -1;
    glGetIntegerv(GL_ATTRIB_STACK_DEPTH, &attributeDepth);
    EXPECT_EQ(attributeDepth, 0) << "the layer threw before it pushed any GL state";
}

// Each kind of wrapper asks the host for the shared tables once per process,
// at its first construction, so each table is refused in a process of its own
// from the first wrapper on.
TEST_F(HostFaults, EveryHostTableRefusedFromTheFirstWrapperOnIsSurvived) {
    const struct {
        const char* table;
        bool expected[5];
    } cases[] = {
        {"PluginManager", {true, true, true, true, true}},
        {"Logging", {true, true, true, true, true}},
        {"OptionIdGeneratorHost", {true, true, true, true, true}},
        {"AttributeHost", {true, true, true, true, true}},
        // The layers hold their tables from before; a layer's wrapper cannot pick.
        {"ViewportLayerHost", {true, true, false, true, true}},
        {"ViewportHost", {false, false, false, false, false}},
        {"ViewportCameraHost", {false, false, false, true, true}},
        {"ViewerDelegateHost", {false, false, false, true, false}},
        {"ViewerDelegateComponentHost", {true, true, true, true, true}},
        {"ManipulatorHost", {true, true, true, false, true}},
        {"ManipulatorHandleHost", {true, true, true, true, true}},
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const auto& fault : cases) {
        EXPECT_EXIT(
            {
                const Seen seen = session(fault.table);
                expectSeen(seen, fault.expected, fault.table);
                PluginHost::instance().allowAll();
                std::_Exit(::testing::Test::HasFailure() ? 1 : 0);
            },
            ::testing::ExitedWithCode(0), "")
            << fault.table;
    }
}

}  // namespace
