// HandleMesh and the handle geometry: data worked out in floats, the GL calls
// of building, updating, drawing and releasing, and the state a draw leaves.

#include "handles/handle_mesh.h"

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>

#include "handles/handle_mesh_data.h"
#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/gl_test.h"

using testing::ElementsAre;

namespace {

class HandleMeshes : public gl_testing::GLTest {};

std::uint32_t bitsOf(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

void build(HandleMesh& mesh, const HandleMeshData& data) {
    mesh.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
}

TEST(HandleGeometry, ArrowPointsAreWorkedOutInFloats) {
    const Float3 right = rightBaseCorner();
    const Float3 left = leftBaseCorner();
    EXPECT_EQ(bitsOf(right[1]), 0xBE25E354u) << "-0.162f";
    EXPECT_EQ(right[0], -left[0]) << "mirror images";
    EXPECT_EQ(right[1], left[1]);
    EXPECT_NEAR(right[0], 0.0779423f, 1e-7f);

    const HandleMeshData stem = arrowStemData();
    EXPECT_EQ(bitsOf(stem.positions[1][1]), 0xBF1126EAu)
        << "the float product, not the float nearest -0.567";
    EXPECT_EQ(stem.positions[0], (Float3{0.0f, 0.0f, 0.0f}));

    for (const HandleMeshData& data :
         {arrowHeadData(), arrowOutlineData(), stem, connectorLineData()}) {
        EXPECT_EQ(data.normals.size(), data.positions.size());
        for (const Float3& normal : data.normals) EXPECT_EQ(normal, (Float3{0.0f, 0.0f, 1.0f}));
    }
    EXPECT_THAT(arrowOutlineData().indices, ElementsAre(0, 1, 1, 2, 2, 0));
}

TEST_F(HandleMeshes, BuiltMeshesCountTheirDataAndBuildOnce) {
    HandleMesh head;
    HandleMesh outline;
    HandleMesh stem;
    HandleMesh connector;
    build(head, arrowHeadData());
    build(outline, arrowOutlineData());
    build(stem, arrowStemData());
    build(connector, connectorLineData());
    EXPECT_EQ(head.getVertexCount(), 3u);
    EXPECT_EQ(head.getIndexCount(), 3u);
    EXPECT_EQ(outline.getVertexCount(), 3u);
    EXPECT_EQ(outline.getIndexCount(), 6u);
    EXPECT_EQ(stem.getIndexCount(), 2u);
    EXPECT_EQ(connector.getVertexCount(), 2u);

    const auto again = recordGLCalls([&] { build(head, arrowOutlineData()); });
    EXPECT_TRUE(again.empty());
    EXPECT_EQ(head.getIndexCount(), 3u) << "a built mesh ignores a second build";
}

TEST_F(HandleMeshes, UnbuiltMeshMakesNoGLCall) {
    HandleMesh mesh;
    const auto calls = recordGLCalls([&] {
        mesh.updatePositions({Float3{1, 2, 3}, Float3{4, 5, 6}});
        mesh.drawLines(true);
        mesh.drawTriangles(true);
        mesh.drawPoints(false);
        mesh.release();
    });
    EXPECT_TRUE(calls.empty());
    EXPECT_FALSE(mesh.isBuilt());
}

TEST_F(HandleMeshes, ReleaseDeletesEverythingOnceAndBuildStartsAfresh) {
    HandleMesh mesh;
    build(mesh, arrowStemData());
    const auto calls = recordGLCalls([&] {
        mesh.release();
        mesh.release();
    });
    EXPECT_THAT(callNames(calls),
                ElementsAre("glDeleteBuffers", "glDeleteBuffers", "glDeleteBuffers",
                            "glDeleteBuffers", "glIsVertexArray", "glDeleteVertexArrays"));
    EXPECT_FALSE(mesh.isBuilt());

    mesh.setLineWidth(4);
    build(mesh, arrowHeadData());
    EXPECT_EQ(mesh.getIndexCount(), 3u);
    EXPECT_EQ(mesh.getLineWidth(), 4u) << "release keeps the sizes";
}

TEST_F(HandleMeshes, UpdatePositionsReplacesTheTwoPoints) {
    HandleMesh connector;
    build(connector, connectorLineData());
    const std::array<Float3, 2> points = {Float3{1.5f, -2.0f, 3.0f}, Float3{4.0f, 5.0f, -6.25f}};
    const auto calls = recordGLCalls([&] { connector.updatePositions(points); });
    ASSERT_THAT(callNames(calls), ElementsAre("glBindBuffer", "glBufferData", "glBindBuffer"));
    EXPECT_EQ(calls[1], glCall("glBufferData", GL_ARRAY_BUFFER, 24, GL_STATIC_DRAW));
    EXPECT_EQ(calls[2], glCall("glBindBuffer", GL_ARRAY_BUFFER, 0));

    std::array<Float3, 2> stored = {};
    glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(calls[0].args[1]));
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof stored, stored.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    EXPECT_EQ(stored, points);
}

TEST_F(HandleMeshes, DrawsSetTheirStateForTheCallOnly) {
    HandleMesh stem;
    build(stem, arrowStemData());
    stem.setLineWidth(10);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ZERO);

    const auto blended = recordGLCalls([&] { stem.drawLines(true); });
    EXPECT_THAT(
        callNames(blended),
        ElementsAre("glPushAttrib", "glEnable", "glBlendFunc", "glLineWidth", "glBindVertexArray",
                    "glDrawElements", "glBindVertexArray", "glPopAttrib"));
    EXPECT_EQ(blended[0], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_LINE_BIT));
    EXPECT_EQ(blended[1], glCall("glEnable", GL_BLEND));
    EXPECT_EQ(blended[2], glCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
    EXPECT_EQ(blended[3], glCall("glLineWidth", 10.0f));
    EXPECT_EQ(blended[5], glCall("glDrawElements", GL_LINES, 2, GL_UNSIGNED_INT));
    EXPECT_EQ(blended[6], glCall("glBindVertexArray", 0));

    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    GLint source = 0;
    glGetIntegerv(GL_BLEND_SRC_RGB, &source);
    EXPECT_EQ(source, GL_ONE);
    GLfloat width = 0.0f;
    glGetFloatv(GL_LINE_WIDTH, &width);
    EXPECT_EQ(width, 1.0f);

    HandleMesh head;
    build(head, arrowHeadData());
    head.setPointSize(10);
    const auto unblended = recordGLCalls([&] {
        head.drawTriangles(false);
        head.drawPoints(false);
    });
    EXPECT_EQ(unblended[0], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_POLYGON_BIT));
    EXPECT_EQ(unblended[1], glCall("glDisable", GL_CULL_FACE));
    EXPECT_EQ(unblended[6], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_POINT_BIT));
    EXPECT_EQ(unblended[7], glCall("glPointSize", 10.0f));
    EXPECT_EQ(countCalls(unblended, "glEnable") + countCalls(unblended, "glBlendFunc"), 0)
        << "no blend, no blending state touched";
}

}  // namespace
