#pragma once
// Where a centre-of-interest handle stands: its world matrix.

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// The handle's +z axis turned along `toCamera` with its +y as near to `up` as
/// it can be, scaled by `scale`, then moved to `position` (world space). Value
/// for value the product
///   rotationFromTo(+z, toCamera, up) * scalingMatrix(scale) * translationMatrix(position),
/// which it works out in one step when every value is finite.
Mat4d handleWorldMatrix(const Vec3d& toCamera, const Vec3d& up, double scale,
                        const Vec3d& position);

}  // namespace Tessera::Sorrel::ViewerUtils
