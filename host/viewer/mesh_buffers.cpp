#include "host/viewer/mesh_buffers.h"

#include <GL/glew.h>

#include <vector>

namespace sorrel {

namespace {

constexpr GLuint kPositionSlot = 0;
constexpr GLuint kNormalSlot = 1;
constexpr int kFloatsPerVertex = 6;  // position, then normal

void append(std::vector<float>& out, const Vec3& v) {
    out.push_back(static_cast<float>(v.x));
    out.push_back(static_cast<float>(v.y));
    out.push_back(static_cast<float>(v.z));
}

}  // namespace

MeshBuffers::MeshBuffers(const Mesh& mesh) {
    const std::vector<Vec3>& points = mesh.points();
    const std::vector<Vec3>& normals = mesh.pointNormals();
    std::vector<float> vertices;
    for (const auto& corners : mesh.triangleCorners()) {
        const Vec3 face = normalizedOrZero(cross(points[corners[1]] - points[corners[0]],
                                                 points[corners[2]] - points[corners[0]]));
        for (const std::uint32_t corner : corners) {
            append(vertices, points[corner]);
            append(vertices, normals.empty() ? face : normals[corner]);
        }
    }
    vertexCount_ = vertices.size() / kFloatsPerVertex;

    glGenVertexArrays(1, &vertexArray_);
    glBindVertexArray(vertexArray_);
    glGenBuffers(1, &buffer_);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size() * sizeof(float)),
                 vertices.data(), GL_STATIC_DRAW);
    constexpr GLsizei stride = kFloatsPerVertex * sizeof(float);
    glVertexAttribPointer(kPositionSlot, 3, GL_FLOAT, GL_FALSE, stride, nullptr);
    glVertexAttribPointer(kNormalSlot, 3, GL_FLOAT, GL_FALSE, stride,
                          reinterpret_cast<const void*>(3 * sizeof(float)));
    glEnableVertexAttribArray(kPositionSlot);
    glEnableVertexAttribArray(kNormalSlot);
    glBindVertexArray(0);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

MeshBuffers::~MeshBuffers() {
    glDeleteBuffers(1, &buffer_);
    glDeleteVertexArrays(1, &vertexArray_);
}

void MeshBuffers::draw() const {
    glBindVertexArray(vertexArray_);
    glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(vertexCount_));
    glBindVertexArray(0);
}

}  // namespace sorrel
