#pragma once
// Points and directions as attributes: how the plugin sends them to the
// host's objects, and how the host answers them.

#include <optional>

#include "host/core/attribute_ref.h"
#include "host/viewer/vec3.h"

namespace sorrel {

/// A double attribute of exactly three values; nothing otherwise.
std::optional<Vec3> readDoubleTriple(const AttrRef& attribute);

/// A float attribute of three values: how the host answers points and normals.
AttrRef floatTriple(const Vec3& v);

}  // namespace sorrel
