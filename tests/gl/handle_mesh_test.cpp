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
    EXPECT_EQ(bitsOf(arrowStemData().positions[1][1]), 0xBF1126EAu)
        << "the float product, not the float nearest -0.567";
    EXPECT_THAT(arrowOutlineData().indices, ElementsAre(0, 1, 1, 2, 2, 0));
}

TEST_F(HandleMeshes, GLIsCalledOnlyBetweenBuildAndReleaseAndASecondBuildChangesNothing) {
    HandleMesh mesh;
    const auto unbuilt = recordGLCalls([&] {
        mesh.updatePositions({Float3{1, 2, 3}, Float3{4, 5, 6}});
        mesh.drawLines(true);
        mesh.drawPoints(false);
        mesh.release();
    });
    EXPECT_TRUE(unbuilt.empty());

    build(mesh, arrowOutlineData());
    EXPECT_EQ(mesh.getVertexCount(), 3u);
    EXPECT_EQ(mesh.getIndexCount(), 6u);
    EXPECT_TRUE(recordGLCalls([&] { build(mesh, arrowStemData()); }).empty());
    EXPECT_EQ(mesh.getIndexCount(), 6u) << "a built mesh ignores a second build";

    mesh.setLineWidth(4);
    const auto released = recordGLCalls([&] {
        mesh.release();
        mesh.release();
    });
    EXPECT_THAT(callNames(released),
                ElementsAre("glDeleteBuffers", "glDeleteBuffers", "glDeleteBuffers",
                            "glDeleteBuffers", "glIsVertexArray", "glDeleteVertexArrays"));
    EXPECT_FALSE(mesh.isBuilt());
    build(mesh, arrowStemData());
    EXPECT_EQ(mesh.getIndexCount(), 2u) << "a released mesh builds afresh";
    EXPECT_EQ(mesh.getLineWidth(), 4u) << "release keeps the sizes";
}

TEST_F(HandleMeshes, DrawsPushTheirStateForTheCallAndUpdatesUploadTwoPoints) {
    HandleMesh stem;
    HandleMesh head;
    build(stem, arrowStemData());
    build(head, arrowHeadData());
    stem.setLineWidth(10);
    head.setPointSize(10);
    const auto blended = recordGLCalls([&] { stem.drawLines(true); });
    ASSERT_THAT(
        callNames(blended),
        ElementsAre("glPushAttrib", "glEnable", "glBlendFunc", "glLineWidth", "glBindVertexArray",
                    "glDrawElements", "glBindVertexArray", "glPopAttrib"));
    EXPECT_EQ(blended[0], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_LINE_BIT));
    EXPECT_EQ(blended[1], glCall("glEnable", GL_BLEND));
    EXPECT_EQ(blended[2], glCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA));
    EXPECT_EQ(blended[3], glCall("glLineWidth", 10.0f));
    EXPECT_EQ(blended[5], glCall("glDrawElements", GL_LINES, 2, GL_UNSIGNED_INT));
    EXPECT_EQ(blended[6], glCall("glBindVertexArray", 0));

    // Without blend, each draw is push, own step, bind, draw, unbind, pop.
    const auto unblended = recordGLCalls([&] {
        head.drawTriangles(false);
        head.drawPoints(false);
    });
    ASSERT_EQ(unblended.size(), 12u);
    EXPECT_EQ(unblended[0], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_POLYGON_BIT));
    EXPECT_EQ(unblended[1], glCall("glDisable", GL_CULL_FACE));
    EXPECT_EQ(unblended[3], glCall("glDrawElements", GL_TRIANGLES, 3, GL_UNSIGNED_INT));
    EXPECT_EQ(unblended[6], glCall("glPushAttrib", GL_COLOR_BUFFER_BIT | GL_POINT_BIT));
    EXPECT_EQ(unblended[7], glCall("glPointSize", 10.0f));
    EXPECT_EQ(unblended[9], glCall("glDrawElements", GL_POINTS, 3, GL_UNSIGNED_INT));

    // The connector's two points go up as 24 bytes, and the buffer is unbound.
    HandleMesh connector;
    build(connector, connectorLineData());
    const auto update = recordGLCalls([&] {
        connector.updatePositions({Float3{1.5f, -2.0f, 3.0f}, Float3{4.0f, 5.0f, -6.25f}});
    });
    ASSERT_EQ(update.size(), 3u);
    EXPECT_EQ(update[1], glCall("glBufferData", GL_ARRAY_BUFFER, 24, GL_STATIC_DRAW));
    EXPECT_EQ(update[2], glCall("glBindBuffer", GL_ARRAY_BUFFER, 0));
}

}  // namespace
