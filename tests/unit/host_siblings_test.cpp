// The host's sibling objects of the placement layer at work on the host's
// scene: snapping by ray casts through pixels, the manipulator moving selected
// lights, and the light package commands.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_reading.h"
#include "host/core/option_id_generator.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer_stage.h"
#include "placement/placement_math.h"
#include "tests/support/reference_balance.h"

using namespace sorrel;

namespace {

constexpr double kTolerance = 1e-9;
constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
constexpr double kFloatTolerance = 1e-4;  // answers come back as floats
constexpr std::int32_t kWidth = 640;
constexpr std::int32_t kHeight = 480;
const Vec3 kEye{0, 10, 10};

void expectNear(const Vec3& actual, const Vec3& expected, double tolerance = kTolerance) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

Vec3 floatsOf(const AttrRef& attribute) {
    EXPECT_EQ(attribute.type(), kFloat);
    EXPECT_EQ(attribute.valueCount(), 3u);
    return {attribute.floatValue(0), attribute.floatValue(1), attribute.floatValue(2)};
}

/// The pixel (x from the left, y from the top) at which the viewport shows a world point.
std::pair<double, double> pixelOf(const Viewport& viewport, const Vec3& world) {
    const Vec3 ndc = transformPoint(world, multiplyMatrices(viewport.view, viewport.projection));
    return {(ndc.x + 1.0) * 0.5 * viewport.width, (1.0 - ndc.y) * 0.5 * viewport.height};
}

std::uint64_t id(const char* name) { return OptionIdGenerator::instance().idOf(name); }

/// Location and flags of each location event that the host's components heard.
std::vector<std::pair<std::string, std::uint32_t>> heardEvents;

/// A delegate component, by its raw entry table, that logs location events.
void* createListener(void*) { return &heardEvents; }
void doNothing(void*) {}
std::uint8_t hear(void*, const LocationEventRecord* record, std::uint8_t) {
    heardEvents.emplace_back(record->location, record->flags);
    return 1;
}
void ignoreSelection(void*, const char* const*, std::int64_t) {}
void* const* listenerSuite() {
    static const SuiteTable table = SuiteTable("listening component")
                                        .set(0, &createListener)
                                        .set(1, &doNothing)
                                        .set(2, &hear)
                                        .set(3, &ignoreSelection)
                                        .set(6, &doNothing)
                                        .set(7, &doNothing);
    return table.data();
}

class HostSiblings : public testing_support::ReferenceBalanceTest {
protected:
    void SetUp() override {
        ReferenceBalanceTest::SetUp();
        heardEvents.clear();
    }
};

TEST_F(HostSiblings, SnappingAnswersWhatTheRayThroughThePixelMeetsAsTheStrategySays) {
    ViewerStage stage(kWidth, kHeight, kEye, {});
    Mesh floor = Mesh::plane(20, 20, 4);  // cells of 5 x 5
    floor.world = translationMatrix(1, 0, 0);
    Mesh block = Mesh::box({2, 2, 2});
    block.world = translationMatrix(-3, 1, 0);
    stage.scene().meshes() = {{"floor", floor}, {"block", block}};

    SnappingLayer& snapping = stage.snappingLayer();
    const auto pick = [&](std::vector<std::pair<std::string, AttrRef>> request) {
        snapping.setOption(id("SnappingLayer.PreparePickOnDemand"), groupAttr(std::move(request)));
        return snapping.getOption(id("SnappingLayer.PickOnDemand"));
    };
    const Vec3 onFloor{2, 0, -1};
    const Vec3 onBlock{-3, 2, 0};  // the block's top stands in front of the floor behind it
    const struct {
        const char* strategy;
        Vec3 shown;
        Vec3 answered;
    } cases[] = {{nullptr, onFloor, onFloor},
                 {"Surface", onFloor, onFloor},
                 {"SurfaceNormal", onFloor, onFloor},
                 {"Face", onFloor, {3.5, 0, -2.5}},
                 {"FaceNormal", onFloor, {3.5, 0, -2.5}},
                 {"ObjectCentre", onFloor, {1, 0, 0}},
                 {"Surface", onBlock, onBlock},
                 {"ObjectCentre", onBlock, {-3, 1, 0}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strategy != nullptr ? c.strategy : "no strategy");
        const auto [x, y] = pixelOf(stage.viewport(), c.shown);
        std::vector<std::pair<std::string, AttrRef>> request = {
            {"x", intAttr(static_cast<std::int32_t>(std::lround(x)))},
            {"y", intAttr(static_cast<std::int32_t>(std::lround(y)))}};
        if (c.strategy != nullptr) request.emplace_back("StrategyType", stringAttr(c.strategy));
        const AttrRef answer = pick(std::move(request));
        ASSERT_EQ(answer.type(), kGroup);
        // The pixel is rounded, so the surface point is near, not exact.
        expectNear(floatsOf(answer.child("point")), c.answered, 0.05);
        expectNear(floatsOf(answer.child("normal")), {0, 1, 0}, kFloatTolerance);
    }
    EXPECT_FALSE(pick({{"x", intAttr(kWidth / 2)}, {"y", intAttr(0)}})) << "nothing there";
}

TEST_F(HostSiblings, ManipulatorMovesSelectedLightsUnderTheirParentsAndReportsTheMove) {
    ViewerStage stage(kWidth, kHeight, kEye, {});
    stage.delegate().addComponent("Listener", listenerSuite());
    Matrix rig = rotationFromEulerDegrees({0, 90, 0});
    setMatrixRow(rig, kTranslationRow, {10, 0, 0});
    const std::string key = "/root/world/lgt/rig/key";
    stage.scene().set("/root/world/lgt/rig", groupAttr({}), rig);
    stage.scene().set(key, groupAttr({{"type", stringAttr("light")}}), translationMatrix(0, 0, 4));
    stage.scene().set("/root/world/geo", groupAttr({{"type", stringAttr("polymesh")}}));
    GLBeamwrightManipulator& manipulator = stage.manipulator();
    stage.select({key, "/root/world/geo"});
    ASSERT_EQ(manipulator.numberOfHandles(), 1u) << "lights only";

    // Sends "LightData" to the handle; the light's world transformation after it.
    const auto move = [&](AttrRef lightData) {
        manipulator.handle(0)->setOption(id("LightData"), std::move(lightData));
        return *stage.scene().worldTransform(key);
    };
    const auto lightData = [](const Vec3& position, const Vec3& direction, int orientationFixed) {
        return groupAttr({{"position", doublesAttr({position.x, position.y, position.z})},
                          {"direction", doublesAttr({direction.x, direction.y, direction.z})},
                          {"orientationFixed", intAttr(orientationFixed)}});
    };
    Matrix world = move(lightData({1, 2, 3}, {0, -1, 0}, 0));
    expectNear(matrixRow(world, kTranslationRow), {1, 2, 3});
    expectNear(matrixRow(world, 2), {0, 1, 0});  // local -Z aims down
    ASSERT_EQ(heardEvents.size(), 1u);
    EXPECT_EQ(heardEvents[0], std::make_pair(key, LocationFlags::kTransformChanged));

    world = move(lightData({-4, 0, 0}, {1, 0, 0}, 1));
    expectNear(matrixRow(world, kTranslationRow), {-4, 0, 0});
    expectNear(matrixRow(world, 2), {0, 1, 0});  // orientation fixed

    expectNear(matrixRow(move(AttrRef()), kTranslationRow), {-4, 0, 0});
    EXPECT_EQ(heardEvents.size(), 2u) << "no light data, no move";
}

TEST_F(HostSiblings, PackageCommandBuildsAPackageWithItsLightAndIsFoundFromTheSelection) {
    ViewerStage stage(kWidth, kHeight, kEye, {});
    stage.delegate().addComponent("Listener", listenerSuite());
    ViewerDelegate& delegate = stage.delegate();
    const auto packageOfSelection = [&] {
        return readString(delegate.callMethod("FindPackageLocationPathForCurrentSelection", {}));
    };
    EXPECT_FALSE(packageOfSelection());

    const auto create = [&](const char* marquette) {
        return readString(delegate.callMethod(
            "CreateLightPackage", groupAttr({{"PackageClassName", stringAttr("SpotPackage")},
                                             {"MarquetteNodeName", stringAttr(marquette)},
                                             {"Position", doublesAttr({1, 2, 3})},
                                             {"Rotation", doublesAttr({90, 0, -180})},
                                             {"CenterOfInterest", doubleAttr(7.5)},
                                             {"ShadowFallDistance", doubleAttr(2.0)}})));
    };
    EXPECT_EQ(create(""), "/root/world/lgt/package1");
    EXPECT_EQ(create(""), "/root/world/lgt/package2");
    EXPECT_EQ(create("rig"), "/root/world/lgt/rig/package1");
    EXPECT_FALSE(delegate.callMethod("CreateLightPackage", stringAttr("no group")));

    const std::string light = "/root/world/lgt/package1/light";
    // Where the light stands and aims is followed through the placement layer
    // in the viewer; here is what only the command gives.
    const AttrRef attributes = stage.scene().find(light)->attributes;
    EXPECT_EQ(readDouble(attributes.child("geometry.shadowFallDistance")), 2.0);
    const AttrRef package = stage.scene().find("/root/world/lgt/package1")->attributes;
    EXPECT_EQ(readString(package.child("package.className")), "SpotPackage");
    ASSERT_EQ(heardEvents.size(), 6u) << "a package and its light each";
    EXPECT_EQ(heardEvents[0].first, "/root/world/lgt/package1");
    EXPECT_EQ(heardEvents[1], std::make_pair(light, LocationFlags::kAttributesChanged));

    stage.select({light});
    EXPECT_EQ(packageOfSelection(), "/root/world/lgt/package1");
    stage.select({"/root/world/lgt/rig/package1"});
    EXPECT_EQ(packageOfSelection(), "/root/world/lgt/rig/package1");
}

TEST(HostLightOrientation, PackageDegreesTurnALightTheWayThePlacementLayerMeantIt) {
    namespace placement = Tessera::Sorrel::ViewerUtils;
    std::mt19937 random(20240611);
    const auto expectSameMatrix = [](const Matrix& actual, const double* expected) {
        for (int e = 0; e < 16; ++e) EXPECT_NEAR(actual[e], expected[e], kTolerance) << e;
    };

    // Any degrees turn as the plugin's Euler rotation does: x first, then y, then z.
    std::uniform_real_distribution<double> angle(-180.0, 180.0);
    for (int i = 0; i < 50; ++i) {
        const placement::Vec3d degrees{angle(random), angle(random), angle(random)};
        placement::Mat4d expected;
        placement::rotateEuler(expected, degrees * kRadiansPerDegree);
        expectSameMatrix(rotationFromEulerDegrees({degrees.x, degrees.y, degrees.z}),
                         expected.data());
    }

    // The degrees that the placement layer sends for a direction turn the
    // light along it, as the manipulator would aim it.
    std::uniform_real_distribution<double> component(-1.0, 1.0);
    std::vector<Vec3> directions = {{0, -1, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, -1}, {1, 0, 0}};
    for (int i = 0; i < 100; ++i)
        directions.push_back({component(random), component(random), component(random)});
    for (const Vec3& direction : directions) {
        const placement::Vec3d degrees =
            placement::rotationDegreesForDirection({direction.x, direction.y, direction.z});
        const Matrix turned = rotationFromEulerDegrees({degrees.x, degrees.y, degrees.z});
        expectSameMatrix(turned, orientationAlong(direction)->data());
        expectNear(-matrixRow(turned, 2), normalizedOrZero(direction));
    }
}

}  // namespace
