// The host's sibling objects of the placement layer at work on the host's
// scene: snapping by ray casts through pixels, the manipulator moving selected
// lights, and the light package commands.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "host/attribute_reading.h"
#include "host/light_orientation.h"
#include "host/plugin_host.h"
#include "host/ray_cast.h"
#include "host/viewer_stage.h"
#include "placement/placement_math.h"
#include "tests/support/reference_balance.h"

using namespace sorrel;

namespace {

constexpr double kTolerance = 1e-9;
constexpr double kPi = 3.14159265358979323846;
constexpr double kFloatTolerance = 1e-4;  // answers come back as floats
constexpr std::int32_t kWidth = 640;
constexpr std::int32_t kHeight = 480;
constexpr std::int32_t kShift = 0x02000000;

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

/// A delegate component, by its raw entry table, that logs the location
/// events and selections the host sends.
struct EventLog {
    std::vector<std::pair<std::string, std::uint32_t>> events;
    std::vector<std::vector<std::string>> selections;
};
EventLog eventLog;

const SuiteTable& recorderSuite() {
    static const SuiteTable table = [] {
        SuiteTable t("recording component");
        t.set(
             0, +[](void*) -> void* { return &eventLog; })
            .set(
                1, +[](void*) {})
            .set(
                2,
                +[](void*, const LocationEventRecord* record, std::uint8_t) -> std::uint8_t {
                    eventLog.events.emplace_back(record->location, record->flags);
                    return 1;
                })
            .set(
                3,
                +[](void*, const char* const* paths, std::int64_t count) {
                    eventLog.selections.emplace_back(paths, paths + count);
                })
            .set(
                6, +[](void*) {})
            .set(
                7, +[](void*) {});
        return t;
    }();
    return table;
}

AttrRef lightAttributes() {
    return groupAttr({{"type", stringAttr("light")},
                      {"geometry", groupAttr({{"centerOfInterest", doubleAttr(5.0)}})}});
}

class HostSiblings : public testing_support::ReferenceBalanceTest {
protected:
    void SetUp() override {
        ReferenceBalanceTest::SetUp();
        eventLog = EventLog();
    }
};

TEST_F(HostSiblings, RayThroughAPixelMeetsThePointThatTheViewportShowsThere) {
    ViewerStage stage(kWidth, kHeight, {0, 10, 10}, {0, 0, 0});
    stage.scene().meshes()["floor"] = Mesh::plane(20, 20);
    Mesh block = Mesh::box({2, 2, 2});
    block.world = translationMatrix(-3, 1, 0);
    stage.scene().meshes()["block"] = block;

    const auto centre =
        castRay(stage.scene(), *rayThroughPixel(stage.viewport(), kWidth / 2, kHeight / 2));
    ASSERT_TRUE(centre);
    EXPECT_EQ(centre->mesh, "floor");
    expectNear(centre->hit.point, {0, 0, 0});
    expectNear(centre->hit.normal, {0, 1, 0});

    const Vec3 onFloor{2, 0, -1};
    const auto [x, y] = pixelOf(stage.viewport(), onFloor);
    expectNear(castRay(stage.scene(), *rayThroughPixel(stage.viewport(), x, y))->hit.point,
               onFloor);

    // The block's top stands in front of the floor behind it.
    const auto [bx, by] = pixelOf(stage.viewport(), {-3, 2, 0});
    const auto top = castRay(stage.scene(), *rayThroughPixel(stage.viewport(), bx, by));
    EXPECT_EQ(top->mesh, "block");
    expectNear(top->hit.point, {-3, 2, 0});
    expectNear(top->hit.normal, {0, 1, 0});
    expectNear(top->boundsCentre, {-3, 1, 0});

    // Pixel y counts from the top edge: a row above the centre looks further back.
    const auto upper =
        castRay(stage.scene(), *rayThroughPixel(stage.viewport(), kWidth / 2, kHeight / 4));
    EXPECT_LT(upper->hit.point.z, 0.0);
    EXPECT_FALSE(castRay(stage.scene(), *rayThroughPixel(stage.viewport(), kWidth / 2, 0)))
        << "the top row looks over the floor";
}

TEST_F(HostSiblings, SnappingStrategiesAnswerPointFaceCentreOrObjectCentre) {
    ViewerStage stage(kWidth, kHeight, {0, 10, 10}, {0, 0, 0});
    Mesh floor = Mesh::plane(20, 20, 4);  // cells of 5 x 5
    floor.world = translationMatrix(1, 0, 0);
    stage.scene().meshes()["floor"] = floor;
    SnappingLayer& snapping = stage.snappingLayer();
    const auto [x, y] = pixelOf(stage.viewport(), {2, 0, -1});

    const auto pick = [&](const char* strategy) {
        std::vector<std::pair<std::string, AttrRef>> request = {
            {"x", intAttr(static_cast<std::int32_t>(std::lround(x)))},
            {"y", intAttr(static_cast<std::int32_t>(std::lround(y)))}};
        if (strategy != nullptr) request.emplace_back("StrategyType", stringAttr(strategy));
        snapping.setOption(id("SnappingLayer.PreparePickOnDemand"), groupAttr(std::move(request)));
        return snapping.getOption(id("SnappingLayer.PickOnDemand"));
    };
    const struct {
        const char* strategy;
        Vec3 point;
    } cases[] = {{nullptr, {2, 0, -1}},          {"Surface", {2, 0, -1}},
                 {"SurfaceNormal", {2, 0, -1}},  {"Face", {3.5, 0, -2.5}},
                 {"FaceNormal", {3.5, 0, -2.5}}, {"ObjectCentre", {1, 0, 0}}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.strategy != nullptr ? c.strategy : "no strategy");
        const AttrRef answer = pick(c.strategy);
        ASSERT_EQ(answer.type(), kGroup);
        // The pixel is rounded, so the surface point is near, not exact.
        expectNear(floatsOf(answer.child("point")), c.point, 0.05);
        expectNear(floatsOf(answer.child("normal")), {0, 1, 0}, kFloatTolerance);
    }
    EXPECT_EQ(snapping.lastRequest().strategy, "ObjectCentre");

    snapping.setOption(id("SnappingLayer.PreparePickOnDemand"),
                       groupAttr({{"x", intAttr(kWidth / 2)}, {"y", intAttr(0)}}));
    EXPECT_FALSE(snapping.getOption(id("SnappingLayer.PickOnDemand"))) << "nothing under the pixel";
    snapping.setOption(id("SnappingLayer.PreparePickOnDemand"), groupAttr({{"x", floatAttr(1)}}));
    EXPECT_FALSE(snapping.getOption(id("SnappingLayer.PickOnDemand"))) << "no integer pixel";
    EXPECT_EQ(snapping.prepareCount(), 8u);
}

TEST_F(HostSiblings, ManipulatorMovesSelectedLightsUnderTheirParentsAndReportsTheMove) {
    ViewerStage stage(kWidth, kHeight, {0, 10, 10}, {0, 0, 0});
    stage.delegate().addComponent("Recorder", recorderSuite().data());
    Matrix rig = rotationFromEulerDegrees({0, 90, 0});
    setMatrixRow(rig, kTranslationRow, {10, 0, 0});
    stage.scene().set("/root/world/lgt/rig", groupAttr({}), rig);
    stage.scene().set("/root/world/lgt/rig/key", lightAttributes(), translationMatrix(0, 0, 4));
    stage.scene().set("/root/world/geo", groupAttr({{"type", stringAttr("polymesh")}}));
    GLBeamwrightManipulator& manipulator = stage.manipulator();
    EXPECT_EQ(manipulator.numberOfHandles(), 0u);
    stage.select({"/root/world/lgt/rig/key", "/root/world/geo"});
    ASSERT_EQ(manipulator.numberOfHandles(), 1u) << "lights only";
    ManipulatorHandle* const handle = manipulator.handle(0);
    EXPECT_EQ(manipulator.handle(1), nullptr);
    EXPECT_EQ(eventLog.selections.back().size(), 2u);

    const auto lightData = [](const Vec3& position, const Vec3& direction, int orientationFixed) {
        return groupAttr({{"position", doublesAttr({position.x, position.y, position.z})},
                          {"direction", doublesAttr({direction.x, direction.y, direction.z})},
                          {"distance", doubleAttr(5.0)},
                          {"strictPosition", intAttr(0)},
                          {"orientationFixed", intAttr(orientationFixed)}});
    };
    handle->setOption(id("LightData"), lightData({1, 2, 3}, {0, -1, 0}, 0));
    Matrix world = *stage.scene().worldTransform("/root/world/lgt/rig/key");
    expectNear(matrixRow(world, 3), {1, 2, 3});
    expectNear(matrixRow(world, 2), {0, 1, 0});  // local -Z aims down
    ASSERT_EQ(eventLog.events.size(), 1u);
    EXPECT_EQ(eventLog.events.back().first, "/root/world/lgt/rig/key");
    EXPECT_EQ(eventLog.events.back().second, LocationFlags::kTransformChanged);

    handle->setOption(id("LightData"), lightData({-4, 0, 0}, {1, 0, 0}, 1));
    world = *stage.scene().worldTransform("/root/world/lgt/rig/key");
    expectNear(matrixRow(world, 3), {-4, 0, 0});
    expectNear(matrixRow(world, 2), {0, 1, 0});  // orientation fixed

    handle->setOption(id("LightData"), AttrRef());
    handle->setOption(id("CurrentModifiers"), intAttr(kShift));
    expectNear(matrixRow(*stage.scene().worldTransform("/root/world/lgt/rig/key"), 3), {-4, 0, 0});
    EXPECT_EQ(eventLog.events.size(), 2u);
    const LightMoveCounts& counts = manipulator.counts();
    EXPECT_EQ(counts.lightData, 3u);
    EXPECT_EQ(counts.nullLightData, 1u);
    EXPECT_EQ(counts.moves, 2u);
    EXPECT_EQ(counts.modifiers, 1u);
    EXPECT_EQ(counts.lastModifiers, kShift);

    stage.select({});
    EXPECT_EQ(manipulator.numberOfHandles(), 0u);
}

TEST_F(HostSiblings, PackageCommandBuildsAPackageWithItsLightAndIsFoundFromTheSelection) {
    ViewerStage stage(kWidth, kHeight, {0, 10, 10}, {0, 0, 0});
    stage.delegate().addComponent("Recorder", recorderSuite().data());
    ViewerDelegate& delegate = stage.delegate();
    EXPECT_FALSE(delegate.callMethod("FindPackageLocationPathForCurrentSelection", AttrRef()));

    const auto command = [](const char* marquette) {
        return groupAttr({{"PackageClassName", stringAttr("SpotPackage")},
                          {"MarquetteNodeName", stringAttr(marquette)},
                          {"Position", doublesAttr({1, 2, 3})},
                          {"Rotation", doublesAttr({90, 0, -180})},
                          {"CenterOfInterest", doubleAttr(7.5)},
                          {"ShadowFallDistance", doubleAttr(2.0)}});
    };
    EXPECT_EQ(readString(delegate.callMethod("CreateLightPackage", command(""))),
              "/root/world/lgt/package1");
    EXPECT_EQ(readString(delegate.callMethod("CreateLightPackage", command(""))),
              "/root/world/lgt/package2");
    EXPECT_EQ(readString(delegate.callMethod("CreateLightPackage", command("rig"))),
              "/root/world/lgt/rig/package1");
    EXPECT_FALSE(delegate.callMethod("CreateLightPackage", stringAttr("no group")));

    const std::string light = "/root/world/lgt/package1/light";
    const Matrix world = *stage.scene().worldTransform(light);
    expectNear(matrixRow(world, 3), {1, 2, 3});
    expectNear(-matrixRow(world, 2), {0, -1, 0});  // over an upward surface the light points down
    const AttrRef attributes = stage.scene().find(light)->attributes;
    EXPECT_EQ(readString(attributes.child("type")), "light");
    EXPECT_EQ(readDouble(attributes.child("geometry.centerOfInterest")), 7.5);
    EXPECT_EQ(readDouble(attributes.child("geometry.shadowFallDistance")), 2.0);
    EXPECT_EQ(
        readString(
            stage.scene().find("/root/world/lgt/package1")->attributes.child("package.className")),
        "SpotPackage");
    ASSERT_EQ(eventLog.events.size(), 6u);
    EXPECT_EQ(eventLog.events[0].first, "/root/world/lgt/package1");
    EXPECT_EQ(eventLog.events[1].first, light);
    EXPECT_EQ(eventLog.events[1].second, LocationFlags::kAttributesChanged);

    stage.select({light});
    EXPECT_EQ(
        readString(delegate.callMethod("FindPackageLocationPathForCurrentSelection", AttrRef())),
        "/root/world/lgt/package1");
    stage.select({"/root/world/lgt/rig/package1"});
    EXPECT_EQ(
        readString(delegate.callMethod("FindPackageLocationPathForCurrentSelection", AttrRef())),
        "/root/world/lgt/rig/package1");
}

TEST(HostLightOrientation, PackageDegreesTurnALightTheWayThePlacementLayerMeantIt) {
    namespace placement = Tessera::Sorrel::ViewerUtils;
    std::mt19937 random(20240611);
    std::uniform_real_distribution<double> component(-1.0, 1.0);

    // Row-vector turns about one axis each, the x turn acting first.
    const auto about = [](int axis, double degrees) {
        const double c = std::cos(degrees * kPi / 180.0);
        const double s = std::sin(degrees * kPi / 180.0);
        const int i = (axis + 1) % 3;
        const int j = (axis + 2) % 3;
        Matrix m = kIdentity;
        m[4 * i + i] = c, m[4 * i + j] = s, m[4 * j + i] = -s, m[4 * j + j] = c;
        return m;
    };
    std::uniform_real_distribution<double> angle(-180.0, 180.0);
    for (int i = 0; i < 50; ++i) {
        const Vec3 degrees{angle(random), angle(random), angle(random)};
        const Matrix expected = multiplyMatrices(
            multiplyMatrices(about(0, degrees.x), about(1, degrees.y)), about(2, degrees.z));
        const Matrix turned = rotationFromEulerDegrees(degrees);
        for (int e = 0; e < 16; ++e)
            EXPECT_NEAR(turned[e], expected[e], kTolerance) << "element " << e;
    }

    std::vector<Vec3> directions = {{0, -1, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, -1}, {1, 0, 0}};
    for (int i = 0; i < 200; ++i)
        directions.push_back({component(random), component(random), component(random)});
    for (const Vec3& direction : directions) {
        const placement::Vec3d degrees =
            placement::rotationDegreesForDirection({direction.x, direction.y, direction.z});
        const Matrix turned = rotationFromEulerDegrees({degrees.x, degrees.y, degrees.z});
        const Matrix aimed = *orientationAlong(direction);
        for (int i = 0; i < 16; ++i) EXPECT_NEAR(turned[i], aimed[i], 1e-9) << "element " << i;
        expectNear(-matrixRow(turned, 2), normalizedOrZero(direction));
    }
}

}  // namespace
