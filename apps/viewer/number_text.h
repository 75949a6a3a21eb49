#pragma once
// Numbers as the viewer prints them: fixed decimals, and never "-0.00" for a
// value that only rounds to zero from below.

#include <string>

#include "host/viewer/vec3.h"

namespace viewer {

std::string fixed(double value, int decimals = 2);
/// "(x, y, z)" with each number as fixed() writes it.
std::string fixedTriple(const sorrel::Vec3& v, int decimals = 2);

}  // namespace viewer
