#pragma once
// Double-precision vector and matrix operations shared by the viewport layers
// and the delegate component.
//
// Matrices are lqm::Mat4<double>: points are row vectors mapped as v * M, the
// translation stands in row 3, and in a product a * b the matrix a acts first.
// Every zero test is an exact comparison with 0.0; the only tolerances are the
// two named limits of vectorLength and inverse. Nothing here allocates, and a
// NaN in the input is not caught: it passes on into the result.

#include <cmath>
#include <limits>

#include "lqm/mat4.h"

namespace Tessera::Sorrel::ViewerUtils {

using Mat4d = lqm::Mat4<double>;

/// Three doubles; [0], [1], [2] reach x, y, z.
struct Vec3d {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    double& operator[](int index) { return index == 0 ? x : index == 1 ? y : z; }
    double operator[](int index) const { return index == 0 ? x : index == 1 ? y : z; }
};

inline Vec3d operator+(const Vec3d& a, const Vec3d& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec3d operator-(const Vec3d& a, const Vec3d& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec3d operator-(const Vec3d& v) { return {-v.x, -v.y, -v.z}; }
inline Vec3d operator*(const Vec3d& v, double factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

/// The right-handed cross product.
inline Vec3d cross(const Vec3d& a, const Vec3d& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double dot(const Vec3d& a, const Vec3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

/// Below this sum of squares (twice the smallest normal double, bits
/// 0x0020000000000000) the squares have lost their precision.
inline constexpr double kUnscaledLengthLimit = 2.0 * std::numeric_limits<double>::min();

/// vectorLength of a vector whose sum of squares lies below kUnscaledLengthLimit.
double shortVectorLength(const Vec3d& v);

/// Euclidean length. Vectors so short that their squares lose precision are
/// scaled by their largest component first, so (3e-200, 4e-200, 0) has length 5e-200.
inline double vectorLength(const Vec3d& v) {
    const double squares = v.x * v.x + v.y * v.y + v.z * v.z;
    return squares < kUnscaledLengthLimit ? shortVectorLength(v) : std::sqrt(squares);
}

/// `v` divided by its length, or the zero vector when that length is 0.0.
inline Vec3d normalizedOrZero(const Vec3d& v) {
    const double length = vectorLength(v);
    if (length == 0.0) return {};
    return {v.x / length, v.y / length, v.z / length};
}

/// The point `p` as the row vector (x, y, z, 1) times `m`, divided by the w
/// that results (no test for zero).
[[gnu::always_inline]] inline Vec3d transformPoint(const Vec3d& p, const Mat4d& m) {
    // Column by column, written out: this runs several times for every handle.
    const auto column = [&p, &m](int c) {
        return p.x * m[0][c] + p.y * m[1][c] + p.z * m[2][c] + m[3][c];
    };
    const double w = column(3);
    return {column(0) / w, column(1) / w, column(2) / w};
}

/// The direction `v` as the row vector (x, y, z) times the upper 3x3 block of
/// `m`: turned and scaled, not moved. Inline, like the two below: every new
/// location derives its pose through them.
inline Vec3d transformDirection(const Vec3d& v, const Mat4d& m) {
    const auto column = [&v, &m](int c) { return v.x * m[0][c] + v.y * m[1][c] + v.z * m[2][c]; };
    return {column(0), column(1), column(2)};
}

/// The translation of `m`, its row 3.
inline Vec3d translationOf(const Mat4d& m) { return {m[3][0], m[3][1], m[3][2]}; }

/// Scales x, y and z by `factor`.
Mat4d scalingMatrix(double factor);

/// Moves a point by `offset`.
Mat4d translationMatrix(const Vec3d& offset);

/// The product a * b: a acts first. Returns a new value, so either argument may be replaced.
Mat4d multiply(const Mat4d& a, const Mat4d& b);

Mat4d transpose(const Mat4d& m);

/// The inverse of `m`, or the identity when `m` is singular or its inverse
/// would overflow. Affine matrices (last column 0, 0, 0, 1) are inverted
/// through the cofactors of their 3x3 block, all others by Gauss-Jordan.
Mat4d inverse(const Mat4d& m);

/// The rows of a rotation: where it takes the x, y and z axes.
struct Axes {
    Vec3d x;
    Vec3d y;
    Vec3d z;
};

/// The axes of alignZAxis(target, up), without the matrix around them.
Axes alignedAxes(const Vec3d& target, const Vec3d& up);

/// The rotation that turns the z axis into `target`, with the y axis as near to
/// `up` as it can be. A zero `target` counts as (0, 0, 1) and a zero `up` as
/// (0, 1, 0); an `up` parallel to `target` is replaced by one across it.
Mat4d alignZAxis(Vec3d target, Vec3d up);

/// The rotation that turns the direction `from` into `to`, with the y axis
/// taken towards `up`; the identity when `from` is the zero vector.
Mat4d rotationFromTo(const Vec3d& from, const Vec3d& to, const Vec3d& up);

}  // namespace Tessera::Sorrel::ViewerUtils
