// BeamwrightLayer::computePlacement: one prepared pick on "SnappingLayer",
// read back at once, then the formula of the current mode.

#include "frame/group_builder.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_math.h"
#include "placement/vector_attributes.h"

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr const char* kSnappingLayerName = "SnappingLayer";

}  // namespace

LightPlacement BeamwrightLayer::computePlacement(const Attribute& x, const Attribute& y,
                                                 double distance, double shadowFallDistance) {
    const PlacementModeTraits& traits = placementModeTraits(mode);
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const auto snapping = viewport->getLayer(kSnappingLayerName);
    if (!snapping) return {};

    GroupBuilder request;
    request.set("x", x).set("y", y);
    if (traits.snappingStrategy != nullptr)
        request.set("StrategyType", StringAttribute::create(traits.snappingStrategy));
    snapping->setOption("SnappingLayer.PreparePickOnDemand", request.build());

    const GroupAttribute reply(snapping->getOption("SnappingLayer.PickOnDemand"));
    if (!reply.isValid()) return {};
    const std::optional<Vec3d> point = readFloatTriple(reply, "point");
    const std::optional<Vec3d> normal = readFloatTriple(reply, "normal");
    if (!point || !normal) return {};

    const Vec3d unitNormal = normalizedOrZero(*normal);
    const Vec3d eye = traits.usesEye() ? viewport->getActiveCamera()->getOrigin() : Vec3d{};
    const std::optional<LightPose> pose = placeLight(mode, *point, unitNormal, eye, distance);
    if (!pose) return {};

    LightPlacement placement;
    placement.valid = true;
    placement.position = pose->position;
    placement.direction = pose->direction;
    placement.distance = distance;
    placement.shadowFallDistance = shadowFallDistance;
    placement.strictPosition = traits.placesOnSnappedPoint();
    placement.orientationFixed = traits.orientationFixed;
    return placement;
}
