#pragma once
// A mesh of the scene on the GPU: one vertex array with positions and shading
// normals (mesh space) for every corner of every triangle, drawn as
// triangles. A mesh without shading normals gets each triangle's own normal,
// so it shows flat. The object owns its GL names: the context it was made in
// must be current when it is destroyed.

#include <cstddef>

#include "host/viewer/mesh.h"

namespace sorrel {

class MeshBuffers {
public:
    explicit MeshBuffers(const Mesh& mesh);
    ~MeshBuffers();
    MeshBuffers(const MeshBuffers&) = delete;
    MeshBuffers& operator=(const MeshBuffers&) = delete;

    /// Draws every triangle with the current program; attribute 0 is the
    /// position, 1 the normal.
    void draw() const;
    /// Whether these buffers were made from a mesh of this many triangles.
    std::size_t triangleCount() const { return vertexCount_ / 3; }

private:
    unsigned int vertexArray_ = 0;
    unsigned int buffer_ = 0;
    std::size_t vertexCount_ = 0;
};

}  // namespace sorrel
