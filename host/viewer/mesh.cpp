#include "host/viewer/mesh.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorrel {

namespace {
// Rays nearly parallel to a triangle's plane, and hits at the ray's own
// origin, are not counted.
constexpr double kParallelLimit = 1e-12;
constexpr double kMinimumDistance = 1e-9;
}  // namespace

std::uint32_t Mesh::addPoint(const Vec3& p) {
    points_.push_back(p);
    return static_cast<std::uint32_t>(points_.size() - 1);
}

void Mesh::addTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c) {
    triangles_.push_back({{a, b, c}, faceCount_++});
}

void Mesh::addQuad(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
    triangles_.push_back({{a, b, c}, faceCount_});
    triangles_.push_back({{a, c, d}, faceCount_});
    ++faceCount_;
}

std::vector<Vec3> Mesh::worldPoints() const {
    std::vector<Vec3> placed;
    placed.reserve(points_.size());
    for (const Vec3& p : points_) placed.push_back(transformPoint(p, world));
    return placed;
}

std::optional<MeshHit> Mesh::intersect(const Vec3& origin, const Vec3& direction) const {
    const std::vector<Vec3> placed = worldPoints();
    std::optional<MeshHit> nearest;
    const Triangle* nearestTriangle = nullptr;
    for (const Triangle& triangle : triangles_) {
        // Moller-Trumbore, in world space so that a scaled mesh keeps true normals.
        const Vec3& a = placed[triangle.corners[0]];
        const Vec3 ab = placed[triangle.corners[1]] - a;
        const Vec3 ac = placed[triangle.corners[2]] - a;
        const Vec3 p = cross(direction, ac);
        const double det = dot(ab, p);
        if (std::fabs(det) < kParallelLimit) continue;
        const Vec3 toOrigin = origin - a;
        const double u = dot(toOrigin, p) / det;
        if (u < 0.0 || u > 1.0) continue;
        const Vec3 q = cross(toOrigin, ab);
        const double v = dot(direction, q) / det;
        if (v < 0.0 || u + v > 1.0) continue;
        const double t = dot(ac, q) / det;
        if (t < kMinimumDistance || (nearest && t >= nearest->distance)) continue;
        nearest = MeshHit{t, origin + direction * t, normalizedOrZero(cross(ab, ac)), Vec3{}};
        nearestTriangle = &triangle;
    }
    if (nearest) nearest->faceCentre = faceCentre(nearestTriangle->face, placed);
    return nearest;
}

Vec3 Mesh::faceCentre(std::uint32_t face, const std::vector<Vec3>& placed) const {
    std::vector<std::uint32_t> corners;
    for (const Triangle& triangle : triangles_)
        if (triangle.face == face)
            corners.insert(corners.end(), triangle.corners.begin(), triangle.corners.end());
    std::sort(corners.begin(), corners.end());
    corners.erase(std::unique(corners.begin(), corners.end()), corners.end());
    Vec3 sum;
    for (const std::uint32_t corner : corners) sum = sum + placed[corner];
    return sum * (1.0 / static_cast<double>(corners.size()));
}

Vec3 Mesh::boundsCentre() const {
    const std::vector<Vec3> placed = worldPoints();
    if (placed.empty()) return transformPoint(Vec3{}, world);
    Vec3 low = placed.front();
    Vec3 high = placed.front();
    for (const Vec3& p : placed) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    return (low + high) * 0.5;
}

std::vector<std::array<std::uint32_t, 3>> Mesh::triangleCorners() const {
    std::vector<std::array<std::uint32_t, 3>> corners;
    corners.reserve(triangles_.size());
    for (const Triangle& triangle : triangles_) corners.push_back(triangle.corners);
    return corners;
}

bool Mesh::setPointNormals(std::vector<Vec3> normals) {
    if (normals.size() != points_.size()) return false;
    pointNormals_ = std::move(normals);
    return true;
}

Mesh Mesh::plane(double width, double depth, int divisions) {
    Mesh mesh;
    const int n = std::max(divisions, 1);
    for (int row = 0; row <= n; ++row)
        for (int col = 0; col <= n; ++col)
            mesh.addPoint({width * (static_cast<double>(col) / n - 0.5), 0.0,
                           depth * (static_cast<double>(row) / n - 0.5)});
    const auto at = [n](int row, int col) {
        return static_cast<std::uint32_t>(row * (n + 1) + col);
    };
    // Rows run towards +Z: (col, row+1), (col+1, row+1), (col+1, row) is
    // counter-clockwise seen from +Y.
    for (int row = 0; row < n; ++row)
        for (int col = 0; col < n; ++col)
            mesh.addQuad(at(row, col), at(row + 1, col), at(row + 1, col + 1), at(row, col + 1));
    return mesh;
}

Mesh Mesh::box(const Vec3& size) {
    Mesh mesh;
    const Vec3 h = size * 0.5;
    // Corner i has x, y, z at +h where bits 0, 1, 2 of i are set.
    for (int i = 0; i < 8; ++i)
        mesh.addPoint({(i & 1) ? h.x : -h.x, (i & 2) ? h.y : -h.y, (i & 4) ? h.z : -h.z});
    mesh.addQuad(0, 4, 6, 2);  // -X
    mesh.addQuad(1, 3, 7, 5);  // +X
    mesh.addQuad(0, 1, 5, 4);  // -Y
    mesh.addQuad(2, 6, 7, 3);  // +Y
    mesh.addQuad(0, 2, 3, 1);  // -Z
    mesh.addQuad(4, 5, 7, 6);  // +Z
    return mesh;
}

}  // namespace sorrel
