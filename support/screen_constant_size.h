#pragma once
// The world length that a number of pixels spans at a given depth of a
// viewport: what keeps a drawn object the same size on screen.

#include <cstdint>

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// The world length that spans `size` / 2 pixels along the shorter side of a
/// `width` x `height` pixel viewport, at the depth of the world point `point`.
/// `view` and `projection` are row-vector matrices; a singular product counts
/// as the identity. Along y for a square viewport.
double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size);

}  // namespace Tessera::Sorrel::ViewerUtils
