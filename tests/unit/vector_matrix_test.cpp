// Vector length and normalisation, matrix inverse, and the rotations that
// align the z axis, checked against formulas written here independently.

#include "support/vector_matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr int kRandomCases = 2000;
constexpr double kTolerance = 1e-9;

/// The row vector v times the upper 3x3 block of m.
Vec3d turn(const Vec3d& v, const Mat4d& m) {
    Vec3d out;
    for (int c = 0; c < 3; ++c) out[c] = v.x * m[0][c] + v.y * m[1][c] + v.z * m[2][c];
    return out;
}

Vec3d row(const Mat4d& m, int r) { return {m[r][0], m[r][1], m[r][2]}; }

void expectNear(const Vec3d& actual, const Vec3d& expected, double tolerance) {
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(actual[i], expected[i], tolerance) << "component " << i;
}

const Mat4d kZero(std::array<double, Mat4d::kCount>{});

double maxAbsDifference(const Mat4d& a, const Mat4d& b) {
    double largest = 0.0;
    for (int i = 0; i < 16; ++i) largest = std::max(largest, std::fabs(a.data()[i] - b.data()[i]));
    return largest;
}

TEST(VectorLength, ScalesVectorsWhoseSquaresUnderflow) {
    EXPECT_DOUBLE_EQ(vectorLength({3e-200, 4e-200, 0.0}), 5e-200);
    EXPECT_EQ(vectorLength({3.0, 4.0, 12.0}), 13.0);
    EXPECT_EQ(vectorLength({0.0, -2.0, 0.0}), 2.0);

    const Vec3d tinyUnit = normalizedOrZero({0.0, -3e-200, 4e-200});
    EXPECT_EQ(tinyUnit.x, 0.0);
    EXPECT_DOUBLE_EQ(tinyUnit.y, -0.6);
    EXPECT_DOUBLE_EQ(tinyUnit.z, 0.8);

    EXPECT_EQ(vectorLength({}), 0.0);
    const Vec3d zero = normalizedOrZero({0.0, -0.0, 0.0});
    EXPECT_TRUE(zero.x == 0.0 && zero.y == 0.0 && zero.z == 0.0) << "no division by a zero length";

    EXPECT_TRUE(std::isnan(vectorLength({NAN, 1.0, 0.0})));
}

TEST(AlignZAxis, FallsBackForZeroAndParallelVectors) {
    // Up parallel to target: the new up is target x (1, 0, 0).
    const Mat4d alongY = alignZAxis({0.0, 1.0, 0.0}, {0.0, 1.0, 0.0});
    expectNear(row(alongY, 1), {0.0, 0.0, -1.0}, 0.0);
    expectNear(row(alongY, 2), {0.0, 1.0, 0.0}, 0.0);

    // And when that is zero too, target x (0, 0, 1).
    const Mat4d alongX = alignZAxis({1.0, 0.0, 0.0}, {1.0, 0.0, 0.0});
    expectNear(row(alongX, 1), {0.0, -1.0, 0.0}, 0.0);
    expectNear(row(alongX, 2), {1.0, 0.0, 0.0}, 0.0);

    // A zero target is the z axis, a zero up the y axis.
    EXPECT_EQ(alignZAxis({}, {}), Mat4d());
    EXPECT_EQ(alignZAxis({0.0, 0.0, 5.0}, {}), Mat4d());

    Mat4d flipped;
    flipped[0][0] = -1.0;
    flipped[2][2] = -1.0;
    EXPECT_EQ(alignZAxis({0.0, 0.0, -1.0}, {0.0, 1.0, 0.0}), flipped);
}

TEST(AlignZAxis, GivesRightHandedOrthonormalRowsWithUpNearY) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> component(-10.0, 10.0);
    for (int n = 0; n < kRandomCases; ++n) {
        const Vec3d target{component(random), component(random), component(random)};
        const Vec3d up{component(random), component(random), component(random)};
        const Mat4d m = alignZAxis(target, up);
        for (int r = 0; r < 3; ++r) {
            EXPECT_NEAR(vectorLength(row(m, r)), 1.0, kTolerance);
            EXPECT_EQ(m[r][3], 0.0);
            EXPECT_NEAR(dot(row(m, r), row(m, (r + 1) % 3)), 0.0, kTolerance);
        }
        expectNear(cross(row(m, 0), row(m, 1)), row(m, 2), kTolerance);
        expectNear(row(m, 2), normalizedOrZero(target), kTolerance);
        EXPECT_GE(dot(row(m, 1), up), 0.0) << "y leans towards up";
        EXPECT_NEAR(dot(row(m, 0), up), 0.0, kTolerance * vectorLength(up)) << "x is across up";

        // rotationFromTo carries one direction onto the other.
        const Mat4d turning = rotationFromTo(up, target, {0.0, 1.0, 0.0});
        expectNear(turn(normalizedOrZero(up), turning), normalizedOrZero(target), kTolerance);
    }
    EXPECT_EQ(rotationFromTo({}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}), Mat4d());
}

TEST(Inverse, SingularOrOverflowingMatricesGiveTheIdentity) {
    Mat4d affineZeroBlock;
    for (int r = 0; r < 3; ++r) std::fill(affineZeroBlock[r], affineZeroBlock[r] + 3, 0.0);
    affineZeroBlock[3][0] = 4.0;
    EXPECT_EQ(inverse(affineZeroBlock), Mat4d());

    const Mat4d projectiveSingular({1, 2, 3, 4, 2, 4, 6, 8, 0, 1, 0, 1, 1, 0, 0, 0});
    EXPECT_EQ(inverse(projectiveSingular), Mat4d());

    // A subnormal scale: its inverse, 1e310, would overflow.
    Mat4d subnormalScale;
    subnormalScale[0][0] = 1e-310;
    EXPECT_EQ(inverse(subnormalScale), Mat4d());

    // A tiny but normal determinant is still inverted.
    Mat4d tinyScale;
    for (int r = 0; r < 3; ++r) tinyScale[r][r] = 1e-100;
    tinyScale[3][1] = 1e-100;
    const Mat4d tinyInverse = inverse(tinyScale);
    EXPECT_DOUBLE_EQ(tinyInverse[1][1], 1e100);
    EXPECT_DOUBLE_EQ(tinyInverse[3][1], -1.0);

    // Pivoting: a permutation with a non-affine last column inverts to its transpose.
    const Mat4d permutation({0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0});
    EXPECT_EQ(inverse(permutation), transpose(permutation));
}

TEST(Inverse, TimesTheMatrixGivesTheIdentityOnRandomMatrices) {
    std::mt19937_64 random(42);
    std::uniform_real_distribution<double> element(-10.0, 10.0);
    for (int n = 0; n < kRandomCases; ++n) {
        const bool affine = n % 2 == 0;
        Mat4d m;
        for (int r = 0; r < 4; ++r) {
            for (int c = 0; c < (affine ? 3 : 4); ++c) m[r][c] = element(random);
        }
        const Mat4d inverted = inverse(m);
        // Rounding grows with the size of the entries on both sides.
        const double scale = maxAbsDifference(inverted, kZero) + maxAbsDifference(m, kZero);
        EXPECT_LT(maxAbsDifference(multiply(inverted, m), Mat4d()), kTolerance * scale) << n;
        EXPECT_LT(maxAbsDifference(multiply(m, inverted), Mat4d()), kTolerance * scale) << n;
        if (affine) {
            EXPECT_EQ(inverted[0][3], 0.0);
            EXPECT_EQ(inverted[3][3], 1.0);
        }
    }
}

}  // namespace
