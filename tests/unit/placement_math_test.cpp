// Placement formulas of each mode, the rotation of a new package in degrees,
// Euler angles and the labels of option "Mode".

#include "placement/placement_math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string_view>

#include "tests/support/near.h"

using namespace Tessera::Sorrel::ViewerUtils;
using testing_support::near;

namespace {

constexpr double kPrintedPrecision = 1e-5;
constexpr double kTolerance = 1e-12;
using Mode = PlacementMode;

void expectPose(const std::optional<LightPose>& pose, const Vec3d& position, const Vec3d& direction,
                double tolerance = kPrintedPrecision) {
    ASSERT_TRUE(pose.has_value());
    EXPECT_TRUE(near(pose->position, position, tolerance));
    EXPECT_TRUE(near(pose->direction, direction, tolerance));
}

/// The row-vector rotation by `a` radians about one axis (0 x, 1 y, 2 z), as
/// the textbook writes it.
Mat4d about(int axis, double a) {
    const int i = (axis + 1) % 3;
    const int j = (axis + 2) % 3;
    Mat4d m;
    m[i][i] = m[j][j] = std::cos(a);
    m[i][j] = std::sin(a);
    m[j][i] = -std::sin(a);
    return m;
}

TEST(RotationDegrees, TurnsTheRestDirectionOntoTheGivenOne) {
    const double diagonal = 1.0 / std::sqrt(2.0);
    const double corner = 1.0 / std::sqrt(3.0);
    const struct {
        Vec3d direction;
        Vec3d degrees;
    } cases[] = {
        {{0, 0, -1}, {0, 0, 0}},
        {{1, 0, 0}, {0, -90, 0}},
        {{-1, 0, 0}, {0, 90, 0}},
        {{diagonal, 0, -diagonal}, {0, -45, 0}},
        {{corner, -corner, -corner}, {-35.26439, -45, 0}},
        {{0, 0, 1}, {180, 0, -180}},
        {{0, -1, 0}, {90, 0, -180}},
        {{0, 1, 0}, {-90, 0, -180}},
    };
    for (const auto& c : cases) {
        EXPECT_TRUE(near(rotationDegreesForDirection(c.direction), c.degrees, kPrintedPrecision));
        const Mat4d r = rotationFromTo({0, 0, -1}, c.direction, {0, 1, 0});
        EXPECT_TRUE(near(Vec3d{-r[2][0], -r[2][1], -r[2][2]}, c.direction, kTolerance));
    }
    // A zero direction turns as (0, 0, 1) does.
    EXPECT_TRUE(near(rotationDegreesForDirection({}), {180, 0, -180}, kPrintedPrecision));
}

TEST(EulerAngles, RotateAndExtractAgreeWithRotationsAboutEachAxis) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> wide(-3.1, 3.1);
    std::uniform_real_distribution<double> narrow(-1.5, 1.5);
    std::uniform_real_distribution<double> element(-5.0, 5.0);
    for (int n = 0; n < 1000; ++n) {
        const Vec3d angles{wide(random), narrow(random), wide(random)};
        const Mat4d rotation =
            multiply(multiply(about(0, angles.x), about(1, angles.y)), about(2, angles.z));
        Mat4d m;
        for (int i = 0; i < 16; ++i) m.data()[i] = element(random);
        const Mat4d expected = multiply(rotation, m);
        rotateEuler(m, angles);
        for (int i = 0; i < 16; ++i) EXPECT_NEAR(m.data()[i], expected.data()[i], 1e-9);

        EulerAngles extracted(true, false, true, 0);
        extractEuler(extracted, rotation);
        EXPECT_TRUE(near(toXyzAngles(extracted), angles, 1e-9));
    }
}

TEST(PlaceLight, AimingModesAimAtThePointAndSurfaceModesStandOnIt) {
    const Vec3d up{0, 1, 0};
    const Vec3d eye{-1, 1, 0};
    expectPose(placeLight(Mode::ModeNormal, {1, 2, 3}, up, {}, 5.0), {1, 7, 3}, {0, -1, 0});
    expectPose(placeLight(Mode::ModeReflection, {}, up, eye, 2.0), {1.41421, 1.41421, 0},
               {-0.70711, -0.70711, 0});
    expectPose(placeLight(Mode::ModeSpecular, {}, up, eye, 2.0), {0.76537, 1.84776, 0},
               {-0.38268, -0.92388, 0});
    const Vec3d point{3, -2, 1};
    expectPose(placeLight(Mode::ModeNormal, point, {}, {}, 5.0), point, {});  // a zero normal

    // Looking straight down the normal, the aiming formulas agree.
    const Vec3d slanted = normalizedOrZero({1, 2, 2});
    for (const Mode mode :
         {Mode::ModeFixedRotation, Mode::ModeShadow, Mode::ModeReflection, Mode::ModeSpecular}) {
        expectPose(placeLight(mode, point, slanted, point + slanted * 7.0, 4.0),
                   point + slanted * 4.0, -slanted, kTolerance);
    }
    for (int value = 7; value <= 11; ++value)
        expectPose(placeLight(static_cast<Mode>(value), point, slanted, eye, 5.0), point, slanted,
                   0.0);
    EXPECT_FALSE(placeLight(Mode::ModeNone, point, slanted, eye, 5.0));
    EXPECT_FALSE(placeLight(Mode::ModeEditLightMaterials, point, slanted, eye, 5.0));
}

TEST(PlacementModeLabels, MatchExactlyAndCaseSensitively) {
    EXPECT_EQ(placementModeFromLabel("Edit Light Materials"), Mode::ModeEditLightMaterials);
    EXPECT_EQ(placementModeFromLabel("Face - Center - Oriented to Normal"),
              Mode::ModeFaceCenterOriented);
    const std::string_view others[] = {"normal",        "",
                                       "Normal ",       "Face - Center - Oriented",
                                       "Object Center", std::string_view("Shadow\0", 7)};
    for (const std::string_view other : others)
        EXPECT_EQ(placementModeFromLabel(other), Mode::ModeNone) << other;
}

}  // namespace
