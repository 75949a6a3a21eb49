// The record of one location: which attributes make a light, a visible and a
// pickable handle, where it stands and looks, and in which colour.

#include "scene/light_location_data.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <string>

#include "frame/attribute.h"
#include "tests/support/light_attributes.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttributeModel;
using sorrel::AttrRef;
using Tessera::Sorrel::ViewerUtils::Mat4d;
using Tessera::Sorrel::ViewerUtils::Vec3d;
using testing_support::AttributeEntries;
using testing_support::dottedGroup;
using testing_support::lightAttributes;

namespace {

class LightLocationDataTest : public testing_support::UnitTest {};

using Color = std::array<float, 4>;
constexpr Color kYellow = {1.0f, 1.0f, 0.0f, 1.0f};

LightLocationData updated(const AttrRef& attributes, const Mat4d& world = Mat4d()) {
    LightLocationData data;
    data.attributes = GroupAttribute(Attribute::share(attributes.get()));
    data.pickerObject = makePickerObject("/root/lgt");
    data.worldMatrix = world;
    updateLightLocationData(data);
    return data;
}

bool sameVec(const Vec3d& a, const Vec3d& b) { return a.x == b.x && a.y == b.y && a.z == b.z; }

TEST_F(LightLocationDataTest, TypeHideAndPickableReadOnlyTheirOwnTypes) {
    EXPECT_FALSE(updated(dottedGroup({{"type", sorrel::stringAttr("camera")}})).isLight);
    const LightLocationData light = updated(lightAttributes(2.0));
    EXPECT_TRUE(light.isLight && light.showHandle && light.pickable);

    const auto with = [](const char* name, const AttrRef& value) {
        return updated(lightAttributes(2.0, {{name, value}}));
    };
    const char* const hide = "viewer.default.drawOptions.hide";
    EXPECT_TRUE(with(hide, sorrel::floatAttr(1.0f)).showHandle) << "only an integer hides";
    EXPECT_TRUE(with(hide, sorrel::intAttr(0)).showHandle);
    EXPECT_FALSE(with(hide, sorrel::intAttr(-1)).showHandle);
    EXPECT_FALSE(with("viewer.default.beamwright.hideHandle", sorrel::intAttr(1)).showHandle);
    const LightLocationData unpickable = with("viewer.default.pickable", sorrel::intAttr(0));
    EXPECT_TRUE(unpickable.showHandle && !unpickable.pickable) << "drawn, but not picked";
    EXPECT_TRUE(with("viewer.default.pickable", sorrel::floatAttr(0.0f)).pickable);

    // Without any attribute group every attribute falls to its default.
    const LightLocationData bare = updated(AttrRef());
    EXPECT_FALSE(bare.isLight || bare.showHandle);
    EXPECT_TRUE(bare.pickable);
    EXPECT_EQ(bare.color, kYellow);
    EXPECT_EQ(bare.locationHash, hashOfText("/root/lgt").words[0]);
}

TEST_F(LightLocationDataTest, LooksAlongTheNegativeLocalZAxisToItsCentreOfInterest) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> value(-3.0, 3.0);
    for (int trial = 0; trial < 20; ++trial) {
        Mat4d world;
        for (int i = 0; i < 15; ++i)
            if (i % 4 != 3) world.data()[i] = value(random);
        const double distance = value(random);
        const LightLocationData data = updated(lightAttributes(distance), world);
        const double zLength = std::hypot(world[2][0], world[2][1], world[2][2]);
        for (int i = 0; i < 3; ++i) {
            const double expected = -world[2][i] / zLength;
            EXPECT_EQ(data.position[i], world[3][i]);
            EXPECT_NEAR(data.direction[i], expected, 1e-12) << "trial " << trial;
            EXPECT_NEAR(data.centerOfInterest[i], world[3][i] + distance * expected, 1e-12);
        }
    }

    Mat4d flat;  // without a local Z axis
    flat[2][2] = 0.0;
    flat[3][0] = 4.0;
    const LightLocationData degenerate = updated(lightAttributes(5.0), flat);
    EXPECT_TRUE(sameVec(degenerate.direction, Vec3d{}));
    EXPECT_TRUE(sameVec(degenerate.centerOfInterest, degenerate.position));

    for (const AttrRef& attributes :
         {dottedGroup({{"type", sorrel::stringAttr("light")}}),
          dottedGroup({{"type", sorrel::stringAttr("light")},
                       {"geometry.centerOfInterest", sorrel::floatAttr(5.0f)}})}) {
        const LightLocationData data = updated(attributes);
        EXPECT_FALSE(data.showHandle) << "no handle without a double centre of interest";
        EXPECT_TRUE(sameVec(data.centerOfInterest, data.position));
    }
}

TEST_F(LightLocationDataTest, ColourComesFromTheFirstAttributeWithThreeValues) {
    const auto colorOf = [](AttributeEntries entries) {
        return updated(lightAttributes(1.0, entries)).color;
    };
    const char* const drawColor = "viewer.default.drawOptions.color";
    const char* const previewColor = "geometry.previewColor";
    EXPECT_EQ(colorOf({}), kYellow);
    EXPECT_EQ(colorOf({{drawColor, sorrel::floatsAttr({0.1f, 0.2f})},
                       {previewColor, sorrel::floatsAttr({0.3f, 0.4f, 0.5f})}}),
              (Color{0.3f, 0.4f, 0.5f, 1.0f}))
        << "two values are passed over";
    for (const std::vector<float>& values :
         {std::vector<float>{0.1f, 0.2f, 0.3f, 0.4f}, {0.1f, 0.2f, 0.3f, 0.4f, 0.5f}})
        EXPECT_EQ(colorOf({{drawColor, sorrel::floatsAttr(values)}}),
                  (Color{0.1f, 0.2f, 0.3f, 0.4f}))
            << "a fourth value is the alpha";
    EXPECT_EQ(colorOf({{drawColor, sorrel::floatsAttr({0.1f, 0.2f, 0.3f})},
                       {previewColor, sorrel::floatsAttr({0.6f, 0.7f, 0.8f, 0.9f})}}),
              (Color{0.1f, 0.2f, 0.3f, 1.0f}));
    EXPECT_EQ(colorOf({{drawColor, sorrel::doublesAttr({0.1, 0.2, 0.3})}}), kYellow)
        << "only floats count";
    const AttrRef sampled(AttributeModel::instance().makeFloatSamples(
        {-1.0f, 0.5f}, {{0.1f, 0.1f, 0.1f}, {0.2f, 0.2f, 0.2f}}));
    EXPECT_EQ(colorOf({{previewColor, sampled}}), (Color{0.2f, 0.2f, 0.2f, 1.0f}))
        << "the sample nearest time 0";
}

TEST_F(LightLocationDataTest, RecordOwnsOneReferenceOnEachGroup) {
    const LightLocationData data = updated(lightAttributes(3.0));
    const std::int64_t held = AttributeModel::instance().liveReferences();
    LightLocationData copy = data;
    EXPECT_EQ(AttributeModel::instance().liveReferences(), held + 2);
    const LightLocationData moved = std::move(copy);
    EXPECT_FALSE(copy.pickerObject.isValid() || copy.attributes.isValid());
    EXPECT_EQ(AttributeModel::instance().liveReferences(), held + 2);
}

}  // namespace
