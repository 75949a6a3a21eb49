// The window's camera against the host's own projection: orbiting keeps the
// target and distance, panning makes the scene follow the pointer pixel for
// pixel, dollying closes in without arriving, and framing brings every point
// into view. Seeded random cameras.

#include "apps/window/orbit_camera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "host/viewer/picking.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"

using sorrel::Vec3;
using viewer::OrbitCamera;

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr int kTrials = 200;
constexpr int kFramedPoints = 12;
constexpr double kTolerance = 1e-9;
/// Pixels: pixelOfPoint answers whole pixels.
constexpr double kPixelTolerance = 1.0;

class OrbitCameraTest : public ::testing::Test {
protected:
    OrbitCamera randomCamera() {
        OrbitCamera camera;
        camera.target = {between(-10.0, 10.0), between(-10.0, 10.0), between(-10.0, 10.0)};
        camera.distance = between(2.0, 30.0);
        camera.yawDegrees = between(-180.0, 180.0);
        camera.pitchDegrees = between(-80.0, 80.0);
        camera.fovDegrees = between(30.0, 70.0);
        return camera;
    }

    double between(double low, double high) { return low + (high - low) * unit(random); }

    /// The host's viewport looking as `camera` does.
    sorrel::Viewport& look(const OrbitCamera& camera) {
        const Vec3 eye = viewer::eyeOf(camera);
        const double from[3] = {eye.x, eye.y, eye.z};
        const double at[3] = {camera.target.x, camera.target.y, camera.target.z};
        viewport.lookAt(from, at, camera.fovDegrees);
        return viewport;
    }

    std::mt19937 random{20261123};
    std::uniform_real_distribution<double> unit{0.0, 1.0};
    sorrel::ViewerDelegate delegate;
    sorrel::Viewport viewport{delegate, kWidth, kHeight};
};

TEST_F(OrbitCameraTest, LookingFromAnEyeStandsThereAndOrbitingKeepsTargetAndDistance) {
    for (int trial = 0; trial < kTrials; ++trial) {
        const OrbitCamera drawn = randomCamera();
        const Vec3 eye = viewer::eyeOf(drawn);
        const OrbitCamera camera =
            viewer::orbitCameraLookingAt(eye, drawn.target, drawn.fovDegrees);
        EXPECT_NEAR(sorrel::length(viewer::eyeOf(camera) - eye), 0.0, kTolerance);

        const double dx = between(-100.0, 100.0);
        const double dy = between(-100.0, 100.0);
        const OrbitCamera turned = viewer::orbited(camera, dx, dy);
        const Vec3 moved = viewer::eyeOf(turned);
        EXPECT_NEAR(sorrel::length(turned.target - camera.target), 0.0, kTolerance);
        EXPECT_NEAR(sorrel::length(moved - camera.target), camera.distance, kTolerance);
        // A drag to the right takes the eye to its left: the scene turns with the pointer.
        const Vec3 forward = sorrel::normalizedOrZero(camera.target - eye);
        const Vec3 right = sorrel::normalizedOrZero(sorrel::cross(forward, {0.0, 1.0, 0.0}));
        const OrbitCamera sideways = viewer::orbited(camera, std::abs(dx) + 1.0, 0.0);
        EXPECT_LT(sorrel::dot(viewer::eyeOf(sideways) - eye, right), 0.0);
    }
    // Dragging far down never turns the camera over the top.
    const OrbitCamera steep = viewer::orbited(randomCamera(), 0.0, 10000.0);
    const Vec3 offset = viewer::eyeOf(steep) - steep.target;
    EXPECT_GT(std::hypot(offset.x, offset.z), 0.01 * steep.distance);
    EXPECT_GT(offset.y, 0.0);
}

TEST_F(OrbitCameraTest, PanningMovesTheTargetsPixelWithThePointer) {
    for (int trial = 0; trial < kTrials; ++trial) {
        const OrbitCamera camera = randomCamera();
        const sorrel::PickArea before = sorrel::pixelOfPoint(look(camera), camera.target);
        const double dx = between(-50.0, 50.0);
        const double dy = between(-50.0, 50.0);
        const OrbitCamera moved = viewer::panned(camera, dx, dy, kHeight);
        EXPECT_NEAR(moved.distance, camera.distance, kTolerance);
        const sorrel::PickArea after = sorrel::pixelOfPoint(look(moved), camera.target);
        EXPECT_NEAR(after.x - before.x, dx, kPixelTolerance) << "trial " << trial;
        EXPECT_NEAR(after.y - before.y, dy, kPixelTolerance) << "trial " << trial;
    }
}

TEST_F(OrbitCameraTest, DollyingClosesInAlongTheViewAndNeverArrives) {
    const OrbitCamera camera = randomCamera();
    const OrbitCamera closer = viewer::dollied(camera, 3.0);
    EXPECT_LT(closer.distance, camera.distance);
    EXPECT_GT(viewer::dollied(camera, -3.0).distance, camera.distance);
    const Vec3 direction = sorrel::normalizedOrZero(viewer::eyeOf(camera) - camera.target);
    const Vec3 closerDirection = sorrel::normalizedOrZero(viewer::eyeOf(closer) - camera.target);
    EXPECT_NEAR(sorrel::length(direction - closerDirection), 0.0, kTolerance);
    EXPECT_GT(viewer::dollied(camera, 1e6).distance, 0.0);
}

TEST_F(OrbitCameraTest, FramingBringsEveryPointIntoViewLookingTheSameWay) {
    for (int trial = 0; trial < kTrials; ++trial) {
        const OrbitCamera camera = randomCamera();
        std::vector<Vec3> points;
        const Vec3 centre{between(-20.0, 20.0), between(0.0, 10.0), 0.0};
        const double spread = between(0.5, 20.0);
        for (int i = 0; i < kFramedPoints; ++i)
            points.push_back(centre + Vec3{between(-spread, spread), between(-spread, spread),
                                           between(-spread, spread)});
        const OrbitCamera framed =
            viewer::framed(camera, points, static_cast<double>(kWidth) / kHeight);
        EXPECT_EQ(framed.yawDegrees, camera.yawDegrees);
        EXPECT_EQ(framed.pitchDegrees, camera.pitchDegrees);
        sorrel::Viewport& view = look(framed);
        for (const Vec3& point : points) {
            const sorrel::PickArea pixel = sorrel::pixelOfPoint(view, point);
            EXPECT_TRUE(pixel.x >= 0 && pixel.x < kWidth && pixel.y >= 0 && pixel.y < kHeight)
                << "trial " << trial << ": a point lands at (" << pixel.x << ", " << pixel.y << ")";
        }
    }
}

}  // namespace
