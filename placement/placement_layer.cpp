#include "placement/placement_layer.h"

#include "frame/option_id.h"
#include "frame/wrappers.h"

using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::placementModeFromLabel;
using Tessera::Sorrel::ViewerUtils::placementModeTraits;
using Tessera::Sorrel::ViewerUtils::PlacementModeTraits;

namespace {

constexpr const char* kHandlesLayerName = "BeamwrightCOIHandlesLayer";
constexpr const char* kSelectionLayerName = "SelectionLayer";

}  // namespace

void BeamwrightLayer::setOption(OptionId id, Attribute value) {
    static const OptionId kEnabled = getOptionId("Enabled");
    static const OptionId kPackageClassName = getOptionId("PackageClassName");
    static const OptionId kMarquetteNodeName = getOptionId("MarquetteNodeName");
    static const OptionId kMode = getOptionId("Mode");
    static const OptionId kDefaultDistance = getOptionId("DefaultDistance");
    static const OptionId kDefaultShadowFallDistance = getOptionId("DefaultShadowFallDistance");

    const std::shared_ptr<ViewportWrapper> viewport = getViewport();

    // A value of the wrong type reads as the fallback and overwrites the field.
    if (id == kEnabled) {
        setEnabled(IntAttribute(value).getValue(0) != 0);
    } else if (id == kPackageClassName) {
        packageClassName = StringAttribute(value).getValue();
    } else if (id == kMarquetteNodeName) {
        marquetteNodeName = StringAttribute(value).getValue();
    } else if (id == kMode) {
        setMode(StringAttribute(value).getValue());
    } else if (id == kDefaultDistance) {
        defaultDistance = DoubleAttribute(value).getValue(0.0);
    } else if (id == kDefaultShadowFallDistance) {
        defaultShadowFallDistance = DoubleAttribute(value).getValue(0.0);
    }

    // The host sets both layers of the plugin through this one.
    if (const auto handles = viewport->getLayer(kHandlesLayerName)) handles->setOption(id, value);
}

void BeamwrightLayer::setEnabled(bool value) {
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    if (value != enabled) {
        enabled = value;
        viewport->setDirty(true);
    }
    // The selection layer hears of every "Enabled", also of one that changes nothing.
    if (const auto selection = viewport->getLayer(kSelectionLayerName))
        selection->setOption("BeamwrightSelectionMode", IntAttribute::create(enabled ? 1 : 0));
}

void BeamwrightLayer::setMode(const std::string& label) {
    const PlacementMode previous = mode;
    mode = placementModeFromLabel(label);
    if (mode != previous) getViewport()->setDirty(true);
}

Attribute BeamwrightLayer::getOption(OptionId id) {
    static const OptionId kPositionLocked = getOptionId("PositionLocked");
    static const OptionId kFixedRotation = getOptionId("FixedRotation");
    static const OptionId kHandleAtOrigin = getOptionId("HandleAtOrigin");
    static const OptionId kShadowHandles = getOptionId("ShadowHandles");

    const PlacementModeTraits& traits = placementModeTraits(mode);
    const auto flag = [](bool value) { return IntAttribute::create(value ? 1 : 0); };
    if (id == kPositionLocked) return flag(traits.positionLocked);
    if (id == kFixedRotation) return flag(traits.fixedRotation);
    if (id == kHandleAtOrigin) return flag(traits.placesOnSnappedPoint());
    if (id == kShadowHandles) return flag(traits.shadowHandles);
    return ViewportLayer::getOption(id);
}
