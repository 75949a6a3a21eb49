#pragma once
// The geometry of a centre-of-interest handle, in handle space: the arrow lies
// in the plane z = 0 with its tip at the origin, points along +y, and faces the
// camera with +z. Coordinates are model units (60 pixels each at scale 1).

#include <cstdint>
#include <vector>

#include "handles/handle_mesh.h"

/// What HandleMesh::build takes for one mesh; no handle mesh has texture coordinates.
struct HandleMeshData {
    std::vector<Float3> positions;
    std::vector<Float3> normals;
    std::vector<std::uint32_t> indices;
};

/// y of the arrow's base, in model units.
constexpr float kArrowBaseY = -0.162f;
/// The stem ends 3.5 times as far from the tip as the base lies; a float product.
constexpr float kStemEndY = kArrowBaseY * 3.5f;

/// Base corners of the arrow head, worked out in floats: the sine of two thirds
/// of pi first, then the product (the left corner negates the sine).
Float3 rightBaseCorner();
Float3 leftBaseCorner();

/// The filled triangle: tip, right corner, left corner.
HandleMeshData arrowHeadData();
/// The triangle's three edges as lines.
HandleMeshData arrowOutlineData();
/// The line from the tip back to the stem end.
HandleMeshData arrowStemData();
/// Two points at the origin, replaced before each draw.
HandleMeshData connectorLineData();
