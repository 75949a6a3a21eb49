// BeamwrightLayer::runPackageCommand: a new light package at the placement
// under the cursor, through the viewer delegate's package command. A
// class name that starts with the clone marker takes its two distances from
// the package of the current selection.

#include "frame/group_builder.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_math.h"
#include "placement/placement_names.h"
#include "placement/vector_attributes.h"
#include "scene/scene_names.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using namespace Tessera::Sorrel::ViewerUtils;

namespace {

/// The marker's last occurrence stands at the very start.
bool isClone(const std::string& packageClassName) {
    return packageClassName.rfind(kClonePackageMarker) == 0;
}

}  // namespace

bool BeamwrightLayer::runPackageCommand(const Attribute& x, const Attribute& y,
                                        const ViewerDelegateWrapper& delegate) {
    double distance = defaultDistance;
    double shadowFall = defaultShadowFallDistance;

    if (isClone(packageClassName)) {
        const std::string path =
            StringAttribute(delegate.callMethod(kFindPackageMethod, {})).getValue();
        const GroupAttribute package = delegate.getLocationAttributes(path, 0);
        distance = package.getChild<DoubleAttribute>(kCenterOfInterestAttribute).getValue(distance);
        shadowFall =
            package.getChild<DoubleAttribute>(kShadowFallDistanceAttribute).getValue(shadowFall);
    }

    const LightPlacement placement = computePlacement(x, y, distance, shadowFall);
    if (!placement.valid) return false;

    GroupBuilder command;
    command.set(kPackageClassNameOption, StringAttribute::create(packageClassName.c_str()))
        .set(kMarquetteNodeNameOption, StringAttribute::create(marquetteNodeName.c_str()))
        .set(kPackagePositionAttribute, doubleTriple(placement.position))
        .set(kPackageRotationAttribute,
             doubleTriple(rotationDegreesForDirection(placement.direction)))
        .set(kPackageCenterOfInterestAttribute, DoubleAttribute::create(placement.distance))
        .set(kPackageShadowFallDistanceAttribute,
             DoubleAttribute::create(placement.shadowFallDistance));
    // The host's answer is not looked at: the request itself is the result.
    delegate.callMethod(kCreateLightPackageMethod, command.build());
    return true;
}
