#pragma once
// The host's table for a viewport.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kViewportHostSuite version 3.
struct ViewportHostSuite {
    ReservedSlot reserved0;
    ThreeOuts getViewerDelegate;  // 1
    ThreeOuts getActiveCamera;    // 2
    ReservedSlot reserved3to15[13];
    std::int32_t (*getWidth)(void*);   // 16
    std::int32_t (*getHeight)(void*);  // 17
    ReservedSlot reserved18;
    void (*setDirty)(void*, std::uint8_t);  // 19
    ReservedSlot reserved20to21[2];
    ThreeOutsByName getLayerByName;    // 22
    ThreeOutsByIndex getLayerByIndex;  // 23
    ReservedSlot reserved24to25[2];
    std::uint32_t (*getNumberOfLayers)(void*);  // 26
    ReservedSlot reserved27to28[2];
    const double* (*getViewMatrix)(void*);        // 29
    const double* (*getProjectionMatrix)(void*);  // 30
    ReservedSlot reserved31to35[5];
    ThreeOutsByName getManipulator;  // 36
};
static_assert(offsetof(ViewportHostSuite, getViewerDelegate) == 1 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getActiveCamera) == 2 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getWidth) == 16 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getHeight) == 17 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, setDirty) == 19 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getLayerByName) == 22 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getLayerByIndex) == 23 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getNumberOfLayers) == 26 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getViewMatrix) == 29 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getProjectionMatrix) == 30 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getManipulator) == 36 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
