#pragma once
// Reading what the plugin sends to the host's objects: a value of the
// expected type, or nothing when the attribute is null, of another type or
// empty. Values come from the first sample.

#include <cstdint>
#include <optional>
#include <string>

#include "host/core/attribute_ref.h"
#include "host/viewer/vec3.h"

namespace sorrel {

std::optional<std::int32_t> readInt(const AttrRef& attribute);
std::optional<double> readDouble(const AttrRef& attribute);
std::optional<std::string> readString(const AttrRef& attribute);
/// A double attribute of exactly three values.
std::optional<Vec3> readDoubleTriple(const AttrRef& attribute);

/// A float attribute of three values: how the host answers points and normals.
AttrRef floatTriple(const Vec3& v);

}  // namespace sorrel
