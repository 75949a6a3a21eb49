#pragma once
// The host's 4x4 matrices: sixteen doubles row by row, points as row vectors
// (v' = v * M), translation in elements 12, 13 and 14; in a product a * b,
// a acts first.

#include <array>
#include <optional>

#include "host/viewer/vec3.h"

namespace sorrel {

using Matrix = std::array<double, 16>;
constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
/// The row that holds the translation; rows 0 to 2 hold the local axes.
constexpr int kTranslationRow = 3;

/// Row-vector product: a acts first.
Matrix multiplyMatrices(const Matrix& a, const Matrix& b);
Matrix translationMatrix(double x, double y, double z);
/// The inverse, or nothing when the matrix is singular.
std::optional<Matrix> invertMatrix(const Matrix& m);

/// A point through the whole matrix, divided by w.
Vec3 transformPoint(const Vec3& p, const Matrix& m);
/// A direction through the upper 3x3 block only.
Vec3 transformDirection(const Vec3& d, const Matrix& m);
/// Row r (0 to 3) as a vector: rows 0 to 2 are the local axes, row 3 the translation.
Vec3 matrixRow(const Matrix& m, int r);
void setMatrixRow(Matrix& m, int r, const Vec3& v);

}  // namespace sorrel
