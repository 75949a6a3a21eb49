// The round shapes face outwards everywhere, and their shading normals agree
// with the faces: a triangle wound the wrong way would send a light placed
// along its normal into the object.

#include "host/render/primitive_meshes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

using namespace sorrel;

namespace {

constexpr double kMajorRadius = 2.0;

void expectFacingOutwards(const Mesh& mesh, const char* name,
                          const std::function<Vec3(const Vec3&)>& insideNear) {
    const std::vector<Vec3>& points = mesh.points();
    const std::vector<Vec3>& normals = mesh.pointNormals();
    int wrong = 0;
    for (const auto& corners : mesh.triangleCorners()) {
        const Vec3 &a = points[corners[0]], &b = points[corners[1]], &c = points[corners[2]];
        const Vec3 face = cross(b - a, c - a);
        if (length(face) < 1e-12) continue;  // a sliver at a pole
        const Vec3 centre = (a + b + c) * (1.0 / 3.0);
        if (dot(face, centre - insideNear(centre)) <= 0.0) ++wrong;
        for (const std::uint32_t corner : corners)
            if (!normals.empty() && dot(normals[corner], face) <= 0.0) ++wrong;
    }
    EXPECT_EQ(wrong, 0) << name;
}

TEST(PrimitiveMeshes, FaceOutwardsWithShadingNormalsThatAgree) {
    const auto origin = [](const Vec3&) { return Vec3{}; };
    expectFacingOutwards(sphereMesh(1.5), "sphere", origin);
    expectFacingOutwards(cylinderMesh(0.5, 2.0), "cylinder", origin);
    expectFacingOutwards(Mesh::box({1, 2, 3}), "box", origin);
    // A torus's inside is the tube's centre line.
    expectFacingOutwards(torusMesh(kMajorRadius, 0.5), "torus", [](const Vec3& p) {
        return normalizedOrZero(Vec3{p.x, 0.0, p.z}) * kMajorRadius;
    });
}

}  // namespace
