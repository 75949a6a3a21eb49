#pragma once
// A USD location event as a viewer delegate component reads it.

#include "frame/abi/raw_usd_location_event.h"

namespace Tessera::Sorrel::ViewerAPI {

/// Built on the entry's stack; holds no reference.
struct UsdLocationEvent {
    bool flag0 = false;
    double time = 0.0;
    const vrt::Path* path = nullptr;
    const vrt::Prim* prim = nullptr;
    bool excluded = false;
    bool flag2 = false;
    bool primAdded = false;
    bool primChanged = false;
    bool primRemoved = false;

    static UsdLocationEvent fromRaw(const RawUsdLocationEvent& raw);
};

}  // namespace Tessera::Sorrel::ViewerAPI
