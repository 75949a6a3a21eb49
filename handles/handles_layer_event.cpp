// BeamwrightCOIHandlesLayer: following the pointer. A plain move searches the
// viewport's layers for a location under the pointer; the layer never uses an
// event up, so the other layers see every one.

#include <cstdlib>
#include <limits>

#include "frame/frame_names.h"
#include "frame/option_id.h"
#include "frame/own_plugin_instance.h"
#include "frame/wrappers.h"
#include "handles/handles_layer.h"
#include "handles/handles_names.h"
#include "scene/scene_names.h"
#include "support/environment_flag.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::environmentFlagIsSet;

namespace {

constexpr std::int32_t kPickSize = 1;  // pixels
/// What a hit without a written depth keeps.
constexpr float kNoDepth = std::numeric_limits<float>::max();
/// A UI layer's hit beats every real depth.
constexpr float kUILayerDepth = std::numeric_limits<float>::min();
/// Depths run from 0, nearest, to 1.
constexpr float kFarthestDepth = 1.0f;

bool isThisLayer(const ViewportLayerWrapper& layer, const BeamwrightCOIHandlesLayer* self) {
    // Another library's layer is passed over without touching its object.
    return ownLayerInstance<BeamwrightCOIHandlesLayer>(layer) == self;
}

}  // namespace

bool BeamwrightCOIHandlesLayer::event(const GroupAttribute& event) {
    static const AttributeHash kMouseMove = hashOfText(kMouseMoveEvent);
    static const AttributeHash kLeave = hashOfText(kLeaveEvent);

    if (!enabled) return false;
    const GroupAttribute data = getEventData(event);
    if (!data.isValid()) return false;
    const AttributeHash type = getEventTypeHash(event);
    const auto readInt = [&data](const char* name) {
        return data.getChild<IntAttribute>(name).getValue(0);
    };
    const std::int32_t buttons = readInt(kButtonsAttribute);
    const std::int32_t modifiers = readInt(kModifiersAttribute);
    const std::int32_t x = readInt(kXAttribute);
    const std::int32_t y = readInt(kYAttribute);

    const bool isMove = type == kMouseMove;
    if (!isMove && type != kLeave) return false;
    // Leaving, and a move with a button or modifier held, end a hover without a search.
    const std::uint64_t found =
        isMove && buttons == 0 && modifiers == 0 ? findHoveredLocation(x, y) : 0;
    if (found != hoveredLocation) {
        hoveredLocation = found;
        getViewport()->setDirty(true);
    }
    return false;
}

std::uint64_t BeamwrightCOIHandlesLayer::findHoveredLocation(std::int32_t x, std::int32_t y) {
    // Read once per process; the second only when hover is on.
    static const bool hoverDisabled = environmentFlagIsSet(std::getenv(kDisableHoverVariable));
    if (hoverDisabled) return 0;
    static const bool handlesOnly = environmentFlagIsSet(std::getenv(kHoverOnHandlesOnlyVariable));
    static const OptionId kIsUILayer = getOptionId(kIsUILayerOption);

    std::uint64_t result = 0;
    float nearest = kFarthestDepth;
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const std::uint32_t count = viewport->getNumberOfLayers();
    for (std::uint32_t index = 0; index < count; ++index) {
        const std::shared_ptr<ViewportLayerWrapper> layer = viewport->getLayer(index);
        if (!layer) continue;
        if (handlesOnly && !isThisLayer(*layer, this)) continue;

        float depth = kNoDepth;
        PickedAttrsMap picked;
        layer->pick(x, y, kPickSize, kPickSize, /* flag = */ false, picked, &depth);
        if (picked.empty()) continue;
        if (IntAttribute(layer->getOption(kIsUILayer)).getValue(0) != 0) depth = kUILayerDepth;
        // Equal depths: the later layer wins.
        if (depth > nearest) continue;
        nearest = depth;

        // The highest key with a location wins; one without keeps what was found.
        for (const auto& [id, value] : picked) {
            const auto location =
                GroupAttribute(value).getChild<StringAttribute>(kLocationAttribute);
            if (location.isValid()) result = location.hash().words[0];
        }
    }
    return result;
}
