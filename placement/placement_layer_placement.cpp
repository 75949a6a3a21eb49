// BeamwrightLayer::computePlacement: one prepared pick on "SnappingLayer",
// read back at once, then the formula of the current mode.

#include "frame/group_builder.h"
#include "frame/sample_accessor.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_math.h"

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr const char* kSnappingLayerName = "SnappingLayer";
constexpr std::int64_t kVectorValues = 3;

/// The snapping strategy that a mode asks for; null where it asks for none.
const char* strategyFor(PlacementMode mode) {
    switch (mode) {
        case PlacementMode::ModeFaceCenter: return "Face";
        case PlacementMode::ModeFaceCenterOriented: return "FaceNormal";
        case PlacementMode::ModeObjectSurface: return "Surface";
        case PlacementMode::ModeObjectSurfaceOriented: return "SurfaceNormal";
        case PlacementMode::ModeObjectCenter: return "ObjectCentre";
        default: return nullptr;
    }
}

/// A float child of exactly three values, widened to doubles.
std::optional<Vec3d> readVector(const GroupAttribute& reply, const char* name) {
    const FloatAttribute values = reply.getChild<FloatAttribute>(name);
    if (!values.isValid()) return std::nullopt;
    const SampleAccessor<float> sample(values, kTimeZero);
    if (sample.size() != kVectorValues) return std::nullopt;
    return Vec3d{sample[0], sample[1], sample[2]};
}

}  // namespace

LightPlacement BeamwrightLayer::computePlacement(const Attribute& x, const Attribute& y,
                                                 double distance, double shadowFallDistance) {
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const auto snapping = viewport->getLayer(kSnappingLayerName);
    if (!snapping) return {};

    GroupBuilder request;
    request.set("x", x).set("y", y);
    if (const char* strategy = strategyFor(mode))
        request.set("StrategyType", StringAttribute::create(strategy));
    snapping->setOption("SnappingLayer.PreparePickOnDemand", request.build());

    const GroupAttribute reply(snapping->getOption("SnappingLayer.PickOnDemand"));
    if (!reply.isValid()) return {};
    const std::optional<Vec3d> point = readVector(reply, "point");
    const std::optional<Vec3d> normal = readVector(reply, "normal");
    if (!point || !normal) return {};

    const Vec3d unitNormal = normalizedOrZero(*normal);
    const Vec3d eye = placementUsesEye(mode) ? viewport->getActiveCamera()->getOrigin() : Vec3d{};
    const std::optional<LightPose> pose = placeLight(mode, *point, unitNormal, eye, distance);
    if (!pose) return {};

    LightPlacement placement;
    placement.valid = true;
    placement.position = pose->position;
    placement.direction = pose->direction;
    placement.distance = distance;
    placement.shadowFallDistance = shadowFallDistance;
    placement.strictPosition = placesOnSnappedPoint(mode);
    placement.orientationFixed = mode == PlacementMode::ModeFaceCenter ||
                                 mode == PlacementMode::ModeObjectSurface ||
                                 mode == PlacementMode::ModeObjectCenter;
    return placement;
}
