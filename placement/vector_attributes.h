#pragma once
// Vectors in attributes, as the placement layer sends and receives them.

#include <optional>

#include "frame/attribute.h"
#include "support/vector_matrix.h"

namespace Tessera::Sorrel::ViewerUtils {

/// `v` as a double attribute of three values, x, y, z.
Tessera::Sorrel::ViewerAPI::DoubleAttribute doubleTriple(const Vec3d& v);

/// The child `name` of `group` as a vector, when it is a float attribute whose
/// sample nearest time 0.0 holds exactly three values; widened to doubles.
std::optional<Vec3d> readFloatTriple(const Tessera::Sorrel::ViewerAPI::GroupAttribute& group,
                                     const char* name);

}  // namespace Tessera::Sorrel::ViewerUtils
