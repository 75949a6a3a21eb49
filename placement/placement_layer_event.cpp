// BeamwrightLayer::event: modifiers to the manipulator on every press or move,
// a placement on a plain left press or drag, a package on a Shift left press.
// No state is kept between events: a drag is a run of moves with the left
// button held.

#include "frame/frame_names.h"
#include "frame/group_builder.h"
#include "frame/option_id.h"
#include "frame/wrappers.h"
#include "placement/placement_layer.h"
#include "placement/placement_names.h"
#include "placement/vector_attributes.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::doubleTriple;

namespace {

void setOnEveryHandle(const ManipulatorWrapper& manipulator, OptionId id, const Attribute& value) {
    const std::uint32_t count = manipulator.getNumberOfHandles();
    for (std::uint32_t i = 0; i < count; ++i)
        if (const auto handle = manipulator.getHandle(i)) handle->setOption(id, value);
}

GroupAttribute lightDataOf(const BeamwrightLayer::LightPlacement& placement) {
    GroupBuilder builder;
    builder.set(kPositionAttribute, doubleTriple(placement.position))
        .set(kDirectionAttribute, doubleTriple(placement.direction))
        .set(kDistanceAttribute, DoubleAttribute::create(placement.distance))
        .set(kStrictPositionAttribute, IntAttribute::create(placement.strictPosition ? 1 : 0))
        .set(kOrientationFixedAttribute, IntAttribute::create(placement.orientationFixed ? 1 : 0));
    return builder.build();
}

}  // namespace

bool BeamwrightLayer::event(const GroupAttribute& event) {
    static const AttributeHash kMouseButtonPress = hashOfText(kMouseButtonPressEvent);
    static const AttributeHash kMouseMove = hashOfText(kMouseMoveEvent);
    static const OptionId kCurrentModifiers = getOptionId(kCurrentModifiersOption);
    static const OptionId kLightData = getOptionId(kLightDataOption);

    if (!enabled) return false;
    const std::shared_ptr<ViewportWrapper> viewport = getViewport();
    const std::shared_ptr<ViewerDelegateWrapper> delegate = viewport->getViewerDelegate();

    const GroupAttribute data = getEventData(event);
    if (!data.isValid()) return false;

    const AttributeHash type = getEventTypeHash(event);
    const std::int32_t button = data.getChild<IntAttribute>(kButtonAttribute).getValue(0);
    const std::int32_t buttons = data.getChild<IntAttribute>(kButtonsAttribute).getValue(0);
    const IntAttribute modifiersAttribute = data.getChild<IntAttribute>(kModifiersAttribute);
    const std::int32_t modifiers = modifiersAttribute.getValue(0);
    const IntAttribute x = data.getChild<IntAttribute>(kXAttribute);
    const IntAttribute y = data.getChild<IntAttribute>(kYAttribute);
    const bool isPress = type == kMouseButtonPress;
    const bool isMove = type == kMouseMove;

    if (isPress || isMove) {
        if (const auto manipulator = viewport->getManipulator(kManipulatorName))
            setOnEveryHandle(*manipulator, kCurrentModifiers, modifiersAttribute);
    }

    // Shift with the left press is the one gesture that creates.
    if (isPress && button == kLeftButton && modifiers == kShiftModifier)
        return runPackageCommand(x, y, *delegate);

    if (!isPress && !isMove) return false;
    if (button != kLeftButton && (buttons & kLeftButtonHeldBit) == 0) return false;
    if (modifiers != 0) return false;

    const auto manipulator = viewport->getManipulator(kManipulatorName);
    if (!manipulator) return false;

    const LightPlacement placement =
        computePlacement(x, y, defaultDistance, defaultShadowFallDistance);
    // Nothing under the cursor still tells the handles, with a null kLightDataOption.
    const Attribute lightData = placement.valid ? Attribute(lightDataOf(placement)) : Attribute();
    setOnEveryHandle(*manipulator, kLightData, lightData);
    return false;
}
