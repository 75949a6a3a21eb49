// The handle meshes drawn with the shipped shaders on llvmpipe, read back as
// pixels: where the projection puts them, exact picking colours, the stipple.

#include <GL/glew.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "handles/handle_mesh.h"
#include "handles/handle_mesh_data.h"
#include "support/gl_shader_program.h"
#include "tests/gl/gl_test.h"

namespace {

using gl_testing::kSurfaceSize;
using Matrix = std::array<double, 16>;  // row-vector layout, translation in 12..14
using Pixel = std::array<std::uint8_t, 4>;

constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
constexpr Pixel kBackground = {0, 0, 0, 0};
constexpr int kLinePattern = 0xff00ff;
constexpr int kSolidPattern = -1;
constexpr float kFactor = 0.4f;
constexpr int kSolidMode = 1;
constexpr int kLineMode = 3;
// Model units span 60 pixels at manipulator scale 1; NDC span 2 over the surface.
constexpr double kPixelsPerUnit = 60.0;
constexpr double kUnitScale = kPixelsPerUnit * 2.0 / kSurfaceSize;

Matrix multiply(const Matrix& a, const Matrix& b) {
    Matrix out{};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            for (int k = 0; k < 4; ++k) out[4 * r + c] += a[4 * r + k] * b[4 * k + c];
    return out;
}

Matrix scaleThenMove(double scale, double x, double y, double z) {
    return {scale, 0, 0, 0, 0, scale, 0, 0, 0, 0, scale, 0, x, y, z, 1};
}

/// Window position (pixels, y from the bottom) of a handle-space point.
std::array<double, 2> project(const Float3& point, const Matrix& worldViewProjection) {
    double clip[4] = {};
    for (int c = 0; c < 4; ++c) {
        clip[c] = point[0] * worldViewProjection[c] + point[1] * worldViewProjection[4 + c] +
                  point[2] * worldViewProjection[8 + c] + worldViewProjection[12 + c];
    }
    return {(clip[0] / clip[3] + 1.0) / 2.0 * kSurfaceSize,
            (clip[1] / clip[3] + 1.0) / 2.0 * kSurfaceSize};
}

int countPixels(const sorrel::RgbaImage& image, const Pixel& colour) {
    int count = 0;
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) count += image.at(x, y) == colour ? 1 : 0;
    return count;
}

class HandlePixels : public gl_testing::GLTest {
protected:
    void SetUp() override {
        GLTest::SetUp();
        gl_testing::buildHandlePrograms(solid, line);
        ASSERT_TRUE(solid.isLinked() && line.isLinked());
    }
    void TearDown() override {
        glUseProgram(0);
        GLTest::TearDown();
    }

    /// The uniforms a pass sets once, on both programs.
    void setPass(const Matrix& view, const Matrix& projection, int pattern) {
        for (GLShaderProgram* program : {&solid, &line}) {
            program->use();
            program->setUniform("viewMatrix", view.data());
            program->setUniform("projectionMatrix", projection.data());
            program->setUniform("viewportSize", static_cast<float>(kSurfaceSize),
                                static_cast<float>(kSurfaceSize));
        }
        solid.use();
        solid.setUniform("mode", kSolidMode);
        line.use();
        line.setUniform("mode", kLineMode);
        line.setUniform("pattern", pattern);
        line.setUniform("factor", kFactor);
    }

    static void setHandle(GLShaderProgram& program, const Matrix& world, const Pixel& colour) {
        program.use();
        program.setUniform("worldMatrix", world.data());
        program.setUniform("color", colour[0] / 255.0f, colour[1] / 255.0f, colour[2] / 255.0f,
                           colour[3] / 255.0f);
    }

    GLShaderProgram solid;
    GLShaderProgram line;
};

TEST_F(HandlePixels, ArrowHeadCoversThePixelsTheProjectionPredicts) {
    // A turned, scaled and moved arrow seen in perspective from z = 4.
    constexpr double kTurn = 0.5;  // radians about z
    const Matrix turn = {std::cos(kTurn),
                         std::sin(kTurn),
                         0,
                         0,
                         -std::sin(kTurn),
                         std::cos(kTurn),
                         0,
                         0,
                         0,
                         0,
                         1,
                         0,
                         0,
                         0,
                         0,
                         1};
    const Matrix world = multiply(turn, scaleThenMove(6.0, 0.3, -0.2, 0.5));
    const Matrix view = scaleThenMove(1.0, 0.0, 0.0, -4.0);
    constexpr double kNear = 0.1;
    constexpr double kFar = 100.0;
    constexpr double kHalfFieldOfView = 0.5235987755982988;  // 30 degrees, in radians
    const double focal = 1.0 / std::tan(kHalfFieldOfView);
    const Matrix projection = {focal,
                               0,
                               0,
                               0,
                               0,
                               focal,
                               0,
                               0,
                               0,
                               0,
                               (kFar + kNear) / (kNear - kFar),
                               -1,
                               0,
                               0,
                               2.0 * kFar * kNear / (kNear - kFar),
                               0};

    const Pixel colour = {51, 102, 153, 255};
    HandleMesh head;
    const HandleMeshData data = arrowHeadData();
    head.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
    setPass(view, projection, kLinePattern);
    setHandle(solid, world, colour);
    head.drawTriangles(/* blend = */ false);
    const sorrel::RgbaImage image = readPixels();

    const Matrix toClip = multiply(multiply(world, view), projection);
    std::array<std::array<double, 2>, 3> corner;
    for (int i = 0; i < 3; ++i) corner[i] = project(data.positions[i], toClip);
    // Signed distance in pixels from the edge a -> b, positive inside.
    const double winding = (corner[1][0] - corner[0][0]) * (corner[2][1] - corner[0][1]) -
                           (corner[1][1] - corner[0][1]) * (corner[2][0] - corner[0][0]);
    const auto edgeDistance = [&](int a, int b, double x, double y) {
        const double ex = corner[b][0] - corner[a][0];
        const double ey = corner[b][1] - corner[a][1];
        return std::copysign(1.0, winding) * (ex * (y - corner[a][1]) - ey * (x - corner[a][0])) /
               std::hypot(ex, ey);
    };
    constexpr double kEdgeMargin = 0.75;  // pixels either side of an edge are not judged
    int judgedInside = 0;
    int misplaced = 0;
    for (int row = 0; row < kSurfaceSize; ++row) {
        for (int x = 0; x < kSurfaceSize; ++x) {
            const double cx = x + 0.5;
            const double cy = kSurfaceSize - row - 0.5;
            const double nearest = std::min({edgeDistance(0, 1, cx, cy), edgeDistance(1, 2, cx, cy),
                                             edgeDistance(2, 0, cx, cy)});
            if (nearest > kEdgeMargin) {
                ++judgedInside;
                misplaced += image.at(x, row) == colour ? 0 : 1;
            } else if (nearest < -kEdgeMargin) {
                misplaced += image.at(x, row) == kBackground ? 0 : 1;
            }
        }
    }
    EXPECT_EQ(misplaced, 0) << "pixels clearly inside or outside the projected triangle";
    EXPECT_GT(judgedInside, 100) << "the arrow head should span a fair area";
    EXPECT_TRUE(image.savePng(::testing::TempDir() + "arrow_head.png"));
}

TEST_F(HandlePixels, PickingDrawLeavesExactlyTheIdColourWithWideLines) {
    // The id 0x01020304 as a colour.
    const Pixel id = {1, 2, 3, 4};
    constexpr std::uint32_t kPickingSize = 10;  // pixels
    constexpr double kTipY = 0.25;              // NDC
    const Matrix world = scaleThenMove(kUnitScale, 0.0, kTipY, 0.0);

    HandleMesh head;
    HandleMesh outline;
    HandleMesh stem;
    for (auto [mesh, data] :
         {std::pair{&head, arrowHeadData()}, std::pair{&outline, arrowOutlineData()},
          std::pair{&stem, arrowStemData()}}) {
        mesh->build(data.positions, data.normals, data.indices, /* texCoords = */ {});
    }
    head.setPointSize(kPickingSize);
    outline.setLineWidth(kPickingSize);
    stem.setLineWidth(kPickingSize);
    glDisable(GL_LINE_SMOOTH);
    setPass(kIdentity, kIdentity, kSolidPattern);
    setHandle(line, world, id);
    stem.drawLines(/* blend = */ false);
    outline.drawLines(/* blend = */ false);
    setHandle(solid, world, id);
    head.drawTriangles(/* blend = */ false);
    head.drawPoints(/* blend = */ false);
    const sorrel::RgbaImage image = readPixels();

    const int covered = countPixels(image, id);
    EXPECT_EQ(covered + countPixels(image, kBackground), kSurfaceSize * kSurfaceSize)
        << "every covered pixel carries the id exactly";
    const double stemPixels = -kStemEndY * kPixelsPerUnit;
    EXPECT_GT(covered, 0.9 * stemPixels * kPickingSize);

    // Across the stem, well behind the head, the line is as wide as asked.
    constexpr double kBehindTip = 25.0;  // pixels
    const int row = static_cast<int>((1.0 - kTipY) / 2.0 * kSurfaceSize + kBehindTip);
    int across = 0;
    for (int x = 0; x < kSurfaceSize; ++x) across += image.at(x, row) == id ? 1 : 0;
    EXPECT_NEAR(across, static_cast<int>(kPickingSize), 1);
}

TEST_F(HandlePixels, LineProgramStipplesByPatternAndFactor) {
    constexpr double kEnd = 0.9;  // NDC
    HandleMesh connector;
    const HandleMeshData data = connectorLineData();
    connector.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
    // Half a pixel off the middle, so that one row holds the line.
    const float y = 1.0f / kSurfaceSize;
    connector.updatePositions(
        {Float3{-static_cast<float>(kEnd), y, 0.0f}, Float3{static_cast<float>(kEnd), y, 0.0f}});
    glDisable(GL_LINE_SMOOTH);
    const Pixel colour = {255, 255, 255, 255};
    const int first = static_cast<int>((1.0 - kEnd) / 2.0 * kSurfaceSize) + 1;
    const int last = kSurfaceSize - first - 1;

    const auto coveredColumns = [&](int pattern) {
        glClear(GL_COLOR_BUFFER_BIT);
        setPass(kIdentity, kIdentity, pattern);
        setHandle(line, kIdentity, colour);
        connector.drawLines(/* blend = */ false);
        const sorrel::RgbaImage image = readPixels();
        std::vector<bool> covered;
        for (int x = first; x <= last; ++x) {
            bool any = false;
            for (int row = 0; row < kSurfaceSize; ++row) any = any || image.at(x, row) == colour;
            covered.push_back(any);
        }
        return covered;
    };

    const std::vector<bool> solidLine = coveredColumns(kSolidPattern);
    EXPECT_TRUE(std::all_of(solidLine.begin(), solidLine.end(), [](bool on) { return on; }));

    // 0xff00ff: eight bits on, eight off, each bit kFactor pixels long.
    const std::vector<bool> dashed = coveredColumns(kLinePattern);
    const double onShare =
        std::count(dashed.begin(), dashed.end(), true) / static_cast<double>(dashed.size());
    EXPECT_NEAR(onShare, 0.5, 0.1);
    constexpr int kLongestDash = 4;  // 8 bits * 0.4 pixels, rounded up
    int run = 0;
    for (const bool on : dashed) {
        run = on ? run + 1 : 0;
        EXPECT_LE(run, kLongestDash);
    }
}

}  // namespace
