#pragma once
// The host's table that turns option names into identifiers.

#include <cstddef>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kOptionIdGeneratorSuite version 1.
struct OptionIdGeneratorHostSuite {
    void* (*getGenerator)();                               // 0
    OptionId (*generateId)(void* generator, const char*);  // 1
};
static_assert(offsetof(OptionIdGeneratorHostSuite, generateId) == 1 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
