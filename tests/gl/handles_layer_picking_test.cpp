// The handles layer's picking pass on llvmpipe: every picked pixel carries its
// id's colour exactly, only pickable and not excluded lights ask for ids, and
// the host's picking machinery turns the colours back into the lights.

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "host/viewer/picking.h"
#include "tests/gl/handles_layer_fixture.h"

using handles_testing::kBackground;
using handles_testing::Pixel;
using handles_testing::PixelPosition;
using sorrel::AttrRef;
using testing::ElementsAre;
using testing::Gt;
using testing::Key;
using testing::Pair;
using testing_support::strings;

namespace {

constexpr std::array<float, 3> kWhite = {1.0f, 1.0f, 1.0f};
/// Ids whose four colour bytes all differ, so that a swapped channel shows, and
/// run high, where a colour rounded the wrong way shows.
constexpr std::uint64_t kFirstId = 0x01F2E3D4;
constexpr PixelPosition kInsideHead = {6, 2};  // from the tip, at scale 1

/// How many pixels of each colour but the background `image` holds.
std::map<Pixel, int> coloursOf(const sorrel::RgbaImage& image) {
    std::map<Pixel, int> colours;
    for (int row = 0; row < image.height; ++row)
        for (int column = 0; column < image.width; ++column) ++colours[image.at(column, row)];
    colours.erase(kBackground);
    return colours;
}

std::string locationOf(const AttrRef* picked) {
    return picked != nullptr ? picked->child("location").stringValue() : "(no id)";
}

class HandlesLayerPicking : public handles_testing::HandlesLayerGLTest {
protected:
    void SetUp() override {
        HandlesLayerGLTest::SetUp();
        viewport->setNextPickId(kFirstId);
    }
    sorrel::RgbaImage pickerDrawn(const AttrRef& picked = AttrRef()) const {
        clearColour();
        const int size = gl_testing::kSurfaceSize;
        layer->pickerDraw(0, 0, size, size, picked);
        return readPixels();
    }
};

TEST_F(HandlesLayerPicking, EveryPickedPixelIsExactlyItsIdsColour) {
    addLight("/root/a", {2, 0, 0}, 2.0, kWhite);
    addLight("/root/selected", {2, 1, 0}, 2.0, kWhite);
    addLight("/root/unpickable", {2, -1, 0}, 2.0, kWhite,
             {{"viewer.default.pickable", sorrel::intAttr(0)}});
    addLight("/root/excluded", {3, 1, 0}, 2.0, kWhite);
    delegate->sendSelection({"/root/selected"});
    layer->setOption("ViewportLayer.ExcludedLocationsPicking", strings({"/root/excluded"}));

    // Ten pixels across and 34 long, the stem alone covers 300 pixels and more.
    constexpr int kFatStemPixels = 300;
    EXPECT_THAT(coloursOf(pickerDrawn()),
                ElementsAre(Pair(Pixel{0x01, 0xF2, 0xE3, 0xD4}, Gt(kFatStemPixels)),
                            Pair(Pixel{0x01, 0xF2, 0xE3, 0xD5}, Gt(kFatStemPixels))))
        << "no blending, smoothing or stipple alters a picking colour; handles are fat to hit";
    EXPECT_EQ(locationOf(viewport->pickedAttr(kFirstId)), "/root/a");
    EXPECT_EQ(locationOf(viewport->pickedAttr(kFirstId + 1)), "/root/selected")
        << "selection does not matter to picking";
    EXPECT_EQ(viewport->pickedAttr(kFirstId + 2), nullptr)
        << "lights left out of picking ask for no id";

    // An id the host has picked already is asked for, and not drawn.
    viewport->clearPickedAttrs();
    viewport->setNextPickId(kFirstId);
    const AttrRef alreadyPicked =
        sorrel::groupAttr({{std::to_string(kFirstId), sorrel::stringAttr("earlier")}});
    EXPECT_THAT(coloursOf(pickerDrawn(alreadyPicked)),
                ElementsAre(Key(Pixel{0x01, 0xF2, 0xE3, 0xD5})));
    EXPECT_EQ(locationOf(viewport->pickedAttr(kFirstId)), "/root/a");
    viewport->clearPickedAttrs();
}

TEST_F(HandlesLayerPicking, HostPicksTheNearestHandleUnderThePixel) {
    addLight("/root/far", {2, 0, -1}, 2.0, kWhite);
    addLight("/root/near", {2, 0, 1}, 2.0, kWhite);
    const PixelPosition tip = pixelOf({0, 0, 0});
    const sorrel::PickArea head = {tip.column + kInsideHead.column, tip.row + kInsideHead.row};
    sorrel::Picking picking(*viewport, glContext());
    clearColour();

    std::vector<sorrel::PickHit> hits = picking.pickAll(head);
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_EQ(hits[0].attribute.child("location").stringValue(), "/root/near");
    EXPECT_LT(hits[0].depth, 1.0f);
    const float nearDepth = hits[0].depth;

    layer->setOption("ViewportLayer.ExcludedLocationsPicking", strings({"/root/near"}));
    hits = picking.pickAll(head);
    ASSERT_EQ(hits.size(), 1u);
    EXPECT_EQ(hits[0].attribute.child("location").stringValue(), "/root/far");
    EXPECT_GT(hits[0].depth, nearDepth);

    EXPECT_TRUE(picking.pickAll({tip.column - 10, tip.row}).empty()) << "before the tip";

    layer->setOption("ViewportLayer.ExcludedLocationsPicking", AttrRef());
    hits = picking.pickAll({tip.column, tip.row - 8, 16, 16});
    ASSERT_EQ(hits.size(), 1u) << "over an area, the far head hides wholly behind the near one";
    EXPECT_EQ(hits[0].attribute.child("location").stringValue(), "/root/near");
}

}  // namespace
