#pragma once
// The flags the placement layer answers for its current mode, which
// "GLBeamwrightManipulator" asks before it moves a light or draws its handle:
//
//   "PositionLocked"  the light stays where it stands ("Edit Light Materials")
//   "FixedRotation"   the light moves without turning
//   "HandleAtOrigin"  the handle stands at the light's origin, not at its
//                     centre of interest
//   "ShadowHandles"   the shadow handles show: the light's shadow fall
//                     distance along its aim
//
// A flag counts when the layer answers the integer 1; a viewport without the
// layer, or an answer of another type, leaves every flag off.

namespace sorrel {

class Viewport;

struct ManipulatorFlags {
    bool positionLocked = false;
    bool fixedRotation = false;
    bool handleAtOrigin = false;
    bool shadowHandles = false;

    bool operator==(const ManipulatorFlags& other) const {
        return positionLocked == other.positionLocked && fixedRotation == other.fixedRotation &&
               handleAtOrigin == other.handleAtOrigin && shadowHandles == other.shadowHandles;
    }
};

/// Asks the viewport's placement layer ("BeamwrightLayer") for each flag, now.
ManipulatorFlags askManipulatorFlags(Viewport& viewport);

}  // namespace sorrel
