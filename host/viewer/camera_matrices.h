#pragma once
// View and projection matrices of a camera (or of a spot light seen as one),
// as host matrices: row vectors, a acts first in a * b.

#include "host/viewer/matrix.h"
#include "host/viewer/vec3.h"

namespace sorrel {

/// World to camera for an eye at `eye` looking at `target` (world space), +Y
/// up unless the view is vertical, then -Z. The camera looks down its -Z.
Matrix lookAtMatrix(const Vec3& eye, const Vec3& target);

/// Camera to clip space: a perspective of `fovYDegrees` over the height and
/// `aspect` (width / height), depth from `nearPlane` to `farPlane` (world units).
Matrix perspectiveMatrix(double fovYDegrees, double aspect, double nearPlane, double farPlane);

}  // namespace sorrel
