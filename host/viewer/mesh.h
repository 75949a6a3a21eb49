#pragma once
// A mesh of the host's scene: triangles over points in the mesh's own space,
// placed in the world by one matrix, and grouped into faces.
//
// A face is what the "Face" snapping strategies snap to: one triangle, or the
// two triangles of a quad, whose centre is the mean of its distinct corners.
//
// For the viewport a mesh also has a material and, where its surface is
// smooth, one shading normal per point; without them it is drawn flat.

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "host/viewer/material.h"
#include "host/viewer/matrix.h"
#include "host/viewer/vec3.h"

namespace sorrel {

/// Where a ray met a mesh, in world space.
struct MeshHit {
    double distance = 0.0;  // along the ray, in units of its direction
    Vec3 point;
    Vec3 normal;      // unit normal of the hit triangle, by its winding
    Vec3 faceCentre;  // centre of the hit triangle's face
};

class Mesh {
public:
    /// Local to world, row vectors.
    Matrix world = kIdentity;
    Material material;

    std::uint32_t addPoint(const Vec3& p);
    /// One triangle as a face of its own; the front sees a, b, c counter-clockwise.
    void addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    /// Two triangles (a, b, c) and (a, c, d) as one face.
    void addQuad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d);

    /// The nearest hit in front of `origin` (world space), both sides of a
    /// triangle counting, or nothing.
    std::optional<MeshHit> intersect(const Vec3& origin, const Vec3& direction) const;
    /// Centre of the world-space box around the mesh's points.
    Vec3 boundsCentre() const;

    /// Points in the mesh's own space.
    const std::vector<Vec3>& points() const { return points_; }
    /// The corners of every triangle, in order; each is seen counter-clockwise from its front.
    std::vector<std::array<std::uint32_t, 3>> triangleCorners() const;
    /// One unit normal per point (mesh space) for smooth shading, or none for flat shading.
    const std::vector<Vec3>& pointNormals() const { return pointNormals_; }
    /// False, and nothing changed, unless there is one normal for each point.
    bool setPointNormals(std::vector<Vec3> normals);

    /// A `width` x `depth` plane in the XZ plane, centred at the origin and
    /// facing +Y, cut into `divisions` x `divisions` quads.
    static Mesh plane(double width, double depth, int divisions = 1);
    /// An axis-aligned box of `size`, centred at the origin, facing outwards,
    /// each side one quad.
    static Mesh box(const Vec3& size);

private:
    struct Triangle {
        std::array<std::uint32_t, 3> corners;
        std::uint32_t face;
    };

    std::vector<Vec3> worldPoints() const;
    Vec3 faceCentre(std::uint32_t face, const std::vector<Vec3>& placed) const;

    std::vector<Vec3> points_;
    std::vector<Vec3> pointNormals_;
    std::vector<Triangle> triangles_;
    std::uint32_t faceCount_ = 0;
};

}  // namespace sorrel
