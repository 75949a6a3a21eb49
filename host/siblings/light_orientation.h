#pragma once
// How the host turns a light: a light at rest aims down its negative local Z
// axis with its Y axis up, and a light's world rotation is the 3x3 block of
// its world matrix (row vectors, so row 2 is the local Z axis in world space).

#include <optional>

#include "host/viewer/matrix.h"
#include "host/viewer/vec3.h"

namespace sorrel {

/// The rotation of angles about x, y and z, in degrees, as a new light
/// package receives them: the x turn acts first, then y, then z (rows of
/// R = Rx * Ry * Rz for row vectors). Translation zero.
Matrix rotationFromEulerDegrees(const Vec3& degrees);

/// The rotation that aims a light at rest along `direction` (world space),
/// its Y axis kept as near to world +Y as can be; nothing for a zero direction.
std::optional<Matrix> orientationAlong(const Vec3& direction);

}  // namespace sorrel
