#pragma once
// The host's table for a viewport's camera.

#include <cstddef>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kViewportCameraHostSuite version 2.
struct ViewportCameraHostSuite {
    ReservedSlot reserved0to13[14];
    void (*getOrigin)(void*, double* x, double* y, double* z);  // 14
};
static_assert(offsetof(ViewportCameraHostSuite, getOrigin) == 14 * sizeof(void*));

}  // namespace Tessera::Sorrel::ViewerAPI
