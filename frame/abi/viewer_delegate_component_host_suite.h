#pragma once
// The host's table for a viewer delegate component.

#include <cstddef>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kViewerDelegateComponentHostSuite version 2, at the one position the plugin calls.
struct ViewerDelegateComponentHostSuite {
    ThreeOuts getViewerDelegate;  // 0
};
static_assert(offsetof(ViewerDelegateComponentHostSuite, getViewerDelegate) == 0);

}  // namespace Tessera::Sorrel::ViewerAPI
