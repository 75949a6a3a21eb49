#pragma once
// The host's tables for a manipulator and its handles, and the one entry of a
// handle's own table that the plugin calls.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

/// kManipulatorHostSuite version 2.
struct ManipulatorHostSuite {
    ReservedSlot reserved0to12[13];
    ThreeOutsByIndex getHandle;  // 13
    ReservedSlot reserved14to15[2];
    std::uint32_t (*getNumberOfHandles)(void*);  // 16
};
static_assert(offsetof(ManipulatorHostSuite, getHandle) == 13 * sizeof(void*));
static_assert(offsetof(ManipulatorHostSuite, getNumberOfHandles) == 16 * sizeof(void*));

/// kManipulatorHandleHostSuite version 1: fetched, never called.
struct ManipulatorHandleHostSuite {
    ReservedSlot reserved0;
};

/// The entry a manipulator handle takes options through (position 5 of its table).
using ManipulatorHandleSetOption = void (*)(void* pluginHandle, OptionId,
                                            AttributeHandle givenOver);
constexpr std::size_t kManipulatorHandleSetOptionPosition = 5;

}  // namespace Tessera::Sorrel::ViewerAPI
