#pragma once
// Reading what the plugin sends to the host's objects: a value of the
// expected type, or nothing when the attribute is null, of another type or
// empty. Values come from the first sample.

#include <cstdint>
#include <optional>
#include <string>

#include "host/core/attribute_ref.h"

namespace sorrel {

std::optional<std::int32_t> readInt(const AttrRef& attribute);
std::optional<double> readDouble(const AttrRef& attribute);
std::optional<std::string> readString(const AttrRef& attribute);

}  // namespace sorrel
