// BeamwrightLayer::computePlacement: one prepared pick on the snapping layer,
// read back at once, then the formula of the current mode.

#include "frame/frame_names.h"
#include "frame/group_builder.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_math.h"
#include "placement/placement_names.h"
#include "placement/vector_attributes.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

LightPlacement BeamwrightLayer::computePlacement(const Attribute& x, const Attribute& y,
                                                 double distance, double shadowFallDistance) {
    const PlacementModeTraits& traits = placementModeTraits(mode);
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const auto snapping = viewport->getLayer(kSnappingLayerName);
    if (!snapping) return {};

    GroupBuilder request;
    request.set(kXAttribute, x).set(kYAttribute, y);
    if (traits.snappingStrategy != nullptr)
        request.set(kStrategyTypeAttribute, StringAttribute::create(traits.snappingStrategy));
    snapping->setOption(kPreparePickOnDemandOption, request.build());

    const GroupAttribute reply(snapping->getOption(kPickOnDemandOption));
    if (!reply.isValid()) return {};
    const std::optional<Vec3d> point = readFloatTriple(reply, kPointAttribute);
    const std::optional<Vec3d> normal = readFloatTriple(reply, kNormalAttribute);
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
