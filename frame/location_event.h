#pragma once
// A location event as a viewer delegate component reads it.

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
    static LocationEvent fromRaw(const RawLocationEvent& raw);
};

}  // namespace Tessera::Sorrel::ViewerAPI
