// HandleMesh and the handle geometry: data worked out in floats, what each
// attribute slot holds, the GL calls of building, updating, drawing and
// releasing, and the state a draw leaves.

#include "handles/handle_mesh.h"

#include <GL/glew.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include "handles/handle_mesh_data.h"
#include "tests/gl/gl_call_recorder.h"
#include "tests/gl/gl_test.h"

using testing::ElementsAre;

namespace {

class HandleMeshes : public gl_testing::GLTest {};

void build(HandleMesh& mesh, const HandleMeshData& data) {
    mesh.build(data.positions, data.normals, data.indices, /* texCoords = */ {});
}

/// The floats that the vertex array a draw of `mesh` binds feeds to attribute
/// `slot`; none when the slot is off.
std::optional<std::vector<float>> attributeFloats(const HandleMesh& mesh, GLuint slot) {
    GLuint vertexArray = 0;
    for (const GLCall& call : recordGLCalls([&] { mesh.drawPoints(/* blend = */ false); }))
        if (call.name == "glBindVertexArray" && call.args[0] != 0)
            vertexArray = static_cast<GLuint>(call.args[0]);
    glBindVertexArray(vertexArray);
    GLint enabled = 0;
    GLint buffer = 0;
    glGetVertexAttribiv(slot, GL_VERTEX_ATTRIB_ARRAY_ENABLED, &enabled);
    glGetVertexAttribiv(slot, GL_VERTEX_ATTRIB_ARRAY_BUFFER_BINDING, &buffer);
    glBindVertexArray(0);
    if (enabled == GL_FALSE) return std::nullopt;
    GLint bytes = 0;
    glBindBuffer(GL_ARRAY_BUFFER, static_cast<GLuint>(buffer));
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &bytes);
    std::vector<float> floats(static_cast<std::size_t>(bytes) / sizeof(float));
    glGetBufferSubData(GL_ARRAY_BUFFER, 0, bytes, floats.data());
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return floats;
}

TEST_F(HandleMeshes, EachSlotHoldsItsOwnDataAndTextureCoordinatesOnlyWhenGiven) {
    const std::vector<Float3> positions = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    const std::vector<Float3> normals = {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}};
    HandleMesh textured;
    HandleMesh plain;
    textured.build(positions, normals, {0, 1, 2}, {{0.25f, 0.5f}, {0.75f, 1}, {0, 0.125f}});
    plain.build(positions, normals, {0, 1, 2}, /* texCoords = */ {});
    for (const HandleMesh* mesh : {&textured, &plain}) {
        EXPECT_EQ(attributeFloats(*mesh, 0), (std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, 0}));
        EXPECT_EQ(attributeFloats(*mesh, 1), (std::vector<float>{0, 0, 1, 0, 1, 0, 1, 0, 0}));
    }
    EXPECT_EQ(attributeFloats(textured, 2), (std::vector<float>{0.25f, 0.5f, 0.75f, 1, 0, 0.125f}));
    EXPECT_EQ(attributeFloats(plain, 2), std::nullopt) << "slot 2 stays off";
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

TEST_F(HandleMeshes, DrawsSetTheirStateForTheCallOnlyAndUpdatesReplaceTwoPoints) {
    HandleMesh stem;
    HandleMesh head;
    build(stem, arrowStemData());
    build(head, arrowHeadData());
    stem.setLineWidth(10);
    head.setPointSize(10);
    glEnable(GL_CULL_FACE);  // as the host may have it
    const auto calls = recordGLCalls([&] {
        stem.drawLines(/* blend = */ true);
        head.drawTriangles(/* blend = */ false);
        head.drawPoints(/* blend = */ false);
    });
    std::vector<GLCall> draws;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(draws),
                 [](const GLCall& call) { return call.name == "glDrawElements"; });
    EXPECT_THAT(draws, ElementsAre(glCall("glDrawElements", GL_LINES, 2, GL_UNSIGNED_INT),
                                   glCall("glDrawElements", GL_TRIANGLES, 3, GL_UNSIGNED_INT),
                                   glCall("glDrawElements", GL_POINTS, 3, GL_UNSIGNED_INT)));
    EXPECT_EQ(countCalls(calls, "glBlendFunc"), 1) << "blending for the blended draw alone";
    EXPECT_EQ(countCalls(calls, "glDisable"), 1) << "triangles show both faces";
    EXPECT_NE(std::find(calls.begin(), calls.end(), glCall("glLineWidth", 10.0f)), calls.end());
    EXPECT_NE(std::find(calls.begin(), calls.end(), glCall("glPointSize", 10.0f)), calls.end());
    // The host's state is back after each draw.
    GLfloat width = 0.0f;
    GLfloat size = 0.0f;
    GLint vertexArray = -1;
    glGetFloatv(GL_LINE_WIDTH, &width);
    glGetFloatv(GL_POINT_SIZE, &size);
    glGetIntegerv(GL_VERTEX_ARRAY_BINDING, &vertexArray);
    EXPECT_TRUE(width == 1.0f && size == 1.0f && vertexArray == 0);
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE) && !glIsEnabled(GL_BLEND));
    glDisable(GL_CULL_FACE);

    HandleMesh connector;
    build(connector, connectorLineData());
    connector.updatePositions({Float3{1.5f, -2.0f, 3.0f}, Float3{4.0f, 5.0f, -6.25f}});
    GLint arrayBuffer = -1;
    glGetIntegerv(GL_ARRAY_BUFFER_BINDING, &arrayBuffer);
    EXPECT_EQ(arrayBuffer, 0);
    EXPECT_EQ(attributeFloats(connector, 0), (std::vector<float>{1.5f, -2, 3, 4, 5, -6.25f}));
}

}  // namespace
