#pragma once
// The location events a viewer delegate component receives, as the host lays
// them out and as the component reads them.

#include <cstddef>
#include <cstdint>
#include <string>

#include "frame/attribute.h"

namespace vrt {
class Path;
class Prim;
}  // namespace vrt

namespace Tessera::Sorrel::ViewerAPI {

/// The host's record of a location event; a binary interface.
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

struct LocationEvent {
    std::string locationPath;
    GroupAttribute attributes;
    DoubleAttribute transform;
    bool flag0 = false;
    bool excluded = false;
    bool flag2 = false;
    bool flag3 = false;
    bool locationRemoved = false;
    bool attributesChanged = false;
    bool transformChanged = false;
    bool stateChanged = false;
    bool flag20 = false;

    /// Copies the text and takes references of its own to both attributes.
    static LocationEvent fromRaw(const RawLocationEvent& raw);
};

/// The host's record of a USD location event; a binary interface.
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
