#pragma once
// The host's tables for viewer objects, typed at the positions the plugin calls.
// A function with "three outs" fills the host handle, plugin handle and entry
// table of the object it reports.

#include <cstddef>
#include <cstdint>

#include "frame/host_api.h"

namespace Tessera::Sorrel::ViewerAPI {

using ThreeOutsByName = void (*)(void* hostHandle, const char* name, void** objectHostHandle,
                                 void** pluginHandle, const void** suite);
using ThreeOutsByIndex = void (*)(void* hostHandle, std::uint32_t index, void** objectHostHandle,
                                  void** pluginHandle, const void** suite);
using ThreeOuts = void (*)(void* hostHandle, void** objectHostHandle, void** pluginHandle,
                           const void** suite);

/// "ViewerDelegateHost" version 4.
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
static_assert(offsetof(ViewerDelegateHostSuite, getWorldTransform) == 3 * sizeof(void*));
static_assert(offsetof(ViewerDelegateHostSuite, callMethod) == 19 * sizeof(void*));
static_assert(offsetof(ViewerDelegateHostSuite, getComponent) == 21 * sizeof(void*));

/// "ViewportHost" version 3.
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
static_assert(offsetof(ViewportHostSuite, getActiveCamera) == 2 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getWidth) == 16 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, setDirty) == 19 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getLayerByName) == 22 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getNumberOfLayers) == 26 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getViewMatrix) == 29 * sizeof(void*));
static_assert(offsetof(ViewportHostSuite, getManipulator) == 36 * sizeof(void*));

/// "ViewportCameraHost" version 2.
struct ViewportCameraHostSuite {
    ReservedSlot reserved0to13[14];
    void (*getOrigin)(void*, double* x, double* y, double* z);  // 14
};
static_assert(offsetof(ViewportCameraHostSuite, getOrigin) == 14 * sizeof(void*));

/// "ManipulatorHost" version 2.
struct ManipulatorHostSuite {
    ReservedSlot reserved0to12[13];
    ThreeOutsByIndex getHandle;  // 13
    ReservedSlot reserved14to15[2];
    std::uint32_t (*getNumberOfHandles)(void*);  // 16
};
static_assert(offsetof(ManipulatorHostSuite, getHandle) == 13 * sizeof(void*));
static_assert(offsetof(ManipulatorHostSuite, getNumberOfHandles) == 16 * sizeof(void*));

/// "ManipulatorHandleHost" version 1: fetched, never called.
struct ManipulatorHandleHostSuite {
    ReservedSlot reserved0;
};

/// The entry a manipulator handle takes options through (position 5 of its table).
using ManipulatorHandleSetOption = void (*)(void* pluginHandle, OptionId, AttributeHandle givenOver);
constexpr std::size_t kManipulatorHandleSetOptionPosition = 5;

}  // namespace Tessera::Sorrel::ViewerAPI
