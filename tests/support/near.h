#pragma once
// Closeness of two three-component vectors, plugin or host ones alike.

#include <gtest/gtest.h>

#include <cmath>
#include <type_traits>

namespace testing_support {

/// Whether every component of `actual` lies within `tolerance` of `expected`;
/// use as EXPECT_TRUE(near(a, b, tolerance)). `expected` may be a braced list.
template <typename Vector>
::testing::AssertionResult near(const Vector& actual,
                                const typename std::common_type<Vector>::type& expected,
                                double tolerance) {
    const double gaps[] = {actual.x - expected.x, actual.y - expected.y, actual.z - expected.z};
    for (const double gap : gaps) {
        if (!(std::fabs(gap) <= tolerance)) {
            return ::testing::AssertionFailure()
                   << "(" << actual.x << ", " << actual.y << ", " << actual.z << ") is not within "
                   << tolerance << " of (" << expected.x << ", " << expected.y << ", " << expected.z
                   << ")";
        }
    }
    return ::testing::AssertionSuccess();
}

}  // namespace testing_support
