#include "handles/handle_mesh.h"

#include <GL/glew.h>

namespace {

constexpr GLint kPositionSlot = 0;
constexpr GLint kNormalSlot = 1;
constexpr GLint kTexCoordSlot = 2;
constexpr int kBufferCount = 4;

/// Uploads tightly packed floats to `buffer` and points attribute `slot` at them.
template <typename Element>
void uploadAttribute(GLuint buffer, GLuint slot, const std::vector<Element>& data) {
    constexpr GLint components = static_cast<GLint>(std::tuple_size_v<Element>);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(data.size() * sizeof(Element)),
                 data.data(), GL_STATIC_DRAW);
    glVertexAttribPointer(slot, components, GL_FLOAT, GL_FALSE, /* stride = */ 0,
                          /* offset = */ nullptr);
    glEnableVertexAttribArray(slot);
}

void deleteBuffer(GLuint& buffer) {
    if (buffer == 0) return;
    glDeleteBuffers(1, &buffer);
    buffer = 0;
}

}  // namespace

HandleMesh::~HandleMesh() { release(); }

void HandleMesh::build(const std::vector<Float3>& positions, const std::vector<Float3>& normals,
                       const std::vector<std::uint32_t>& indices,
                       const std::vector<Float2>& texCoords) {
    if (initialised) return;
    glGenVertexArrays(1, &vertexArray);
    glBindVertexArray(vertexArray);
    GLuint buffers[kBufferCount] = {};
    glGenBuffers(kBufferCount, buffers);
    positionBuffer = buffers[0];
    normalBuffer = buffers[1];
    texCoordBuffer = buffers[2];
    indexBuffer = buffers[3];

    uploadAttribute(positionBuffer, kPositionSlot, positions);
    uploadAttribute(normalBuffer, kNormalSlot, normals);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
    glBufferData(GL_ELEMENT_ARRAY_BUFFER,
                 static_cast<GLsizeiptr>(indices.size() * sizeof(std::uint32_t)), indices.data(),
                 GL_STATIC_DRAW);
    if (!texCoords.empty()) uploadAttribute(texCoordBuffer, kTexCoordSlot, texCoords);

    // The vertex array records the element binding: unbind it before the buffers.
    glBindVertexArray(0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);

    vertexCount = static_cast<std::uint32_t>(positions.size());
    indexCount = static_cast<std::uint32_t>(indices.size());
    initialised = true;
}

void HandleMesh::release() {
    deleteBuffer(positionBuffer);
    deleteBuffer(normalBuffer);
    deleteBuffer(indexBuffer);
    deleteBuffer(texCoordBuffer);
    // Name 0 is never a vertex array; not asking GL about it keeps an unbuilt
    // mesh free of GL calls, so it can be destroyed without a context.
    if (vertexArray != 0 && glIsVertexArray(vertexArray) != GL_FALSE) {
        glDeleteVertexArrays(1, &vertexArray);
        vertexArray = 0;
    }
    initialised = false;
}

void HandleMesh::updatePositions(const std::array<Float3, 2>& data) {
    if (!initialised) return;
    glBindBuffer(GL_ARRAY_BUFFER, positionBuffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof data, data.data(), GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

template <typename OwnStep>
void HandleMesh::drawElements(unsigned int attributeBit, unsigned int primitive, bool blend,
                              OwnStep ownStep) const {
    if (!initialised) return;
    glPushAttrib(GL_COLOR_BUFFER_BIT | attributeBit);
    if (blend) {
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    }
    ownStep();
    glBindVertexArray(vertexArray);
    glDrawElements(primitive, static_cast<GLsizei>(indexCount), GL_UNSIGNED_INT,
                   /* indices = */ nullptr);
    glBindVertexArray(0);
    glPopAttrib();
}

void HandleMesh::drawTriangles(bool blend) const {
    drawElements(GL_POLYGON_BIT, GL_TRIANGLES, blend, [] { glDisable(GL_CULL_FACE); });
}

void HandleMesh::drawLines(bool blend) const {
    drawElements(GL_LINE_BIT, GL_LINES, blend,
                 [this] { glLineWidth(static_cast<GLfloat>(lineWidth)); });
}

void HandleMesh::drawPoints(bool blend) const {
    drawElements(GL_POINT_BIT, GL_POINTS, blend,
                 [this] { glPointSize(static_cast<GLfloat>(pointSize)); });
}
