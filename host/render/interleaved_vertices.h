#pragma once
// The vertex layout of the host's own drawing: two attributes of three floats
// each, interleaved (slot 0, then slot 1: a position and a normal or colour).

#include <vector>

#include "host/viewer/vec3.h"

namespace sorrel {

constexpr int kFloatsPerVertex = 6;

void appendTriple(std::vector<float>& vertices, const Vec3& v);

/// Describes the layout to the bound vertex array for the bound array buffer.
void describeInterleavedVertices();

}  // namespace sorrel
