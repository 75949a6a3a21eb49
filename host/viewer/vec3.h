#pragma once
// Three doubles for the host's geometry: a point or a direction, in whatever
// space the caller names, with the few operations the host's objects need.

#include <cmath>

namespace sorrel {

struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3 operator-(const Vec3& a) { return {-a.x, -a.y, -a.z}; }
inline Vec3 operator*(const Vec3& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline double dot(const Vec3& a, const Vec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vec3& a) { return std::sqrt(dot(a, a)); }
/// The unit vector along `a`, or the zero vector for a zero `a`.
inline Vec3 normalizedOrZero(const Vec3& a) {
    const double l = length(a);
    return l > 0.0 ? Vec3{a.x / l, a.y / l, a.z / l} : Vec3{};
}

}  // namespace sorrel
