#pragma once
// Round shapes for the host's scene, beside Mesh::plane and Mesh::box: each
// centred at the origin of its own space, facing outwards, with a shading
// normal at every point. Quads are faces of their own (what "Face" snapping
// snaps to); where a ring closes at a pole or a cap's centre, triangles are.

#include "host/viewer/mesh.h"

namespace sorrel {

/// A sphere cut into `slices` around the Y axis and `stacks` from pole to pole.
Mesh sphereMesh(double radius, int slices = 48, int stacks = 24);

/// A capped cylinder along the Y axis, `height` from bottom to top.
Mesh cylinderMesh(double radius, double height, int slices = 48);

/// A ring about the Y axis: the tube's centre runs at `majorRadius` from the
/// axis, the tube has `minorRadius`.
Mesh torusMesh(double majorRadius, double minorRadius, int rings = 48, int sides = 24);

}  // namespace sorrel
