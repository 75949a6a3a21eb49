#pragma once
// Pure helpers of the centre-of-interest handles layer: the picking colour of
// an id, the screen-constant handle size, and the reading of its environment flags.

#include <array>
#include <cstdint>

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// The picking colour of a pick id: bytes 3, 2, 1, 0 of its low 32 bits as red,
/// green, blue, alpha, each divided by 255 in floats.
std::array<float, 4> pickIdColour(std::uint64_t id);

/// The world length that spans `size` / 2 pixels along the shorter side of a
/// `width` x `height` pixel viewport, at the depth of the world point `point`.
/// `view` and `projection` are row-vector matrices; a singular product counts
/// as the identity. Along y for a square viewport.
double screenConstantSize(std::int32_t width, std::int32_t height, const Mat4d& view,
                          const Mat4d& projection, const Vec3d& point, double size);

/// Whether an environment variable's value switches its flag on: exactly the
/// one-character text "1". Null (unset) is off.
bool environmentFlagIsSet(const char* value);

}  // namespace Tessera::Sorrel::ViewerUtils
