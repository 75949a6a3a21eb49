#pragma once
// Content hashes of attributes, as the "AttributeHost" table answers them.

#include <cstdint>
#include <utility>

#include "host/core/attribute_node.h"

namespace sorrel {

/// Two words over type, sample times, values and children (names and
/// content, in order): equal contents, equal hash.
std::pair<std::uint64_t, std::uint64_t> contentHash(const AttrNode& node);

}  // namespace sorrel
