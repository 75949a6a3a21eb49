#include "host/viewer/line_batch.h"

#include <GL/glew.h>

namespace sorrel {

namespace {

constexpr GLuint kPositionSlot = 0;
constexpr GLuint kColorSlot = 1;
constexpr int kFloatsPerVertex = 6;  // position, then colour

void append(std::vector<float>& out, const Vec3& v) {
    out.push_back(static_cast<float>(v.x));
    out.push_back(static_cast<float>(v.y));
    out.push_back(static_cast<float>(v.z));
}

}  // namespace

LineBatch::LineBatch() {
    glGenVertexArrays(1, &vertexArray_);
    glBindVertexArray(vertexArray_);
    glGenBuffers(1, &buffer_);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    constexpr GLsizei stride = kFloatsPerVertex * sizeof(float);
    glVertexAttribPointer(kPositionSlot, 3, GL_FLOAT, GL_FALSE, stride, nullptr);
    glVertexAttribPointer(kColorSlot, 3, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(3 * sizeof(float)));
    glEnableVertexAttribArray(kPositionSlot);
    glEnableVertexAttribArray(kColorSlot);
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

LineBatch::~LineBatch() {
    glDeleteBuffers(1, &buffer_);
    glDeleteVertexArrays(1, &vertexArray_);
}

void LineBatch::add(const Vec3& a, const Vec3& b, const Vec3& color) {
    append(vertices_, a);
    append(vertices_, color);
    append(vertices_, b);
    append(vertices_, color);
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
