// The lit viewport shows what a placement did: after "Normal" the lit spot
// sits under the cursor, after "Reflection" the highlight does, the light's
// centre of interest lands on the cursor's point in both, and a light's
// shadow falls on the floor on the side away from it. And the tour refuses to
// pass when the handle shaders did not build.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <memory>

#include "apps/scene/scene_file.h"
#include "apps/viewer/tour.h"
#include "apps/viewer/viewer_session.h"
#include "host/core/plugin_library.h"
#include "host/render/scene_renderer.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer/ray_cast.h"
#include "host/viewer_stage.h"
#include "tests/support/reference_balance.h"
#include "tests/support/temp_folder.h"

using namespace viewer;

namespace {

constexpr int kWidth = 320;
constexpr int kHeight = 240;
/// How far the brightest point may lie from the cursor, in pixels.
constexpr double kCursorTolerance = 3.0;
/// Pixels within this many levels of the brightest count as the brightest point.
constexpr int kPeakLevels = 2;
/// The part of the unit sphere's outline that its facets surely cover.
constexpr double kSphereInside = 0.97;

/// A sphere on a floor, one selected spot light; the material and mode vary.
std::string sphereScene(const std::string& material, const std::string& mode) {
    return R"({"camera": {"eye": [0, 2, 8], "target": [0, 1, 0], "fov": 35, "width": 320, "height": 240},
      "meshes": [{"name": "floor", "shape": "plane", "size": [30, 30],
                  "material": {"color": [0.2, 0.2, 0.2], "specular": 0}},
                 {"name": "sphere", "shape": "sphere", "radius": 1, "transform": {"translate": [0, 1, 0]},
                  "material": )" +
           material + R"(}],
      "lights": [{"path": "/root/world/lgt/key", "position": [5, 5, 5], "aim": [0, 0, 0],
                  "cone": {"angle": 30, "falloff": 10}}],
      "selection": ["/root/world/lgt/key"],
      "options": {"Enabled": true, "DefaultDistance": 4, "Mode": ")" +
           mode + R"("}})";
}

const sorrel::PluginLibrary& plugin() {
    static const sorrel::PluginLibrary library(BEAMWRIGHT_PLUGIN_PATH);
    return library;
}

double luminance(const std::array<std::uint8_t, 4>& rgba) {
    return 0.2126 * rgba[0] + 0.7152 * rgba[1] + 0.0722 * rgba[2];
}

class LitViewport : public testing_support::ReferenceBalanceTest {
protected:
    static void SetUpTestSuite() {
        setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
        context = std::make_unique<sorrel::GLContext>(kWidth, kHeight);
    }
    static void TearDownTestSuite() { context.reset(); }

    void open(const std::string& text) {
        session =
            std::make_unique<ViewerSession>(parseScene(text, "test.json", "."), plugin(), *context);
        session->renderer().settings.lightGizmos = false;
    }
    void TearDown() override {
        session.reset();
        ReferenceBalanceTest::TearDown();
    }

    /// The viewport as the host shades it, without the plugin's layers.
    sorrel::RgbaImage shade() {
        context->makeCurrent();
        session->renderer().draw(session->viewport(), session->stage().scene(), session->lights());
        return context->readPixels();
    }

    /// The centre of the brightest pixels of the unit sphere at (0, 1, 0), x
    /// and y from the top left.
    std::array<double, 2> brightestOfSphere() {
        const sorrel::RgbaImage picture = shade();
        std::vector<std::pair<int, int>> on;
        double peak = 0.0;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                // Inside the sphere's outline, short of its faceted rim.
                const auto ray = sorrel::rayThroughPixel(session->viewport(), x + 0.5, y + 0.5);
                const sorrel::Vec3 toCentre = sorrel::Vec3{0, 1, 0} - ray->origin;
                const double along = sorrel::dot(toCentre, ray->direction);
                const double miss = sorrel::length(toCentre - ray->direction * along);
                if (miss > kSphereInside) continue;
                on.emplace_back(x, y);
                peak = std::max(peak, luminance(picture.at(x, y)));
            }
        }
        double sumX = 0, sumY = 0, count = 0;
        for (const auto& [x, y] : on) {
            if (luminance(picture.at(x, y)) < peak - kPeakLevels) continue;
            sumX += x, sumY += y, ++count;
        }
        return {sumX / count, sumY / count};
    }

    void pressAt(int x, int y) {
        session->sendEvent(sorrel::leftPress(x, y));
        session->sendEvent(sorrel::leftRelease(x, y));
    }

    static inline std::unique_ptr<sorrel::GLContext> context;
    std::unique_ptr<ViewerSession> session;
};

TEST_F(LitViewport, AfterNormalTheLitSpotAndAfterReflectionTheHighlightSitUnderTheCursor) {
    const struct {
        const char* mode;
        const char* material;
    } cases[] = {
        // Matte: the brightest point is where the light faces the surface squarely.
        {"Normal", R"({"color": [0.8, 0.8, 0.8], "specular": 0})"},
        // Dark and glossy: the brightest point is the light's reflection.
        {"Reflection", R"({"color": [0.05, 0.05, 0.05], "specular": 1, "shininess": 400})"},
    };
    for (const auto& placement : cases) {
        for (const std::array<int, 2> cursor : {std::array<int, 2>{140, 95}, {185, 120}}) {
            open(sphereScene(placement.material, placement.mode));
            pressAt(cursor[0], cursor[1]);
            // The light's centre of interest, where its handle stands, is the cursor's point.
            const sorrel::SceneLight key = session->lights().front();
            const sorrel::PickArea aim = sorrel::pixelOfPoint(
                session->viewport(), key.position + key.direction * key.centerOfInterest);
            EXPECT_LE(std::hypot(aim.x + 0.5 - cursor[0], aim.y + 0.5 - cursor[1]),
                      kCursorTolerance)
                << placement.mode << ": centre of interest at (" << aim.x << ", " << aim.y << ")";
            const auto [x, y] = brightestOfSphere();
            EXPECT_LE(std::hypot(x + 0.5 - cursor[0], y + 0.5 - cursor[1]), kCursorTolerance)
                << placement.mode << " at (" << cursor[0] << ", " << cursor[1]
                << "): brightest at (" << x << ", " << y << ")";
        }
    }
}

TEST_F(LitViewport, ALightsShadowFallsOnTheFloorAwayFromIt) {
    open(R"({"camera": {"eye": [0, 6, 9], "target": [0, 0, 0], "width": 320, "height": 240},
      "meshes": [{"name": "floor", "shape": "plane", "size": [30, 30]},
                 {"name": "block", "shape": "box", "size": [1, 2, 1], "transform": {"translate": [0, 1, 0]}}],
      "lights": [{"path": "/root/world/lgt/key", "position": [5, 4, 0], "aim": [0, 0, 0],
                  "cone": {"angle": 80, "falloff": 5}, "shadows": true}]})");
    const auto floorLevel = [this](double x) {
        const sorrel::PickArea pixel = sorrel::pixelOfPoint(session->viewport(), {x, 0.0, 0.0});
        return luminance(shade().at(pixel.x, pixel.y));
    };
    const double awayWith = floorLevel(-1.5), nearWith = floorLevel(1.5);
    session->stage().scene().meshes().erase("block");
    const double awayWithout = floorLevel(-1.5), nearWithout = floorLevel(1.5);
    // The ambient light keeps a shadow from going black.
    EXPECT_LT(awayWith, 0.7 * awayWithout) << "no shadow behind the block";
    EXPECT_NEAR(nearWith, nearWithout, 0.05 * nearWithout) << "a shadow on the lit side";
}

TEST_F(LitViewport, TheTourFailsWhenTheHandleShadersAreMissingOrDoNotBuild) {
    testing_support::TempFolder root;
    const std::string stem = root.path() + "/plugins/Resources/Core/Shaders/TransformManipulators";
    setenv("SORREL_ROOT", root.path().c_str(), /* overwrite = */ 1);
    open(sphereScene(R"({"specular": 0})", "Normal"));
    try {
        runTour(*session, *context, root.path());
        ADD_FAILURE() << "the tour passed without shaders";
    } catch (const TourFailure& failure) {
        EXPECT_EQ(failure.what(), "the handle shaders are missing: no " + stem +
                                      "/Manipulators.vert (SORREL_ROOT must name the folder "
                                      "above plugins/)");
    }

    std::filesystem::create_directories(stem);
    for (const char* extension : {"vert", "geom", "frag"})
        root.write(
            std::string("plugins/Resources/Core/Shaders/TransformManipulators/Manipulators.") +
                extension,
            "#version 440\nthis is no shader\n");
    open(sphereScene(R"({"specular": 0})", "Normal"));
    EXPECT_THROW(runTour(*session, *context, root.path()), TourFailure);
    setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
}

}  // namespace
