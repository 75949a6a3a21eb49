#pragma once
// The host's table for a viewport layer.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kViewportLayerHostSuite version 2.
struct ViewportLayerHostSuite {
    ThreeOuts getViewport;  // 0
    ReservedSlot reserved1to3[3];
    std::uint64_t (*addPickedAttr)(void* layerHostHandle, AttributeHandle borrowed);  // 4
    AttributeHandle (*pick)(void* layerHostHandle, std::int32_t x, std::int32_t y,
                            std::int32_t width, std::int32_t height, std::int32_t flag,
                            float* depth);  // 5
};
static_assert(offsetof(ViewportLayerHostSuite, getViewport) == 0);
static_assert(offsetof(ViewportLayerHostSuite, addPickedAttr) == 4 * sizeof(void*));
static_assert(offsetof(ViewportLayerHostSuite, pick) == 5 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
