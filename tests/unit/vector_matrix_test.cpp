// Vector length and normalisation, matrix inverse, and the rotations that
// align the z axis, checked against formulas written here independently; the
// shortcuts the handles take, checked bit for bit against the general way.

#include "support/vector_matrix.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <random>

#include "handles/handle_transform.h"
#include "support/screen_constant_size.h"
#include "tests/support/near.h"

using namespace Tessera::Sorrel::ViewerUtils;
using testing_support::near;

namespace {

constexpr int kRandomCases = 2000;
constexpr double kTolerance = 1e-9;

Vec3d row(const Mat4d& m, int r) { return {m[r][0], m[r][1], m[r][2]}; }

/// The largest absolute element of a - b; of a alone by default.
double largestDifference(const Mat4d& a, const Mat4d& b = Mat4d(std::array<double, 16>{})) {
    double largest = 0.0;
    for (int i = 0; i < 16; ++i) largest = std::max(largest, std::fabs(a.data()[i] - b.data()[i]));
    return largest;
}

TEST(VectorLength, ScalesVectorsWhoseSquaresUnderflow) {
    EXPECT_DOUBLE_EQ(vectorLength({3e-200, 4e-200, 0.0}), 5e-200);
    EXPECT_EQ(vectorLength({3.0, 4.0, 12.0}), 13.0);
    EXPECT_TRUE(near(normalizedOrZero({0.0, -3e-200, 4e-200}), {0.0, -0.6, 0.8}, 1e-15));
    EXPECT_EQ(vectorLength({}), 0.0);
    EXPECT_TRUE(near(normalizedOrZero({0.0, -0.0, 0.0}), {}, 0.0));  // no division by a zero length
    EXPECT_TRUE(std::isnan(vectorLength({NAN, 1.0, 0.0})));
}

TEST(AlignZAxis, GivesRightHandedOrthonormalRowsFallingBackForZeroAndParallelVectors) {
    const struct {
        Vec3d target;
        Vec3d up;
        Mat4d expected;
    } cases[] = {
        // Up parallel to target: the new up is target x (1, 0, 0) ...
        {{0, 1, 0}, {0, 1, 0}, Mat4d({1, 0, 0, 0, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1})},
        // ... and when that is zero too, target x (0, 0, 1).
        {{1, 0, 0}, {1, 0, 0}, Mat4d({0, 0, 1, 0, 0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1})},
        // A zero target is the z axis, a zero up the y axis.
        {{}, {}, Mat4d()},
        {{0, 0, 5}, {}, Mat4d()},
        {{0, 0, -1}, {0, 1, 0}, Mat4d({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1})},
    };
    for (const auto& c : cases) EXPECT_EQ(alignZAxis(c.target, c.up), c.expected);
    EXPECT_EQ(rotationFromTo({}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}), Mat4d());

    // Otherwise right-handed orthonormal rows, the y axis leaning towards up.
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
        EXPECT_TRUE(near(cross(row(m, 0), row(m, 1)), row(m, 2), kTolerance));
        EXPECT_TRUE(near(row(m, 2), normalizedOrZero(target), kTolerance));
        EXPECT_GE(dot(row(m, 1), up), 0.0) << "y leans towards up";
        EXPECT_NEAR(dot(row(m, 0), up), 0.0, kTolerance * vectorLength(up)) << "x is across up";

        // rotationFromTo carries `from`, a row vector times the 3x3 block, onto `to`.
        const Mat4d turning = rotationFromTo(up, target, {0.0, 1.0, 0.0});
        const Vec3d from = normalizedOrZero(up);
        EXPECT_TRUE(
            near(row(turning, 0) * from.x + row(turning, 1) * from.y + row(turning, 2) * from.z,
                 normalizedOrZero(target), kTolerance));
    }
}

TEST(Inverse, InvertsOrGivesTheIdentityForSingularOrOverflowingMatrices) {
    const Mat4d singular[] = {
        Mat4d({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0, 0, 1}),       // affine, zero 3x3 block
        Mat4d({1, 2, 3, 4, 2, 4, 6, 8, 0, 1, 0, 1, 1, 0, 0, 0}),       // projective
        Mat4d({1e-310, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}),  // 1e310 would overflow
    };
    for (const Mat4d& m : singular) EXPECT_EQ(inverse(m), Mat4d());

    // A tiny but normal determinant is still inverted.
    const Mat4d tiny({1e-100, 0, 0, 0, 0, 1e-100, 0, 0, 0, 0, 1e-100, 0, 0, 1e-100, 0, 1});
    EXPECT_DOUBLE_EQ(inverse(tiny)[1][1], 1e100);
    EXPECT_DOUBLE_EQ(inverse(tiny)[3][1], -1.0);

    // Pivoting: a permutation with a non-affine last column inverts to its transpose.
    const Mat4d permutation({0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 0, 0, 1, 0, 0});
    EXPECT_EQ(inverse(permutation), transpose(permutation));

    // Otherwise the inverse times the matrix is the identity.
    std::mt19937_64 random(42);
    std::uniform_real_distribution<double> element(-10.0, 10.0);
    for (int n = 0; n < kRandomCases; ++n) {
        const bool affine = n % 2 == 0;
        Mat4d m;
        for (int r = 0; r < 4; ++r)
            for (int c = 0; c < (affine ? 3 : 4); ++c) m[r][c] = element(random);
        const Mat4d inverted = inverse(m);
        // Rounding grows with the size of the entries on both sides.
        const double scale = largestDifference(inverted) + largestDifference(m);
        EXPECT_LT(largestDifference(multiply(inverted, m), Mat4d()), kTolerance * scale) << n;
        EXPECT_LT(largestDifference(multiply(m, inverted), Mat4d()), kTolerance * scale) << n;
        EXPECT_TRUE(!affine || (inverted[0][3] == 0.0 && inverted[3][3] == 1.0)) << n;
    }
}

bool sameBits(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

bool sameBits(const Mat4d& a, const Mat4d& b) {
    return std::memcmp(a.data(), b.data(), sizeof(double) * Mat4d::kCount) == 0;
}

TEST(HandleWorldMatrix, EqualsTheGeneralProductBitForBitEvenForZerosInfinitiesAndNaN) {
    const auto general = [](const Vec3d& toCamera, const Vec3d& up, double scale,
                            const Vec3d& position) {
        return multiply(
            multiply(rotationFromTo({0.0, 0.0, 1.0}, toCamera, up), scalingMatrix(scale)),
            translationMatrix(position));
    };
    // Along the axes the rotation is full of zeros, which a negative scale signs.
    EXPECT_TRUE(
        sameBits(handleWorldMatrix({0.0, 0.0, 5.0}, {0.0, 1.0, 0.0}, -2.0, {-0.0, 1.0, 0.0}),
                 general({0.0, 0.0, 5.0}, {0.0, 1.0, 0.0}, -2.0, {-0.0, 1.0, 0.0})));

    std::mt19937 random(20240611);
    std::uniform_real_distribution<double> value(-50.0, 50.0);
    const double specials[] = {0.0, -0.0, 1e300, -4e-310, INFINITY, -INFINITY, NAN};
    constexpr int kInputs = 10;
    for (int n = 0; n < kRandomCases; ++n) {
        double in[kInputs];
        for (double& v : in) v = value(random);
        // Every other case one input is a special value, or the view is straight on.
        if (n % 2 == 0) in[random() % kInputs] = specials[random() % std::size(specials)];
        if (n % 5 == 0) in[0] = in[1] = 0.0;
        const Vec3d toCamera{in[0], in[1], in[2]};
        const Vec3d up{in[3], in[4], in[5]};
        const Vec3d position{in[7], in[8], in[9]};
        EXPECT_TRUE(sameBits(handleWorldMatrix(toCamera, up, in[6], position),
                             general(toCamera, up, in[6], position)))
            << "case " << n;
    }
}

TEST(ScreenConstantSizer, AgreesWithTheFreeFunctionAndFollowsEveryChangeOfEitherMatrix) {
    // Row vectors: the camera looks down -z from `distance`, then a perspective.
    const auto view = [](double distance, double turn) {
        Mat4d m;
        m[0][0] = std::cos(turn);
        m[0][2] = -std::sin(turn);
        m[2][0] = std::sin(turn);
        m[2][2] = std::cos(turn);
        m[3][2] = -distance;
        return m;
    };
    const auto perspective = [](double focal) {
        constexpr double kNear = 0.1;
        constexpr double kFar = 100.0;
        Mat4d m(std::array<double, 16>{});
        m[0][0] = focal;
        m[1][1] = focal;
        m[2][2] = (kFar + kNear) / (kNear - kFar);
        m[2][3] = -1.0;
        m[3][2] = 2.0 * kFar * kNear / (kNear - kFar);
        return m;
    };
    struct Step {
        Mat4d view;
        Mat4d projection;
        int width;
        int height;
    };
    const Step steps[] = {
        {view(10.0, 0.0), perspective(2.0), 640, 480},
        {view(10.0, 0.0), perspective(2.0), 640, 480},
        {view(20.0, 0.0), perspective(2.0), 640, 480},
        {view(20.0, 0.0), perspective(3.0), 640, 480},
        {view(20.0, 0.3), perspective(3.0), 480, 640},
        {view(10.0, 0.0), perspective(2.0), 640, 480},
    };
    ScreenConstantSizer sizer;
    const Vec3d points[] = {{0.0, 0.0, 0.0}, {1.5, -2.0, 3.0}};
    for (const Step& step : steps) {
        for (const Vec3d& point : points) {
            const double expected = screenConstantSize(step.width, step.height, step.view,
                                                       step.projection, point, 120.0);
            EXPECT_TRUE(sameBits(sizer(step.width, step.height, step.view.data(),
                                       step.projection.data(), point, 120.0),
                                 expected))
                << "step " << (&step - steps) << ", expected " << expected;
        }
    }
}

}  // namespace
