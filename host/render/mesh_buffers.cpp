#include "host/render/mesh_buffers.h"

#include <GL/glew.h>

#include <vector>

#include "host/render/interleaved_vertices.h"

namespace sorrel {

MeshBuffers::MeshBuffers(const Mesh& mesh) {
    const std::vector<Vec3>& points = mesh.points();
    const std::vector<Vec3>& normals = mesh.pointNormals();
    std::vector<float> vertices;
    for (const auto& corners : mesh.triangleCorners()) {
        const Vec3 face = normalizedOrZero(cross(points[corners[1]] - points[corners[0]],
                                                 points[corners[2]] - points[corners[0]]));
        for (const std::uint32_t corner : corners) {
            appendTriple(vertices, points[corner]);
            appendTriple(vertices, normals.empty() ? face : normals[corner]);
        }
    }
    vertexCount_ = vertices.size() / kFloatsPerVertex;

    glGenVertexArrays(1, &vertexArray_);
    glBindVertexArray(vertexArray_);
    glGenBuffers(1, &buffer_);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    glBufferData(GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(vertices.size() * sizeof(float)),
                 vertices.data(), GL_STATIC_DRAW);
    describeInterleavedVertices();
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
