#pragma once
// A location event as a viewer delegate component reads it.

#include <cstdint>
#include <string_view>

#include "frame/abi/raw_location_event.h"
#include "frame/attribute.h"

namespace Tessera::Sorrel::ViewerAPI {

struct LocationEvent {
    /// The host's text, lent for the call.
    std::string_view locationPath;
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

    /// Points at the text and takes references of its own to both attributes.
    /// Inline: every location event of a scene passes through it.
    static LocationEvent fromRaw(const RawLocationEvent& raw) {
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
};

}  // namespace Tessera::Sorrel::ViewerAPI
