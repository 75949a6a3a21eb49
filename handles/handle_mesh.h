#pragma once
// HandleMesh: one GL vertex array object with its buffers, drawn as indexed
// triangles, lines or points. The mesh owns its GL objects; every operation but
// construction needs the host's GL context current.

#include <array>
#include <cstdint>
#include <vector>

using Float3 = std::array<float, 3>;
using Float2 = std::array<float, 2>;

class HandleMesh {
public:
    HandleMesh() = default;
    /// Releases the GL objects if the mesh still holds them.
    ~HandleMesh();
    HandleMesh(const HandleMesh&) = delete;
    HandleMesh& operator=(const HandleMesh&) = delete;

    /// Uploads the geometry: positions to attribute 0, normals to attribute 1,
    /// texture coordinates (if any) to attribute 2. Does nothing on a built mesh.
    void build(const std::vector<Float3>& positions, const std::vector<Float3>& normals,
               const std::vector<std::uint32_t>& indices, const std::vector<Float2>& texCoords);
    /// Deletes the GL objects; the mesh can be built again afterwards.
    void release();
    /// Replaces the two positions of a built two-point mesh.
    void updatePositions(const std::array<Float3, 2>& data);

    // Each draws all indices; `blend` turns on alpha blending for the call only.
    void drawTriangles(bool blend) const;
    void drawLines(bool blend) const;
    void drawPoints(bool blend) const;

    bool isBuilt() const { return initialised; }
    std::uint32_t getVertexCount() const { return vertexCount; }
    std::uint32_t getIndexCount() const { return indexCount; }
    /// Line width of drawLines, in pixels.
    std::uint32_t getLineWidth() const { return lineWidth; }
    void setLineWidth(std::uint32_t pixels) { lineWidth = pixels; }
    /// Point size of drawPoints, in pixels.
    std::uint32_t getPointSize() const { return pointSize; }
    void setPointSize(std::uint32_t pixels) { pointSize = pixels; }

private:
    /// The steps the three draw operations share around their own `ownStep`.
    template <typename OwnStep>
    void drawElements(unsigned int attributeBit, unsigned int primitive, bool blend,
                      OwnStep ownStep) const;

    bool initialised = false;
    unsigned int vertexArray = 0;
    unsigned int positionBuffer = 0;
    unsigned int normalBuffer = 0;
    unsigned int texCoordBuffer = 0;
    unsigned int indexBuffer = 0;
    std::uint32_t vertexCount = 0;
    std::uint32_t indexCount = 0;
    std::uint32_t lineWidth = 1;
    std::uint32_t pointSize = 1;
};
