#pragma once
// The world length that a number of pixels spans at a given depth of a
// viewport: what keeps a drawn object the same size on screen.

#include <array>
#include <cstdint>

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// The world length that spans `size` / 2 pixels along the shorter side of a
/// `width` x `height` pixel viewport, at the depth of the world point `point`.
/// `view` and `projection` are row-vector matrices; a singular product counts
/// as the identity. Along y for a square viewport.
double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size);

/// screenConstantSize for many points: the product of the view and projection
/// matrices and its inverse are kept for as long as both matrices stay the
/// same, bit for bit, so that each further point costs three transformations.
class ScreenConstantSizer {
public:
    /// As screenConstantSize; `view` and `projection` are sixteen doubles each,
    /// row after row.
    double operator()(std::int32_t width, std::int32_t height, const double* view,
                      const double* projection, const Vec3d& point, double size);

private:
    static constexpr int kValues = 16;

    std::array<double, kValues> view{};
    std::array<double, kValues> projection{};
    bool valid = false;
    Mat4d viewProjection;
    Mat4d unproject;
};

}  // namespace Tessera::Sorrel::ViewerUtils
