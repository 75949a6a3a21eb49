#pragma once
// The host's record of a location event and the bits of its flags.

#include <cstddef>
#include <cstdint>

#include "frame/abi/boundary_types.h"

namespace Tessera::Sorrel::ViewerAPI {

struct RawLocationEvent {
    const char* location;
    AttributeHandle attributes;  // borrowed, may be null
    AttributeHandle transform;   // borrowed, may be null
    std::uint32_t flags;
};
static_assert(offsetof(RawLocationEvent, attributes) == 8);
static_assert(offsetof(RawLocationEvent, transform) == 16);
static_assert(offsetof(RawLocationEvent, flags) == 24);

/// Bits of RawLocationEvent::flags.
namespace LocationEventFlag {
constexpr std::uint32_t kFlag0 = 0x1;
constexpr std::uint32_t kExcluded = 0x2;
constexpr std::uint32_t kFlag2 = 0x4;
constexpr std::uint32_t kFlag3 = 0x8;
constexpr std::uint32_t kLocationRemoved = 0x10000;
constexpr std::uint32_t kAttributesChanged = 0x20000;
constexpr std::uint32_t kTransformChanged = 0x40000;
constexpr std::uint32_t kStateChanged = 0x80000;
constexpr std::uint32_t kFlag20 = 0x100000;
}  // namespace LocationEventFlag

}  // namespace Tessera::Sorrel::ViewerAPI
