// The handles layer drawn on llvmpipe: handles where the projection puts them,
// the hovered light on top with its connecting line, and the GL calls of each
// pass and of setup and cleanup, in order.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/viewer/matrix.h"
#include "host/viewer/picking.h"
#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/handles_layer_fixture.h"

using handles_testing::kBackground;
using handles_testing::opaque;
using handles_testing::PixelPosition;
using sorrel::AttrRef;
using testing_support::strings;

namespace {

constexpr std::array<float, 3> kRed = {1.0f, 0.0f, 0.0f};
constexpr std::array<float, 3> kGreen = {0.0f, 1.0f, 0.0f};
/// At this scale one model unit spans 90 pixels: the head is 14.6 pixels long
/// and 14 wide, and the stem ends 51 pixels behind the tip.
constexpr double kScale = 1.5;
constexpr int kStemEnd = 51;
/// A pixel well inside the head, from the tip (the head opens to the right).
constexpr PixelPosition kInsideHead = {10, 2};

/// Whether any pixel of the rows near the tip's, between the columns `from`
/// and `to` pixels to its right, differs from the background.
bool anyPixelRightOf(const sorrel::RgbaImage& image, const PixelPosition& tip, int from, int to) {
    for (int row = tip.row - 2; row <= tip.row + 1; ++row)
        for (int column = tip.column + from; column <= std::min(tip.column + to, image.width - 1);
             ++column)
            if (image.at(column, row) != kBackground) return true;
    return false;
}
bool stemRunsBack(const sorrel::RgbaImage& image, const PixelPosition& tip) {
    return anyPixelRightOf(image, tip, 20, kStemEnd - 4);
}
bool pastStemEnd(const sorrel::RgbaImage& image, const PixelPosition& tip) {
    return anyPixelRightOf(image, tip, kStemEnd + 4, image.width);
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
    /// The drawn pixel inside the head of the handle whose tip is `tip`.
    handles_testing::Pixel headAt(const PixelPosition& tip) const {
        return drawn().at(tip.column + kInsideHead.column, tip.row + kInsideHead.row);
    }
    /// Lets the host answer every pick with `path` at depth 0.5.
    void answerPicksWith(const char* path) const {
        viewport->setPickHandler([path](const std::string&, std::int32_t, std::int32_t,
                                        std::int32_t, std::int32_t, bool, float* depth) {
            *depth = 0.5f;
            return sorrel::groupAttr(
                {{"1", sorrel::groupAttr({{"location", sorrel::stringAttr(path)}})}});
        });
    }
};

TEST_F(HandlesLayerDraw, HandlesSitWhereTheProjectionPutsThemAndTheHoveredOneShowsItsLine) {
    addLight("/root/a", {4, 0, 0}, 4.0, kRed);  // the light itself lies beyond the right edge
    addLight("/root/b", {1, 1, 0}, 2.0, kGreen);
    const PixelPosition tips[] = {pixelOf({0, 0, 0}), pixelOf({-1, 1, 0})};
    ASSERT_EQ(tips[0].column, gl_testing::kSurfaceSize / 2);

    sorrel::RgbaImage image = drawn();
    EXPECT_EQ(headAt(tips[0]), opaque(kRed));
    EXPECT_EQ(headAt(tips[1]), opaque(kGreen));
    EXPECT_EQ(image.at(tips[0].column - 4, tips[0].row + 2), kBackground)
        << "nothing before the tip";
    int headPixels = 0;  // a triangle 14.6 pixels long and 14 wide
    for (int row = tips[0].row - 10; row <= tips[0].row + 10; ++row)
        for (int column = tips[0].column; column < tips[0].column + 15; ++column)
            headPixels += image.at(column, row) == opaque(kRed) ? 1 : 0;
    EXPECT_NEAR(headPixels, 102, 10);
    for (const PixelPosition& tip : tips) {
        EXPECT_TRUE(stemRunsBack(image, tip)) << "the stem runs back towards the light";
        EXPECT_FALSE(pastStemEnd(image, tip)) << "and ends 3.5 head lengths behind the tip";
    }

    sorrel::Picking picking(*viewport, glContext());
    picking.install();
    moveTo({tips[0].column + kInsideHead.column, tips[0].row + kInsideHead.row});
    image = drawn();
    EXPECT_TRUE(stemRunsBack(image, tips[0]));
    EXPECT_TRUE(pastStemEnd(image, tips[0])) << "the hovered light's line runs on to the light";
    EXPECT_FALSE(pastStemEnd(image, tips[1])) << "the other keeps its stem";
    EXPECT_TRUE(stemRunsBack(image, tips[1]));
    EXPECT_EQ(headAt(tips[0]), opaque(kRed)) << "a hovered light keeps its colour";

    delegate->sendSelection({"/root/b"});
    EXPECT_EQ(headAt(tips[1]), kBackground) << "a selected light has no handle";
    EXPECT_EQ(headAt(tips[0]), opaque(kRed));
}

TEST_F(HandlesLayerDraw, HoveredLightLiesOnTopOfNearerHandles) {
    // Both tips land on the centre; the red one is nearer.
    addLight("/root/near", {2, 0, 1}, 2.0, kRed);
    addLight("/root/far", {2, 0, -1}, 2.0, kGreen);
    const PixelPosition tip = pixelOf({0, 0, 0});
    EXPECT_EQ(headAt(tip), opaque(kRed));

    // Left out of picking, the red handle lets the pointer find the green one.
    layer->setOption("ViewportLayer.ExcludedLocationsPicking", strings({"/root/near"}));
    sorrel::Picking picking(*viewport, glContext());
    picking.install();
    moveTo({tip.column + kInsideHead.column, tip.row + kInsideHead.row});
    EXPECT_EQ(handles().getHoveredLocation(),
              Tessera::Sorrel::ViewerAPI::hashOfText("/root/far").words[0]);
    EXPECT_EQ(viewport->dirtyCount(), 2u) << "the scale, then the hover";
    EXPECT_EQ(headAt(tip), opaque(kGreen));
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
    EXPECT_EQ(
        std::vector<GLCall>(calls.begin(), calls.begin() + 5),
        (std::vector<GLCall>{glCall("glPushAttrib", 0xC604E), glCall("glDisable", GL_LIGHTING),
                             glCall("glDisable", GL_TEXTURE_2D), glCall("glEnable", GL_LINE_SMOOTH),
                             glCall("glClear", GL_DEPTH_BUFFER_BIT)}));
    EXPECT_EQ(std::vector<GLCall>(calls.end() - 2, calls.end()),
              (std::vector<GLCall>{glCall("glUseProgram", 0), glCall("glPopAttrib")}));
    EXPECT_EQ(countCalls(calls, "glClear"), 2) << "a second depth clear for the hovered light";
    EXPECT_EQ(countCalls(calls, "glBufferData"), 1) << "the connecting line alone is uploaded";
    EXPECT_EQ(countCalls(calls, "glScissor") + countCalls(calls, "glPointSize"), 0);
    EXPECT_NE(std::find(calls.begin(), calls.end(),
                        glCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)),
              calls.end());

    // Picking: the area's rows counted from the bottom, fat solid lines, no blending.
    calls = recordGLCalls([this] { layer->pickerDraw(10, 20, 1, 1, AttrRef()); });
    ASSERT_GE(calls.size(), 7u);
    EXPECT_EQ(std::vector<GLCall>(calls.begin(), calls.begin() + 7),
              (std::vector<GLCall>{
                  glCall("glPushAttrib", 0xC604E), glCall("glDisable", GL_LIGHTING),
                  glCall("glDisable", GL_TEXTURE_2D), glCall("glScissor", 10, 107, 1, 1),
                  glCall("glEnable", GL_SCISSOR_TEST), glCall("glDisable", GL_LINE_SMOOTH),
                  glCall("glClear", GL_DEPTH_BUFFER_BIT)}));
    EXPECT_EQ(countCalls(calls, "glClear"), 1) << "hovering changes nothing in picking";
    EXPECT_EQ(countCalls(calls, "glBlendFunc") + countCalls(calls, "glBufferData"), 0);
    EXPECT_EQ(countCalls(calls, "glPointSize"), 2) << "points for each light";
    const auto sizes = [](const std::vector<GLCall>& pass) {
        std::set<double> pixels;
        for (const GLCall& call : pass)
            if (call.name == "glLineWidth" || call.name == "glPointSize")
                pixels.insert(call.args[0]);
        return pixels;
    };
    EXPECT_EQ(sizes(calls), std::set<double>{10.0});
    EXPECT_EQ(sizes(drawCalls()), std::set<double>{1.0}) << "the next draw pass is thin again";

    delegate->sendSelection({"/root/b"});
    calls = drawCalls();
    EXPECT_EQ(countCalls(calls, "glClear"), 1) << "a selected light is not drawn, hovered or not";
    EXPECT_EQ(countCalls(calls, "glDrawElements"), 2) << "the other light's stem and head";
    viewport->setPickHandler(nullptr);
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
    const std::vector<GLCall> calls = recordGLCalls([this] { layer->cleanup(); });
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
    EXPECT_EQ(headAt(pixelOf({0, 0, 0})), opaque(kRed)) << "setup again draws again";
    EXPECT_EQ(handles().getManipulatorScale(), kScale);
    EXPECT_EQ(handles().getExcludedLocations().size(), 1u);
    EXPECT_NE(handles().getHoveredLocation(), 0u);
    // A layer destroyed without cleanup still gives its GL objects up.
    const std::vector<GLCall> destroyed = recordGLCalls([this] { viewport->removeLayers(); });
    EXPECT_EQ(countCalls(destroyed, "glDeleteVertexArrays"), 4);
    EXPECT_EQ(countCalls(destroyed, "glDeleteProgram"), 2);
    viewport->setPickHandler(nullptr);
}

TEST_F(HandlesLayerDraw, MissingShaderFilesAreReportedAndDrawingGoesOn) {
    layer->cleanup();
    addLight("/root/a", {2, 0, 0}, 2.0, kRed);
    // The root is taken as it stands; without one the files lie below "/".
    const std::string stem = "plugins/Resources/Core/Shaders/TransformManipulators/Manipulators";
    for (const char* root : {"/nonexistent/", static_cast<const char*>(nullptr)}) {
        if (root != nullptr)
            setenv("SORREL_ROOT", root, /* overwrite = */ 1);
        else
            unsetenv("SORREL_ROOT");
        ::testing::internal::CaptureStderr();
        layer->setup();
        const std::vector<GLCall> calls = recordGLCalls([this] { layer->draw(); });
        const std::string said = ::testing::internal::GetCapturedStderr();
        for (const char* suffix : {".vert", ".geom", ".frag"}) {
            const std::string path = (root != nullptr ? root : "") + ("/" + stem) + suffix;
            EXPECT_NE(
                said.find("[ GLShaderProgram ] Could not load shader from file '" + path + "'."),
                std::string::npos)
                << said;
        }
        EXPECT_EQ(countCalls(calls, "glDrawElements"), 2)
            << "the meshes are built and drawn all the same";
        layer->cleanup();
    }
}

TEST_F(HandlesLayerDraw, HoveredLightsLineIsDashedEveryThreePixels) {
    addLight("/root/a", {2, 0, 0}, 4.0, kRed);
    answerPicksWith("/root/a");
    moveTo({0, 0});
    const sorrel::RgbaImage image = drawn();
    const PixelPosition tip = pixelOf({-2, 0, 0});
    const PixelPosition light = pixelOf({2, 0, 0});
    std::string dashes;  // '#' where the line covers a column, '.' where not
    for (int column = tip.column + kStemEnd; column < light.column - 2; ++column) {
        bool covered = false;
        for (int row = tip.row - 2; row <= tip.row + 1; ++row)
            covered = covered || image.at(column, row) != kBackground;
        dashes += covered ? '#' : '.';
    }
    // 0xff00ff at 0.4 pixels a bit: 3.2 pixels on, 3.2 off.
    EXPECT_EQ(dashes.find("#####"), std::string::npos) << dashes;
    EXPECT_EQ(dashes.find("....."), std::string::npos) << dashes;
    EXPECT_NE(dashes.find("#..."), std::string::npos) << dashes;
    viewport->setPickHandler(nullptr);
}

/// A handles layer as the host sets it up, options untouched.
using HandlesLayerUniforms = handles_testing::HandlesLayerGLTest;

TEST_F(HandlesLayerUniforms, EveryDrawGetsItsModeTheViewportAndAHandleOfConstantScreenSize) {
    // Looking away from the eye, the light stands nearer than its centre of interest.
    const sorrel::Vec3 centreOfInterest = {1, 0, -1};
    delegate->putLocation("/root/away", testing_support::lightAttributes(3.0),
                          sorrel::translationMatrix(1, 0, 2));
    const double eye[3] = {0.0, 0.0, handles_testing::kEyeDistance};
    const double target[3] = {0.0, 0.0, 0.0};
    for (const auto& [width, height] : {std::pair{640, 480}, std::pair{480, 640}}) {
        viewport->width = width;
        viewport->height = height;
        viewport->lookAt(eye, target);
        const auto draws = recordedDraws(recordGLCalls([this] { layer->draw(); }));
        ASSERT_EQ(draws.size(), 2u) << "stem and head";
        for (const RecordedDraw& draw : draws) {
            const bool lines = draw.primitive == GL_LINES;
            EXPECT_EQ(draw.uniform("mode"), std::vector<double>{lines ? 3.0 : 1.0});
            if (!lines) continue;
            EXPECT_EQ(draw.uniform("viewportSize"),
                      (std::vector<double>{1.0 * width, 1.0 * height}));
            EXPECT_EQ(draw.uniform("pattern"), std::vector<double>{0xff00ff});
            EXPECT_EQ(draw.uniform("factor"), std::vector<double>{0.4f});
        }
        // One unit of the handle spans 60 pixels on the screen at the centre of interest.
        const std::vector<double> world = draws[1].uniform("worldMatrix");
        ASSERT_EQ(world.size(), 16u);
        const double unit = std::hypot(world[0], world[1], world[2]);
        const sorrel::Matrix toScreen =
            sorrel::multiplyMatrices(viewport->view, viewport->projection);
        const double bottom = sorrel::transformPoint(centreOfInterest, toScreen).y;
        const double top =
            sorrel::transformPoint(centreOfInterest + sorrel::Vec3{0, unit, 0}, toScreen).y;
        EXPECT_NEAR((top - bottom) / 2.0 * height, 60.0, 1e-6) << width << " x " << height;
    }

    // Picking draws lines solid.
    for (const RecordedDraw& draw :
         recordedDraws(recordGLCalls([this] { layer->pickerDraw(0, 0, 1, 1, AttrRef()); }))) {
        if (draw.primitive == GL_LINES) {
            EXPECT_EQ(draw.uniform("pattern"), std::vector<double>{-1});
        }
    }
    viewport->clearPickedAttrs();
}

}  // namespace
