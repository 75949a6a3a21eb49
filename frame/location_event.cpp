#include "frame/location_event.h"

namespace Tessera::Sorrel::ViewerAPI {

LocationEvent LocationEvent::fromRaw(const RawLocationEvent& raw) {
    namespace Flag = LocationEventFlag;
    const std::uint32_t flags = raw.flags;
    LocationEvent event;
    event.locationPath = raw.location;
    event.attributes = GroupAttribute(Attribute::share(raw.attributes));
    event.transform = DoubleAttribute(Attribute::share(raw.transform));
    event.flag0 = flags & Flag::kFlag0;
    event.excluded = flags & Flag::kExcluded;
    event.flag2 = flags & Flag::kFlag2;
    event.flag3 = flags & Flag::kFlag3;
    event.locationRemoved = flags & Flag::kLocationRemoved;
    event.attributesChanged = flags & Flag::kAttributesChanged;
    event.transformChanged = flags & Flag::kTransformChanged;
    event.stateChanged = flags & Flag::kStateChanged;
    event.flag20 = flags & Flag::kFlag20;
    return event;
}

}  // namespace Tessera::Sorrel::ViewerAPI
