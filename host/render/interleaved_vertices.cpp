#include "host/render/interleaved_vertices.h"

#include <GL/glew.h>

namespace sorrel {

namespace {
constexpr GLuint kFirstSlot = 0;
constexpr GLuint kSecondSlot = 1;
constexpr GLint kTriple = 3;
}  // namespace

void appendTriple(std::vector<float>& vertices, const Vec3& v) {
    vertices.push_back(static_cast<float>(v.x));
    vertices.push_back(static_cast<float>(v.y));
    vertices.push_back(static_cast<float>(v.z));
}

void describeInterleavedVertices() {
    constexpr GLsizei stride = kFloatsPerVertex * sizeof(float);
    glVertexAttribPointer(kFirstSlot, kTriple, GL_FLOAT, GL_FALSE, stride, nullptr);
    glVertexAttribPointer(kSecondSlot, kTriple, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(kTriple * sizeof(float)));
    glEnableVertexAttribArray(kFirstSlot);
    glEnableVertexAttribArray(kSecondSlot);
}

}  // namespace sorrel
