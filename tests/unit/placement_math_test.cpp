// Placement formulas of each mode, the rotation of a new package in degrees,
// Euler angles and the labels of option "Mode".

#include "placement/placement_math.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr double kPrintedPrecision = 1e-5;
constexpr double kTolerance = 1e-12;

void expectNear(const Vec3d& actual, const Vec3d& expected, double tolerance) {
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
}

/// Row-vector rotations about one axis each, as the textbook writes them.
Mat4d aboutX(double a) {
    return Mat4d(
        {1, 0, 0, 0, 0, std::cos(a), std::sin(a), 0, 0, -std::sin(a), std::cos(a), 0, 0, 0, 0, 1});
}
Mat4d aboutY(double a) {
    return Mat4d(
        {std::cos(a), 0, -std::sin(a), 0, 0, 1, 0, 0, std::sin(a), 0, std::cos(a), 0, 0, 0, 0, 1});
}
Mat4d aboutZ(double a) {
    return Mat4d(
        {std::cos(a), std::sin(a), 0, 0, -std::sin(a), std::cos(a), 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
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
        expectNear(rotationDegreesForDirection(c.direction), c.degrees, kPrintedPrecision);

        const Mat4d r = rotationFromTo({0, 0, -1}, c.direction, {0, 1, 0});
        const Vec3d turned{-r[2][0], -r[2][1], -r[2][2]};
        expectNear(turned, c.direction, kTolerance);
    }
    // A zero direction turns as (0, 0, 1) does.
    expectNear(rotationDegreesForDirection({}), {180, 0, -180}, kPrintedPrecision);
}

TEST(EulerAngles, RotateAndExtractAgreeWithRotationsAboutEachAxis) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> wide(-3.1, 3.1);
    std::uniform_real_distribution<double> narrow(-1.5, 1.5);
    std::uniform_real_distribution<double> element(-5.0, 5.0);
    for (int n = 0; n < 1000; ++n) {
        const Vec3d angles{wide(random), narrow(random), wide(random)};
        Mat4d m;
        for (int i = 0; i < 16; ++i) m.data()[i] = element(random);

        const Mat4d rotation =
            multiply(multiply(aboutX(angles.x), aboutY(angles.y)), aboutZ(angles.z));
        const Mat4d expected = multiply(rotation, m);
        Mat4d turned = m;
        rotateEuler(turned, angles);
        for (int i = 0; i < 16; ++i) EXPECT_NEAR(turned.data()[i], expected.data()[i], 1e-9);

        EulerAngles extracted(true, false, true, 0);
        extractEuler(extracted, rotation);
        expectNear(toXyzAngles(extracted), angles, 1e-9);
    }
}

TEST(PlaceLight, AimingModesStandAtTheDistanceAndAimAtThePoint) {
    const Vec3d up{0, 1, 0};
    const LightPose normal = *placeLight(PlacementMode::ModeNormal, {1, 2, 3}, up, {}, 5.0);
    expectNear(normal.position, {1, 7, 3}, 0.0);
    expectNear(normal.direction, {0, -1, 0}, 0.0);

    const Vec3d eye{-1, 1, 0};
    const LightPose reflection = *placeLight(PlacementMode::ModeReflection, {}, up, eye, 2.0);
    expectNear(reflection.position, {1.41421, 1.41421, 0}, kPrintedPrecision);
    expectNear(reflection.direction, {-0.70711, -0.70711, 0}, kPrintedPrecision);

    const LightPose specular = *placeLight(PlacementMode::ModeSpecular, {}, up, eye, 2.0);
    expectNear(specular.position, {0.76537, 1.84776, 0}, kPrintedPrecision);
    expectNear(specular.direction, {-0.38268, -0.92388, 0}, kPrintedPrecision);

    // Looking straight down the normal, the three aiming formulas agree.
    const Vec3d point{3, -2, 1};
    const Vec3d slanted = normalizedOrZero({1, 2, 2});
    const Vec3d overhead = point + slanted * 7.0;
    for (const PlacementMode mode : {PlacementMode::ModeFixedRotation, PlacementMode::ModeShadow,
                                     PlacementMode::ModeReflection, PlacementMode::ModeSpecular}) {
        const LightPose pose = *placeLight(mode, point, slanted, overhead, 4.0);
        expectNear(pose.position, point + slanted * 4.0, kTolerance);
        expectNear(pose.direction, -slanted, kTolerance);
    }
    const LightPose flat = *placeLight(PlacementMode::ModeNormal, point, {}, {}, 5.0);
    expectNear(flat.position, point, 0.0);
    expectNear(flat.direction, {}, 0.0);
}

TEST(PlaceLight, SurfaceModesStandOnThePointAndNoneModesPlaceNothing) {
    const Vec3d point{1, 2, 3};
    const Vec3d normal{0, 0, 1};
    for (int value = 7; value <= 11; ++value) {
        const auto pose = placeLight(static_cast<PlacementMode>(value), point, normal, {}, 5.0);
        ASSERT_TRUE(pose.has_value()) << "mode " << value;
        expectNear(pose->position, point, 0.0);
        expectNear(pose->direction, normal, 0.0);
    }
    EXPECT_FALSE(placeLight(PlacementMode::ModeNone, point, normal, {}, 5.0));
    EXPECT_FALSE(placeLight(PlacementMode::ModeEditLightMaterials, point, normal, {}, 5.0));
}

TEST(PlacementModeLabels, MatchExactlyAndCaseSensitively) {
    const char* const labels[] = {"Edit Light Materials",
                                  "Fixed Rotation",
                                  "Normal",
                                  "Specular",
                                  "Reflection",
                                  "Shadow",
                                  "Face - Center",
                                  "Face - Center - Oriented to Normal",
                                  "Object Surface",
                                  "Object Surface - Oriented to Normal",
                                  "Object - Center"};
    for (int value = 1; value <= 11; ++value) {
        const auto mode = static_cast<PlacementMode>(value);
        EXPECT_EQ(placementModeFromLabel(labels[value - 1]), mode);
        EXPECT_EQ(placementModeLabel(mode), labels[value - 1]);
    }
    for (const std::string_view other :
         {"normal", "", "Normal ", "Face - Center - Oriented", "Object Center"}) {
        EXPECT_EQ(placementModeFromLabel(other), PlacementMode::ModeNone) << other;
    }
    EXPECT_EQ(placementModeFromLabel(std::string_view("Shadow\0", 7)), PlacementMode::ModeNone);
    EXPECT_EQ(placementModeLabel(PlacementMode::ModeNone), "");
}

}  // namespace
