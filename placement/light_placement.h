#pragma once
// Where a light should stand, where it should point, and how firmly: the
// result of one pick under the cursor.

#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

struct LightPlacement {
    /// False when no placement could be made; every other field is then zero.
    bool valid = false;
    /// World space, the space of the snapped point.
    Vec3d position;
    /// Unit aim (aiming modes) or the surface normal (modes on the point);
    /// zero when the normal given back was zero.
    Vec3d direction;
    /// Passed through: from the light to its centre of interest.
    double distance = 0.0;
    /// Passed through, for new packages.
    double shadowFallDistance = 0.0;
    /// The light stands on the snapped point itself.
    bool strictPosition = false;
    /// The light keeps its orientation.
    bool orientationFixed = false;
};

}  // namespace Tessera::Sorrel::ViewerUtils
