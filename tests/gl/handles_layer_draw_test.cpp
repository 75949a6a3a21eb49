// The handles layer drawn on llvmpipe: handles where the projection puts them,
// the hovered light on top with its connecting line, and the GL calls of each
// pass and of setup and cleanup, in order.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "host/picking.h"
#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/handles_layer_fixture.h"

using handles_testing::kBackground;
using handles_testing::opaque;
using handles_testing::PixelPosition;
using sorrel::AttrRef;

namespace {

constexpr std::array<float, 3> kRed = {1.0f, 0.0f, 0.0f};
constexpr std::array<float, 3> kGreen = {0.0f, 1.0f, 0.0f};
/// At this scale one model unit spans 90 pixels: the head is 14.6 pixels long
/// and 14 wide, and the stem ends 51 pixels behind the tip.
constexpr double kScale = 1.5;
constexpr int kStemEnd = 51;
/// A pixel well inside the head, from the tip (the head opens to the right).
constexpr PixelPosition kInsideHead = {10, 2};
constexpr int kCentre = gl_testing::kSurfaceSize / 2;

PixelPosition offset(const PixelPosition& p, const PixelPosition& by) {
    return {p.column + by.column, p.row + by.row};
}

/// Whether any pixel of the columns and rows (both ends included) passes `test`.
template <typename Test>
bool anyPixel(const sorrel::RgbaImage& image, int fromColumn, int toColumn, int fromRow, int toRow,
              Test test) {
    for (int row = fromRow; row <= toRow; ++row)
        for (int column = fromColumn; column <= std::min(toColumn, image.width - 1); ++column)
            if (test(image.at(column, row))) return true;
    return false;
}

bool notBackground(const handles_testing::Pixel& p) { return p != kBackground; }

AttrRef strings(std::vector<std::string> texts) {
    return AttrRef(sorrel::AttributeModel::instance().makeStrings(std::move(texts)));
}

class HandlesLayerDraw : public handles_testing::HandlesLayerGLTest {
protected:
    void SetUp() override {
        HandlesLayerGLTest::SetUp();
        layer->setOption("Manipulator.Scale", sorrel::doubleAttr(kScale));
    }
    sorrel::RgbaImage drawn() const {
        clearColour();
        layer->draw();
        return readPixels();
    }
    /// Lets the host answer every pick with `path` at depth 0.5.
    void answerPicksWith(const char* path) const {
        viewport->pickHandler = [path](const std::string&, std::int32_t, std::int32_t, std::int32_t,
                                       std::int32_t, bool, float* depth) {
            *depth = 0.5f;
            return sorrel::groupAttr(
                {{"1", sorrel::groupAttr({{"location", sorrel::stringAttr(path)}})}});
        };
    }
};

TEST_F(HandlesLayerDraw, HandlesSitWhereTheProjectionPutsTheirCentresOfInterest) {
    addLight("/root/left", {2, 0, 0}, 2.0, kRed);
    addLight("/root/high", {3, 1, 0}, 2.0, kGreen);
    const PixelPosition tip = pixelOf({0, 0, 0});
    const PixelPosition highTip = pixelOf({1, 1, 0});
    ASSERT_EQ(tip.column, kCentre);

    sorrel::RgbaImage image = drawn();
    EXPECT_EQ(image.at(offset(tip, kInsideHead).column, offset(tip, kInsideHead).row),
              opaque(kRed));
    EXPECT_EQ(image.at(offset(highTip, kInsideHead).column, offset(highTip, kInsideHead).row + 1),
              opaque(kGreen));
    EXPECT_EQ(image.at(tip.column - 4, tip.row + 2), kBackground) << "nothing before the tip";
    EXPECT_EQ(image.at(tip.column + 8, tip.row + 6), kBackground) << "nothing beside the head";
    EXPECT_TRUE(anyPixel(image, tip.column + 20, tip.column + kStemEnd - 4, tip.row - 1,
                         tip.row + 1, notBackground))
        << "the stem runs back towards the light";
    EXPECT_FALSE(anyPixel(image, tip.column + kStemEnd + 4, image.width, tip.row - 2, tip.row + 2,
                          notBackground))
        << "and ends 3.5 head lengths behind the tip";

    delegate->sendSelection({"/root/high"});
    image = drawn();
    EXPECT_EQ(image.at(offset(highTip, kInsideHead).column, offset(highTip, kInsideHead).row + 1),
              kBackground)
        << "a selected light has no handle";
    EXPECT_EQ(image.at(offset(tip, kInsideHead).column, offset(tip, kInsideHead).row),
              opaque(kRed));
}

TEST_F(HandlesLayerDraw, HoveredLightLiesOnTopOfNearerHandles) {
    // Both tips land on the centre; the red one is nearer.
    addLight("/root/near", {2, 0, 1}, 2.0, kRed);
    addLight("/root/far", {2, 0, -1}, 2.0, kGreen);
    const PixelPosition head = offset(pixelOf({0, 0, 0}), kInsideHead);
    EXPECT_EQ(drawn().at(head.column, head.row), opaque(kRed));

    // Left out of picking, the red handle lets the pointer find the green one.
    layer->setOption("ViewportLayer.ExcludedLocationsPicking", strings({"/root/near"}));
    sorrel::Picking picking(*viewport, glContext());
    picking.install();
    moveTo(head);
    EXPECT_EQ(handles().getHoveredLocation(),
              Tessera::Sorrel::ViewerAPI::hashOfText("/root/far").words[0]);
    EXPECT_EQ(viewport->dirtyCount, 2u) << "the scale, then the hover";
    EXPECT_EQ(drawn().at(head.column, head.row), opaque(kGreen));
}

// Mesa's llvmpipe draws smoothed lines of a program with a geometry stage
// wrongly after the first such draw call of a pass, so line pixels are judged
// here only for a single light.
TEST_F(HandlesLayerDraw, HoveredLightShowsTheLineToItsLightInsteadOfItsStem) {
    addLight("/root/a", {4, 0, 0}, 4.0, kGreen);  // the light itself lies beyond the right edge
    const PixelPosition tip = pixelOf({0, 0, 0});
    const auto pastStemEnd = [&tip](const sorrel::RgbaImage& image) {
        return anyPixel(image, tip.column + kStemEnd + 4, image.width, tip.row - 2, tip.row + 1,
                        notBackground);
    };
    const auto alongStem = [&tip](const sorrel::RgbaImage& image) {
        return anyPixel(image, tip.column + 20, tip.column + kStemEnd - 4, tip.row - 2, tip.row + 1,
                        notBackground);
    };

    sorrel::RgbaImage image = drawn();
    EXPECT_TRUE(alongStem(image));
    EXPECT_FALSE(pastStemEnd(image));

    sorrel::Picking picking(*viewport, glContext());
    picking.install();
    moveTo(offset(tip, kInsideHead));
    image = drawn();
    EXPECT_TRUE(alongStem(image));
    EXPECT_TRUE(pastStemEnd(image)) << "the line runs on to the light";
    EXPECT_EQ(image.at(offset(tip, kInsideHead).column, offset(tip, kInsideHead).row),
              opaque(kGreen))
        << "a hovered light keeps its colour";
}

TEST_F(HandlesLayerDraw, PassesSetTheirGLStateInOrderAndOnlyWhenThereIsSomethingToDraw) {
    const auto drawCalls = [this] { return recordGLCalls([this] { layer->draw(); }); };
    EXPECT_TRUE(drawCalls().empty()) << "no light: not even the depth buffer is cleared";
    addLight("/root/a", {2, 0, 0}, 2.0, kRed);
    addLight("/root/b", {2, 1, 0}, 2.0, kGreen);
    layer->setOption("Enabled", sorrel::intAttr(0));
    EXPECT_TRUE(drawCalls().empty()) << "switched off";
    layer->setOption("Enabled", sorrel::intAttr(1));

    answerPicksWith("/root/b");
    moveTo({0, 0});
    std::vector<GLCall> calls = drawCalls();
    ASSERT_GE(calls.size(), 7u);
    const std::vector<GLCall> opening = {
        glCall("glPushAttrib", 0xC604E), glCall("glDisable", GL_LIGHTING),
        glCall("glDisable", GL_TEXTURE_2D), glCall("glEnable", GL_LINE_SMOOTH),
        glCall("glClear", GL_DEPTH_BUFFER_BIT)};
    EXPECT_EQ(std::vector<GLCall>(calls.begin(), calls.begin() + 5), opening);
    EXPECT_EQ(callNames({calls.end() - 2, calls.end()}),
              (std::vector<std::string>{"glUseProgram", "glPopAttrib"}));
    EXPECT_EQ(calls[calls.size() - 2], glCall("glUseProgram", 0));
    EXPECT_EQ(countCalls(calls, "glClear"), 2) << "a second depth clear for the hovered light";
    EXPECT_EQ(countCalls(calls, "glBufferData"), 1) << "the connecting line alone is uploaded";
    EXPECT_NE(std::find(calls.begin(), calls.end(),
                        glCall("glBufferData", GL_ARRAY_BUFFER, 24, GL_STATIC_DRAW)),
              calls.end());
    EXPECT_EQ(countCalls(calls, "glScissor") + countCalls(calls, "glPointSize"), 0);
    EXPECT_NE(std::find(calls.begin(), calls.end(),
                        glCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)),
              calls.end());

    // Picking: the area's rows counted from the bottom, fat solid lines, no blending.
    calls = recordGLCalls([this] { layer->pickerDraw(10, 20, 1, 1, AttrRef()); });
    const std::vector<GLCall> pickingOpening = {
        glCall("glPushAttrib", 0xC604E),       glCall("glDisable", GL_LIGHTING),
        glCall("glDisable", GL_TEXTURE_2D),    glCall("glScissor", 10, 107, 1, 1),
        glCall("glEnable", GL_SCISSOR_TEST),   glCall("glDisable", GL_LINE_SMOOTH),
        glCall("glClear", GL_DEPTH_BUFFER_BIT)};
    ASSERT_GE(calls.size(), pickingOpening.size());
    EXPECT_EQ(std::vector<GLCall>(calls.begin(), calls.begin() + 7), pickingOpening);
    EXPECT_EQ(countCalls(calls, "glClear"), 1) << "hovering changes nothing in picking";
    EXPECT_EQ(countCalls(calls, "glBlendFunc") + countCalls(calls, "glBufferData"), 0);
    for (const GLCall& call : calls) {
        if (call.name == "glLineWidth" || call.name == "glPointSize") {
            EXPECT_EQ(call.args, std::vector<double>{10.0}) << call.name;
        }
    }
    EXPECT_EQ(countCalls(calls, "glPointSize"), 2) << "points for each light";

    // The next draw pass is back to thin lines before it draws anything.
    for (const GLCall& call : drawCalls()) {
        if (call.name == "glLineWidth") {
            EXPECT_EQ(call.args, std::vector<double>{1.0});
        }
    }
    delegate->sendSelection({"/root/b"});
    calls = drawCalls();
    EXPECT_EQ(countCalls(calls, "glClear"), 1) << "a selected light is not drawn, hovered or not";
    EXPECT_EQ(countCalls(calls, "glDrawElements"), 2) << "the other light's stem and head";
    viewport->pickHandler = nullptr;
    delegate->removeComponents();
    EXPECT_TRUE(drawCalls().empty()) << "no light component";
}

TEST_F(HandlesLayerDraw, CleanupGivesEveryGLObjectUpOnceAndSetupBuildsThemAgain) {
    addLight("/root/a", {2, 0, 0}, 2.0, kRed);
    layer->setOption("ViewportLayer.ExcludedLocationsPicking", strings({"/root/a"}));
    answerPicksWith("/root/a");
    moveTo({0, 0});
    const auto deletions = [](const std::vector<GLCall>& calls) {
        return countCalls(calls, "glDeleteBuffers") + countCalls(calls, "glDeleteVertexArrays") +
               countCalls(calls, "glDeleteProgram") + countCalls(calls, "glDeleteShader");
    };

    std::vector<GLCall> calls = recordGLCalls([this] { layer->cleanup(); });
    EXPECT_EQ(countCalls(calls, "glDeleteVertexArrays"), 4);
    EXPECT_EQ(countCalls(calls, "glDeleteProgram"), 2);
    EXPECT_EQ(deletions(recordGLCalls([this] { layer->cleanup(); })), 0) << "a second cleanup";
    ::testing::internal::CaptureStderr();
    const sorrel::RgbaImage afterCleanup = drawn();
    EXPECT_NE(::testing::internal::GetCapturedStderr().find(
                  "[ GLShaderProgram ] Cannot use shader program because it is invalid."),
              std::string::npos);
    EXPECT_EQ(afterCleanup.pixels, std::vector<std::uint8_t>(afterCleanup.pixels.size(), 0))
        << "no mesh is built, nothing is drawn";
    // Uniforms looked up on the deleted programs are GL errors; the pass goes on.
    while (glGetError() != GL_NO_ERROR) {
    }

    layer->setup();
    const PixelPosition head = offset(pixelOf({0, 0, 0}), kInsideHead);
    EXPECT_EQ(drawn().at(head.column, head.row), opaque(kRed)) << "setup again draws again";
    EXPECT_EQ(handles().getManipulatorScale(), kScale);
    EXPECT_EQ(handles().getExcludedLocations().size(), 1u);
    EXPECT_NE(handles().getHoveredLocation(), 0u);

    layer->cleanup();
    calls = recordGLCalls([this] { viewport->removeLayers(); });
    EXPECT_EQ(deletions(calls), 0) << "the destructor after cleanup deletes nothing again";
    viewport->pickHandler = nullptr;
}

TEST_F(HandlesLayerDraw, MissingShaderFilesAreReportedAndDrawingGoesOn) {
    layer->cleanup();
    setenv("SORREL_ROOT", "/nonexistent/", /* overwrite = */ 1);
    addLight("/root/a", {2, 0, 0}, 2.0, kRed);
    ::testing::internal::CaptureStderr();
    layer->setup();
    const std::vector<GLCall> calls = recordGLCalls([this] { layer->draw(); });
    const std::string said = ::testing::internal::GetCapturedStderr();
    for (const char* suffix : {".vert", ".geom", ".frag"}) {
        EXPECT_NE(said.find("[ GLShaderProgram ] Could not load shader from file '/nonexistent//"
                            "plugins/Resources/Core/Shaders/TransformManipulators/Manipulators" +
                            std::string(suffix) + "'."),
                  std::string::npos)
            << "the root is taken as it stands: " << said;
    }
    EXPECT_EQ(countCalls(calls, "glDrawElements"), 2)
        << "the meshes are built and drawn all the same";
}

}  // namespace
