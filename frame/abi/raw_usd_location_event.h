#pragma once
// The host's record of a USD location event and the bits of its flags.

#include <cstddef>
#include <cstdint>

namespace vrt {
class Path;
class Prim;
}  // namespace vrt

namespace Tessera::Sorrel::ViewerAPI {

struct RawUsdLocationEvent {
    double time;
    const vrt::Path* path;  // borrowed
    const vrt::Prim* prim;  // borrowed
    std::uint32_t flags;
};
static_assert(offsetof(RawUsdLocationEvent, path) == 8);
static_assert(offsetof(RawUsdLocationEvent, prim) == 16);
static_assert(offsetof(RawUsdLocationEvent, flags) == 24);

/// Bits of RawUsdLocationEvent::flags.
namespace UsdLocationEventFlag {
constexpr std::uint32_t kFlag0 = 0x1;
constexpr std::uint32_t kExcluded = 0x2;
constexpr std::uint32_t kFlag2 = 0x4;
constexpr std::uint32_t kPrimAdded = 0x10000;
constexpr std::uint32_t kPrimChanged = 0x20000;
constexpr std::uint32_t kPrimRemoved = 0x40000;
}  // namespace UsdLocationEventFlag

}  // namespace Tessera::Sorrel::ViewerAPI
