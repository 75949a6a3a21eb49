// BeamwrightLayer::runPackageCommand: a new light package at the placement
// under the cursor, through the viewer delegate's "CreateLightPackage". A
// class name that starts with the clone marker takes its two distances from
// the package of the current selection.

#include "frame/group_builder.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_math.h"
#include "placement/vector_attributes.h"

using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

constexpr const char* kCloneMarker = "Beamwright.ClonePackage";

/// The marker's last occurrence stands at the very start.
bool isClone(const std::string& packageClassName) {
    return packageClassName.rfind(kCloneMarker) == 0;
}

}  // namespace

bool BeamwrightLayer::runPackageCommand(const Attribute& x, const Attribute& y,
                                        const ViewerDelegateWrapper& delegate) {
    double distance = defaultDistance;
    double shadowFall = defaultShadowFallDistance;

    if (isClone(packageClassName)) {
        const std::string path =
            StringAttribute(delegate.callMethod("FindPackageLocationPathForCurrentSelection", {}))
                .getValue();
        const GroupAttribute package = delegate.getLocationAttributes(path, 0);
        distance =
            package.getChild<DoubleAttribute>("geometry.centerOfInterest").getValue(distance);
        shadowFall =
            package.getChild<DoubleAttribute>("geometry.shadowFallDistance").getValue(shadowFall);
    }

    const LightPlacement placement = computePlacement(x, y, distance, shadowFall);
    if (!placement.valid) return false;

    GroupBuilder command;
    command.set("PackageClassName", StringAttribute::create(packageClassName.c_str()))
        .set("MarquetteNodeName", StringAttribute::create(marquetteNodeName.c_str()))
        .set("Position", doubleTriple(placement.position))
        .set("Rotation", doubleTriple(rotationDegreesForDirection(placement.direction)))
        .set("CenterOfInterest", DoubleAttribute::create(placement.distance))
        .set("ShadowFallDistance", DoubleAttribute::create(placement.shadowFallDistance));
    // The host's answer is not looked at: the request itself is the result.
    delegate.callMethod("CreateLightPackage", command.build());
    return true;
}
