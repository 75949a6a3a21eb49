#include "host/render/primitive_meshes.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace sorrel {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMinSegments = 3;

/// The unit vector in the XZ plane at `angle` radians from +Z towards +X.
Vec3 around(double angle) { return {std::sin(angle), 0.0, std::cos(angle)}; }

double angleOf(int step, int steps, double span) {
    return span * static_cast<double>(step) / static_cast<double>(steps);
}

/// Adds a point with its shading normal.
std::uint32_t addPoint(Mesh& mesh, std::vector<Vec3>& normals, const Vec3& point,
                       const Vec3& normal) {
    normals.push_back(normal);
    return mesh.addPoint(point);
}

}  // namespace

Mesh sphereMesh(double radius, int slices, int stacks) {
    slices = std::max(slices, kMinSegments);
    stacks = std::max(stacks, 2);
    Mesh mesh;
    std::vector<Vec3> normals;
    // Rows run from the north pole (+Y) down; the seam's column is doubled.
    for (int row = 0; row <= stacks; ++row) {
        const double polar = angleOf(row, stacks, kPi);
        for (int column = 0; column <= slices; ++column) {
            const Vec3 ring = around(angleOf(column, slices, 2.0 * kPi));
            const Vec3 normal = {ring.x * std::sin(polar), std::cos(polar),
                                 ring.z * std::sin(polar)};
            addPoint(mesh, normals, normal * radius, normal);
        }
    }
    const auto at = [slices](int row, int column) {
        return static_cast<std::uint32_t>(row * (slices + 1) + column);
    };
    // Down a row and on round the axis is counter-clockwise seen from outside.
    for (int row = 0; row < stacks; ++row) {
        for (int column = 0; column < slices; ++column) {
            const std::uint32_t a = at(row, column), b = at(row + 1, column),
                                c = at(row + 1, column + 1), d = at(row, column + 1);
            if (row == 0)
                mesh.addTriangle(a, b, c);
            else if (row == stacks - 1)
                mesh.addTriangle(a, b, d);
            else
                mesh.addQuad(a, b, c, d);
        }
    }
    mesh.setPointNormals(std::move(normals));
    return mesh;
}

Mesh cylinderMesh(double radius, double height, int slices) {
    slices = std::max(slices, kMinSegments);
    Mesh mesh;
    std::vector<Vec3> normals;
    const double top = height / 2.0;
    const Vec3 up = {0.0, 1.0, 0.0};
    // The side, then each cap with points of its own, so that the edges stay sharp.
    const std::uint32_t side = static_cast<std::uint32_t>(mesh.points().size());
    for (int column = 0; column <= slices; ++column) {
        const Vec3 ring = around(angleOf(column, slices, 2.0 * kPi));
        addPoint(mesh, normals, ring * radius - up * top, ring);
        addPoint(mesh, normals, ring * radius + up * top, ring);
    }
    for (int column = 0; column < slices; ++column) {
        const auto bottom = static_cast<std::uint32_t>(side + 2 * column);
        mesh.addQuad(bottom, bottom + 2, bottom + 3, bottom + 1);
    }
    for (const double sign : {1.0, -1.0}) {
        const Vec3 normal = up * sign;
        const std::uint32_t centre = addPoint(mesh, normals, normal * top, normal);
        for (int column = 0; column <= slices; ++column)
            addPoint(mesh, normals,
                     around(angleOf(column, slices, 2.0 * kPi)) * radius + normal * top, normal);
        for (int column = 0; column < slices; ++column) {
            const auto here = static_cast<std::uint32_t>(centre + 1 + column);
            if (sign > 0)
                mesh.addTriangle(centre, here, here + 1);
            else
                mesh.addTriangle(centre, here + 1, here);
        }
    }
    mesh.setPointNormals(std::move(normals));
    return mesh;
}

Mesh torusMesh(double majorRadius, double minorRadius, int rings, int sides) {
    rings = std::max(rings, kMinSegments);
    sides = std::max(sides, kMinSegments);
    Mesh mesh;
    std::vector<Vec3> normals;
    const Vec3 up = {0.0, 1.0, 0.0};
    for (int ring = 0; ring <= rings; ++ring) {
        const Vec3 outwards = around(angleOf(ring, rings, 2.0 * kPi));
        for (int side = 0; side <= sides; ++side) {
            const double tube = angleOf(side, sides, 2.0 * kPi);
            const Vec3 normal = outwards * std::cos(tube) + up * std::sin(tube);
            addPoint(mesh, normals, outwards * majorRadius + normal * minorRadius, normal);
        }
    }
    const auto at = [sides](int ring, int side) {
        return static_cast<std::uint32_t>(ring * (sides + 1) + side);
    };
    // On round the axis, then up round the tube, is counter-clockwise from outside.
    for (int ring = 0; ring < rings; ++ring)
        for (int side = 0; side < sides; ++side)
            mesh.addQuad(at(ring, side), at(ring + 1, side), at(ring + 1, side + 1),
                         at(ring, side + 1));
    mesh.setPointNormals(std::move(normals));
    return mesh;
}

}  // namespace sorrel
