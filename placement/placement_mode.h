#pragma once
// PlacementMode: how a light is placed from a picked point, chosen by the
// label that kModeOption carries, and the one table of what each mode does.

#include <cstdint>
#include <string_view>

namespace Tessera::Sorrel::ViewerUtils {

enum class PlacementMode : std::int32_t {
    ModeNone = 0,
    ModeEditLightMaterials = 1,
    ModeFixedRotation = 2,
    ModeNormal = 3,
    ModeSpecular = 4,
    ModeReflection = 5,
    ModeShadow = 6,
    ModeFaceCenter = 7,
    ModeFaceCenterOriented = 8,
    ModeObjectSurface = 9,
    ModeObjectSurfaceOriented = 10,
    ModeObjectCenter = 11,
};

/// The formula that turns a picked point and normal into a light's pose.
enum class PlacementFormula {
    /// Places nothing.
    None,
    /// From the point along the normal, aiming back at it.
    AimAlongNormal,
    /// Along the line of sight mirrored at the surface.
    AimByReflection,
    /// Along the half vector of the normal and the mirrored line of sight.
    AimBySpecular,
    /// On the point itself, the direction carrying the normal.
    StandOnPoint,
};

/// What one mode does, wherever the layer asks.
struct PlacementModeTraits {
    PlacementMode mode;
    /// The label of kModeOption that selects the mode; empty for ModeNone.
    std::string_view label;
    /// kStrategyTypeAttribute of the request to the snapping layer; null for none.
    const char* snappingStrategy;
    PlacementFormula formula;
    /// The light keeps its orientation: kOrientationFixedAttribute of a placement.
    bool orientationFixed;
    /// Answers of getOption kPositionLockedOption, kFixedRotationOption and
    /// kShadowHandlesOption.
    bool positionLocked;
    bool fixedRotation;
    bool shadowHandles;

    /// The light stands on the snapped point itself: kStrictPositionAttribute of
    /// a placement, and the answer of getOption kHandleAtOriginOption.
    constexpr bool placesOnSnappedPoint() const {
        return formula == PlacementFormula::StandOnPoint;
    }
    /// The formula reads the camera's origin.
    constexpr bool usesEye() const {
        return formula == PlacementFormula::AimByReflection ||
               formula == PlacementFormula::AimBySpecular;
    }
};

/// The traits of `mode`; those of ModeNone for values outside the enumeration.
const PlacementModeTraits& placementModeTraits(PlacementMode mode);

/// The mode whose label equals `text` in length and bytes, case-sensitive;
/// ModeNone for any other text, the empty text included.
PlacementMode placementModeFromLabel(std::string_view text);

}  // namespace Tessera::Sorrel::ViewerUtils
