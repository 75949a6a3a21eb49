#pragma once
// The "AttributeHost" version 5 table: the plugin's way to the attribute
// model, its content hashes, group builders and sample blocks, at the
// positions the plugin calls. Every other position traps.

#include <cstddef>
#include <cstdint>

#include "host/core/suite_table.h"

namespace sorrel {

const SuiteTable& attributeHostTable();

/// How many times the plugin called a table position, for tests.
std::uint64_t attributeHostCalls(std::size_t position);
/// Group builders made and not yet released.
std::int64_t outstandingGroupBuilders();

}  // namespace sorrel
