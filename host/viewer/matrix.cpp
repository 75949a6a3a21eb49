#include "host/viewer/matrix.h"

#include <cmath>
#include <utility>

namespace sorrel {

Matrix multiplyMatrices(const Matrix& a, const Matrix& b) {
    Matrix out{};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            for (int k = 0; k < 4; ++k) out[4 * r + c] += a[4 * r + k] * b[4 * k + c];
    return out;
}

Matrix translationMatrix(double x, double y, double z) {
    Matrix m = kIdentity;
    m[12] = x;
    m[13] = y;
    m[14] = z;
    return m;
}

std::optional<Matrix> invertMatrix(const Matrix& m) {
    // Gauss-Jordan elimination with partial pivoting on [m | identity].
    Matrix t = m;
    Matrix s = kIdentity;
    for (int col = 0; col < 4; ++col) {
        int pivot = col;
        for (int r = col + 1; r < 4; ++r)
            if (std::fabs(t[4 * r + col]) > std::fabs(t[4 * pivot + col])) pivot = r;
        if (t[4 * pivot + col] == 0.0) return std::nullopt;
        for (int c = 0; c < 4; ++c) {
            std::swap(t[4 * col + c], t[4 * pivot + c]);
            std::swap(s[4 * col + c], s[4 * pivot + c]);
        }
        const double scale = t[4 * col + col];
        for (int c = 0; c < 4; ++c) {
            t[4 * col + c] /= scale;
            s[4 * col + c] /= scale;
        }
        for (int r = 0; r < 4; ++r) {
            if (r == col) continue;
            const double f = t[4 * r + col];
            for (int c = 0; c < 4; ++c) {
                t[4 * r + c] -= f * t[4 * col + c];
                s[4 * r + c] -= f * s[4 * col + c];
            }
        }
    }
    return s;
}

Vec3 transformPoint(const Vec3& p, const Matrix& m) {
    const double w = p.x * m[3] + p.y * m[7] + p.z * m[11] + m[15];
    const Vec3 v{p.x * m[0] + p.y * m[4] + p.z * m[8] + m[12],
                 p.x * m[1] + p.y * m[5] + p.z * m[9] + m[13],
                 p.x * m[2] + p.y * m[6] + p.z * m[10] + m[14]};
    return w != 0.0 && w != 1.0 ? v * (1.0 / w) : v;
}

Vec3 transformDirection(const Vec3& d, const Matrix& m) {
    return {d.x * m[0] + d.y * m[4] + d.z * m[8], d.x * m[1] + d.y * m[5] + d.z * m[9],
            d.x * m[2] + d.y * m[6] + d.z * m[10]};
}

Vec3 matrixRow(const Matrix& m, int r) { return {m[4 * r], m[4 * r + 1], m[4 * r + 2]}; }

void setMatrixRow(Matrix& m, int r, const Vec3& v) {
    m[4 * r] = v.x;
    m[4 * r + 1] = v.y;
    m[4 * r + 2] = v.z;
}

}  // namespace sorrel
