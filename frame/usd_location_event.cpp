#include "frame/usd_location_event.h"

namespace Tessera::Sorrel::ViewerAPI {

UsdLocationEvent UsdLocationEvent::fromRaw(const RawUsdLocationEvent& raw) {
    namespace Flag = UsdLocationEventFlag;
    const std::uint32_t flags = raw.flags;
    UsdLocationEvent event;
    event.flag0 = flags & Flag::kFlag0;
    event.time = raw.time;
    event.path = raw.path;
    event.prim = raw.prim;
    event.excluded = flags & Flag::kExcluded;
    event.flag2 = flags & Flag::kFlag2;
    event.primAdded = flags & Flag::kPrimAdded;
    event.primChanged = flags & Flag::kPrimChanged;
    event.primRemoved = flags & Flag::kPrimRemoved;
    return event;
}

}  // namespace Tessera::Sorrel::ViewerAPI
