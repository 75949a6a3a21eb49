#include "support/vector_matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

constexpr int kSize = 4;
constexpr int kBlockSize = 3;
/// Points are row vectors: the translation stands in the last row.
constexpr int kTranslationRow = 3;

static_assert(kUnscaledLengthLimit == 4.450147717014403e-308);

/// The reciprocal of the smallest normal double (bits 0x7FD0000000000000):
/// a cofactor at or above |det| times this would overflow in the division.
constexpr double kCofactorLimitScale = 1.0 / std::numeric_limits<double>::min();
static_assert(kCofactorLimitScale == 4.49423283715579e307);

constexpr Vec3d kAxisX{1.0, 0.0, 0.0};
constexpr Vec3d kAxisY{0.0, 1.0, 0.0};
constexpr Vec3d kAxisZ{0.0, 0.0, 1.0};

/// Whether vectorLength(v) would be 0.0: every component is zero (a NaN is not).
bool isZero(const Vec3d& v) { return v.x == 0.0 && v.y == 0.0 && v.z == 0.0; }

bool isAffine(const Mat4d& m) {
    return m[0][3] == 0.0 && m[1][3] == 0.0 && m[2][3] == 0.0 && m[3][3] == 1.0;
}

Mat4d inverseAffine(const Mat4d& m) {
    // Cofactors of the 3x3 block in their transposed places: the adjugate.
    double c[kBlockSize][kBlockSize] = {
        {m[1][1] * m[2][2] - m[1][2] * m[2][1], m[0][2] * m[2][1] - m[0][1] * m[2][2],
         m[0][1] * m[1][2] - m[0][2] * m[1][1]},
        {m[2][0] * m[1][2] - m[1][0] * m[2][2], m[0][0] * m[2][2] - m[2][0] * m[0][2],
         m[1][0] * m[0][2] - m[0][0] * m[1][2]},
        {m[1][0] * m[2][1] - m[2][0] * m[1][1], m[2][0] * m[0][1] - m[0][0] * m[2][1],
         m[0][0] * m[1][1] - m[1][0] * m[0][1]},
    };
    const double det = c[0][0] * m[0][0] + c[1][0] * m[0][1] + c[2][0] * m[0][2];

    if (std::fabs(det) >= 1.0) {
        for (auto& row : c) {
            for (double& value : row) value /= det;
        }
    } else {
        const double limit = std::fabs(det) * kCofactorLimitScale;
        for (auto& row : c) {
            for (double& value : row) {
                if (limit <= std::fabs(value)) return Mat4d();
                value /= det;
            }
        }
    }

    Mat4d result;
    for (int r = 0; r < kBlockSize; ++r) {
        for (int q = 0; q < kBlockSize; ++q) result[r][q] = c[r][q];
        result[r][3] = 0.0;
    }
    for (int q = 0; q < kBlockSize; ++q) {
        result[3][q] = -m[3][0] * c[0][q] - m[3][1] * c[1][q] - m[3][2] * c[2][q];
    }
    result[3][3] = 1.0;
    return result;
}

void swapRows(Mat4d& m, int a, int b) { std::swap_ranges(m[a], m[a] + kSize, m[b]); }

/// row[target] -= factor * row[source]
void subtractScaledRow(Mat4d& m, int target, int source, double factor) {
    for (int c = 0; c < kSize; ++c) m[target][c] -= factor * m[source][c];
}

void divideRow(Mat4d& m, int row, double divisor) {
    for (int c = 0; c < kSize; ++c) m[row][c] /= divisor;
}

Mat4d inverseGaussJordan(const Mat4d& m) {
    Mat4d t = m;
    Mat4d s;

    // Forward elimination with partial pivoting; the first of equal pivots wins.
    for (int i = 0; i < kSize - 1; ++i) {
        int pivot = i;
        double largest = std::fabs(t[i][i]);
        for (int p = i + 1; p < kSize; ++p) {
            if (std::fabs(t[p][i]) > largest) {
                largest = std::fabs(t[p][i]);
                pivot = p;
            }
        }
        if (largest == 0.0) return Mat4d();
        if (pivot != i) {
            swapRows(t, pivot, i);
            swapRows(s, pivot, i);
        }
        for (int j = i + 1; j < kSize; ++j) {
            const double factor = t[j][i] / t[i][i];
            subtractScaledRow(t, j, i, factor);
            subtractScaledRow(s, j, i, factor);
        }
    }

    // Back substitution from the last row up.
    for (int i = kSize - 1; i >= 0; --i) {
        const double diagonal = t[i][i];
        if (diagonal == 0.0) return Mat4d();
        divideRow(t, i, diagonal);
        divideRow(s, i, diagonal);
        for (int j = 0; j < i; ++j) {
            const double factor = t[j][i];
            subtractScaledRow(t, j, i, factor);
            subtractScaledRow(s, j, i, factor);
        }
    }
    return s;
}

}  // namespace

double shortVectorLength(const Vec3d& v) {
    const double ax = std::fabs(v.x);
    const double ay = std::fabs(v.y);
    const double az = std::fabs(v.z);
    const double largest = std::max({ax, ay, az});
    if (largest == 0.0) return 0.0;
    const Vec3d scaled{ax / largest, ay / largest, az / largest};
    return largest * std::sqrt(dot(scaled, scaled));
}

Mat4d scalingMatrix(const double factor) {
    Mat4d out;
    for (int axis = 0; axis < kBlockSize; ++axis) out[axis][axis] = factor;
    return out;
}

Mat4d translationMatrix(const Vec3d& offset) {
    Mat4d out;
    for (int axis = 0; axis < kBlockSize; ++axis) out[kTranslationRow][axis] = offset[axis];
    return out;
}

Mat4d multiply(const Mat4d& a, const Mat4d& b) {
    Mat4d out;
    for (int r = 0; r < kSize; ++r) {
        for (int c = 0; c < kSize; ++c) {
            double sum = 0.0;
            for (int k = 0; k < kSize; ++k) sum += a[r][k] * b[k][c];
            out[r][c] = sum;
        }
    }
    return out;
}

Mat4d transpose(const Mat4d& m) {
    Mat4d out;
    for (int r = 0; r < kSize; ++r) {
        for (int c = 0; c < kSize; ++c) out[r][c] = m[c][r];
    }
    return out;
}

Mat4d inverse(const Mat4d& m) { return isAffine(m) ? inverseAffine(m) : inverseGaussJordan(m); }

Axes alignedAxes(const Vec3d& targetGiven, const Vec3d& upGiven) {
    const Vec3d target = isZero(targetGiven) ? kAxisZ : targetGiven;
    Vec3d up = isZero(upGiven) ? kAxisY : upGiven;
    Vec3d side = cross(up, target);
    if (isZero(side)) {
        up = cross(target, kAxisX);
        if (isZero(up)) up = cross(target, kAxisZ);
        side = cross(up, target);
    }
    const Vec3d top = cross(target, side);
    return {normalizedOrZero(side), normalizedOrZero(top), normalizedOrZero(target)};
}

Mat4d alignZAxis(Vec3d target, Vec3d up) {
    const Axes axes = alignedAxes(target, up);
    Mat4d result;
    const Vec3d* const rows[kBlockSize] = {&axes.x, &axes.y, &axes.z};
    for (int r = 0; r < kBlockSize; ++r) {
        result[r][0] = rows[r]->x;
        result[r][1] = rows[r]->y;
        result[r][2] = rows[r]->z;
    }
    return result;
}

Mat4d rotationFromTo(const Vec3d& from, const Vec3d& to, const Vec3d& up) {
    if (isZero(from)) return Mat4d();
    // The first factor takes `from` onto the z axis, the second the z axis onto `to`.
    return multiply(transpose(alignZAxis(from, kAxisY)), alignZAxis(to, up));
}

}  // namespace Tessera::Sorrel::ViewerUtils
