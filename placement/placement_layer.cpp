#include "placement/placement_layer.h"

#include "frame/option_id.h"
#include "frame/wrappers.h"
#include "placement/placement_names.h"
#include "scene/scene_names.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::placementModeFromLabel;
using Tessera::Sorrel::ViewerUtils::placementModeTraits;
using Tessera::Sorrel::ViewerUtils::PlacementModeTraits;

void BeamwrightLayer::setOption(OptionId id, Attribute value) {
    static const OptionId kEnabled = getOptionId(kEnabledOption);
    static const OptionId kPackageClassName = getOptionId(kPackageClassNameOption);
    static const OptionId kMarquetteNodeName = getOptionId(kMarquetteNodeNameOption);
    static const OptionId kMode = getOptionId(kModeOption);
    static const OptionId kDefaultDistance = getOptionId(kDefaultDistanceOption);
    static const OptionId kDefaultShadowFallDistance =
        getOptionId(kDefaultShadowFallDistanceOption);

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
    // The selection layer hears of every kEnabledOption, also of one that changes nothing.
    if (const auto selection = viewport->getLayer(kSelectionLayerName))
        selection->setOption(kSelectionModeOption, IntAttribute::create(enabled ? 1 : 0));
}

void BeamwrightLayer::setMode(const std::string& label) {
    const PlacementMode previous = mode;
    mode = placementModeFromLabel(label);
    if (mode != previous) getViewport()->setDirty(true);
}

Attribute BeamwrightLayer::getOption(OptionId id) {
    static const OptionId kPositionLocked = getOptionId(kPositionLockedOption);
    static const OptionId kFixedRotation = getOptionId(kFixedRotationOption);
    static const OptionId kHandleAtOrigin = getOptionId(kHandleAtOriginOption);
    static const OptionId kShadowHandles = getOptionId(kShadowHandlesOption);

    const PlacementModeTraits& traits = placementModeTraits(mode);
    const auto flag = [](bool value) { return IntAttribute::create(value ? 1 : 0); };
    if (id == kPositionLocked) return flag(traits.positionLocked);
    if (id == kFixedRotation) return flag(traits.fixedRotation);
    if (id == kHandleAtOrigin) return flag(traits.placesOnSnappedPoint());
    if (id == kShadowHandles) return flag(traits.shadowHandles);
    return ViewportLayer::getOption(id);
}
