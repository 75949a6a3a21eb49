// The line program drawn on llvmpipe, read back as pixels: the stipple, and
// smoothed lines that stay in place however many a pass draws.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "handles/handle_mesh.h"
#include "handles/handle_mesh_data.h"
#include "support/gl_shader_program.h"
#include "tests/gl/gl_test.h"

namespace {

using gl_testing::kSurfaceSize;
using Matrix = std::array<double, 16>;  // row-vector layout, translation in 12..14
using Pixel = std::array<std::uint8_t, 4>;
using Window = std::array<double, 2>;  // pixels, y from the bottom

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr Pixel kBackground = {0, 0, 0, 0};
constexpr Pixel kWhite = {255, 255, 255, 255};
constexpr int kDrawPattern = 0xff00ff;
constexpr int kSolidPattern = -1;
/// Tips (NDC) of stems far apart in rows and columns, and their scale.
constexpr std::array<Window, 2> kStemTips = {{{-0.5, 0.5}, {0.5, -0.25}}};
constexpr double kStemScale = 0.5;

Matrix scaleThenMove(double scale, double x, double y, double z) {
    return {scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, x, y, z, 1};
}

/// Window position of a point in normalised device coordinates.
Window toWindow(double x, double y) {
    return {(x + 1.0) / 2.0 * kSurfaceSize, (y + 1.0) / 2.0 * kSurfaceSize};
}

/// Calls `visit(pixel, centre)` for every pixel of `image`.
template <typename Visit>
void forEachPixel(const sorrel::RgbaImage& image, Visit visit) {
    for (int row = 0; row < kSurfaceSize; ++row)
        for (int column = 0; column < kSurfaceSize; ++column)
            visit(image.at(column, row), Window{column + 0.5, kSurfaceSize - row - 0.5});
}

void build(HandleMesh& mesh, const HandleMeshData& data) {
    mesh.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
}

class HandlePixels : public gl_testing::GLTest {
protected:
    /// Lit pixels within reach of each stem, and lit pixels near none.
    struct StemCoverage {
        std::array<int, kStemTips.size()> near{};
        int stray = 0;
    };

    void SetUp() override {
        GLTest::SetUp();
        GLShaderProgram solid;
        gl_testing::buildHandlePrograms(solid, line);
        ASSERT_TRUE(line.isLinked());
    }
    void TearDown() override {
        glUseProgram(0);
        GLTest::TearDown();
    }

    /// The uniforms a pass sets once on the line program; NDC are world units.
    void setPass(int pattern) {
        line.use();
        line.setUniform("viewMatrix", kIdentity.data());
        line.setUniform("projectionMatrix", kIdentity.data());
        line.setUniform("viewportSize", float{kSurfaceSize}, float{kSurfaceSize});
        line.setUniform("mode", 3);
        line.setUniform("pattern", pattern);
        line.setUniform("factor", 0.4f);
    }

    static void setHandle(GLShaderProgram& program, const Matrix& world, const Pixel& colour) {
        program.use();
        program.setUniform("worldMatrix", world.data());
        program.setUniform("color", colour[0] / 255.0f, colour[1] / 255.0f, colour[2] / 255.0f,
                           colour[3] / 255.0f);
    }

    /// Draws a stem at each of kStemTips with `program`, smoothed and blended as
    /// the draw pass does, and judges the picture.
    static StemCoverage drawStems(GLShaderProgram& program) {
        constexpr double kReach = 2.0;  // pixels that smoothing may add around a line
        HandleMesh stem;
        build(stem, arrowStemData());
        glClear(GL_COLOR_BUFFER_BIT);
        glEnable(GL_LINE_SMOOTH);
        for (const Window& tip : kStemTips) {
            setHandle(program, scaleThenMove(kStemScale, tip[0], tip[1], 0.0), kWhite);
            stem.drawLines(/* blend = */ true);
        }
        glDisable(GL_LINE_SMOOTH);

        StemCoverage seen;
        forEachPixel(readPixels(), [&](const Pixel& pixel, const Window& at) {
            if (pixel == kBackground) return;
            bool nearOne = false;
            for (std::size_t i = 0; i < kStemTips.size(); ++i) {
                const Window tip = toWindow(kStemTips[i][0], kStemTips[i][1]);
                const Window end =
                    toWindow(kStemTips[i][0], kStemTips[i][1] + kStemEndY * kStemScale);
                if (std::abs(at[0] - tip[0]) <= kReach && at[1] <= tip[1] + kReach &&
                    at[1] >= end[1] - kReach) {
                    ++seen.near[i];
                    nearOne = true;
                }
            }
            seen.stray += nearOne ? 0 : 1;
        });
        return seen;
    }

    GLShaderProgram line;
};

TEST_F(HandlePixels, LineProgramStipplesByPatternAndFactor) {
    constexpr float kEnd = 0.9f;  // NDC
    HandleMesh connector;
    build(connector, connectorLineData());
    // Half a pixel off the middle, so that one row holds the line.
    const float y = 1.0f / kSurfaceSize;
    connector.updatePositions({Float3{-kEnd, y, 0.0f}, Float3{kEnd, y, 0.0f}});
    const auto coveredColumns = [&](int pattern) {
        glClear(GL_COLOR_BUFFER_BIT);
        setPass(pattern);
        setHandle(line, kIdentity, kWhite);
        connector.drawLines(/* blend = */ false);
        std::vector<bool> covered(kSurfaceSize, false);
        forEachPixel(readPixels(), [&](const Pixel& pixel, const Window& at) {
            if (pixel == kWhite) covered[static_cast<std::size_t>(at[0])] = true;
        });
        const int first = static_cast<int>((1.0 - kEnd) / 2.0 * kSurfaceSize) + 1;
        return std::vector<bool>(covered.begin() + first, covered.end() - first - 1);
    };

    const std::vector<bool> solidLine = coveredColumns(kSolidPattern);
    EXPECT_EQ(std::count(solidLine.begin(), solidLine.end(), false), 0);
    // 0xff00ff: eight bits on, eight off, each bit 0.4 pixels long.
    const std::vector<bool> dashed = coveredColumns(kDrawPattern);
    EXPECT_NEAR(std::count(dashed.begin(), dashed.end(), true) / double(dashed.size()), 0.5, 0.1);
    constexpr int kLongestDash = 4;  // 8 bits * 0.4 pixels, rounded up
    int run = 0;
    for (const bool on : dashed) {
        run = on ? run + 1 : 0;
        EXPECT_LE(run, kLongestDash);
    }
}

TEST_F(HandlePixels, EverySmoothedStemOfAPassStaysWhereTheProjectionPutsIt) {
    setPass(kDrawPattern);
    const StemCoverage seen = drawStems(line);
    for (const int near : seen.near) EXPECT_GE(near, -kStemEndY * kStemScale * kSurfaceSize / 4);
    EXPECT_EQ(seen.stray, 0) << "no stem runs on beyond its end";
}

// The fault is the driver's, shown with a pass-through geometry stage: each
// smoothed draw of a program after its first loses its vertices, unless the
// stage already writes the location that smoothing adds for itself (the first
// one here, as the fragment stage has no input). Unread, `slot` is linked away
// unless it is named for transform feedback.
TEST_F(HandlePixels, SmoothingNeedsItsSlotKeptByAnyGeometryStage) {
    const char* const vertex = R"(layout(location = 0) in vec3 position;
        uniform dmat4 worldMatrix;
        void main() { gl_Position = vec4(worldMatrix * dvec4(position, 1.0)); })";
    const char* const geometry = R"(layout(lines) in;
        layout(line_strip, max_vertices = 2) out;
        SLOT out vec4 slot;
        void main() {
            for (int i = 0; i < 2; ++i) {
                gl_Position = gl_in[i].gl_Position;
                slot = vec4(0.0);
                EmitVertex();
            }
        })";
    const char* const fragment = R"(uniform vec4 color;
        out vec4 fragmentColor;
        void main() { fragmentColor = color; })";
    const auto drawnWith = [&](const std::string& slot) {
        const std::string header = "#version 440 core\n#define SLOT " + slot + "\n";
        GLShaderProgram program;
        program.addShader(gl_testing::writeTempFile("plain.vert", header + vertex),
                          GL_VERTEX_SHADER);
        program.addShader(gl_testing::writeTempFile("plain.geom", header + geometry),
                          GL_GEOMETRY_SHADER);
        program.addShader(gl_testing::writeTempFile("plain.frag", header + fragment),
                          GL_FRAGMENT_SHADER);
        program.link();
        return drawStems(program);
    };

    const StemCoverage kept = drawnWith("layout(location = 0, xfb_buffer = 0, xfb_offset = 0)");
    for (const int near : kept.near) EXPECT_GT(near, 0);
    EXPECT_EQ(kept.stray, 0);
    const StemCoverage lost = drawnWith("");
    EXPECT_GT(lost.near[0], 0) << "a program's first draw comes out right";
    if (lost.near[1] > 0 && lost.stray == 0)
        GTEST_SKIP() << "this driver draws them all: the slot that Manipulators.geom keeps is "
                        "no longer needed";
}

}  // namespace
