#include "host/render/line_batch.h"

#include <GL/glew.h>

#include "host/render/interleaved_vertices.h"

namespace sorrel {

LineBatch::LineBatch() {
    glGenVertexArrays(1, &vertexArray_);
    glBindVertexArray(vertexArray_);
    glGenBuffers(1, &buffer_);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    describeInterleavedVertices();
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

LineBatch::~LineBatch() {
    glDeleteBuffers(1, &buffer_);
    glDeleteVertexArrays(1, &vertexArray_);
}

void LineBatch::add(const Vec3& a, const Vec3& b, const Vec3& color) {
    appendTriple(vertices_, a);
    appendTriple(vertices_, color);
    appendTriple(vertices_, b);
    appendTriple(vertices_, color);
}

void LineBatch::addLoop(const std::vector<Vec3>& points, const Vec3& color) {
    for (std::size_t i = 0; i < points.size(); ++i)
        add(points[i], points[(i + 1) % points.size()], color);
}

void LineBatch::draw() {
    if (vertices_.empty()) return;
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices_.size() * sizeof(float)),
                 vertices_.data(), GL_STREAM_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindVertexArray(vertexArray_);
    glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(vertices_.size() / kFloatsPerVertex));
    glBindVertexArray(0);
}

}  // namespace sorrel
