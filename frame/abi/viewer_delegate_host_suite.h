#pragma once
// The host's table for the viewer delegate.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kViewerDelegateHostSuite version 4.
struct ViewerDelegateHostSuite {
    ReservedSlot reserved0;
    AttributeHandle (*getLocationAttributes)(void*, const char* path, std::uint32_t flag);  // 1
    ReservedSlot reserved2;
    AttributeHandle (*getWorldTransform)(void*, const char* path, std::uint32_t flag);  // 3
    ReservedSlot reserved4to18[15];
    AttributeHandle (*callMethod)(void*, const char* name, AttributeHandle borrowed);  // 19
    ReservedSlot reserved20;
    ThreeOutsByName getComponent;  // 21
};
static_assert(offsetof(ViewerDelegateHostSuite, getLocationAttributes) == 1 * sizeof(void*));
static_assert(offsetof(ViewerDelegateHostSuite, getWorldTransform) == 3 * sizeof(void*));
static_assert(offsetof(ViewerDelegateHostSuite, callMethod) == 19 * sizeof(void*));
static_assert(offsetof(ViewerDelegateHostSuite, getComponent) == 21 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
