#pragma once
// The names the placement layer is known by, takes and answers, and those it
// sends to its siblings (the selection and snapping layers, the manipulator)
// and to the viewer delegate. Each name is written here once; the labels of
// the placement modes and their snapping strategies are in the mode table of
// placement/placement_mode.cpp.

namespace Tessera::Sorrel::Names {

/// The placement layer's row, registered by plugin/; the host sets the plugin's options on it.
inline constexpr const char* kPlacementLayerName = "BeamwrightLayer";

// ---- options the host sets on the placement layer ----

/// The placement mode by its label, a string.
inline constexpr const char* kModeOption = "Mode";
/// From the picked point to a placed light, world units, a double.
inline constexpr const char* kDefaultDistanceOption = "DefaultDistance";
/// A new package's shadow fall distance, a double.
inline constexpr const char* kDefaultShadowFallDistanceOption = "DefaultShadowFallDistance";
/// The class of package that Shift with a left press creates; also a field of the package command.
inline constexpr const char* kPackageClassNameOption = "PackageClassName";
/// The node that a new package goes under; also a field of the package command.
inline constexpr const char* kMarquetteNodeNameOption = "MarquetteNodeName";
/// Starts a package class name that clones the selection's package, taking its two distances.
inline constexpr const char* kClonePackageMarker = "Beamwright.ClonePackage";

// ---- options the placement layer answers to the viewer's other objects, 0 or 1 by its mode ----

/// 1 in the mode that edits light materials.
inline constexpr const char* kPositionLockedOption = "PositionLocked";
/// 1 in the mode that keeps the light's rotation.
inline constexpr const char* kFixedRotationOption = "FixedRotation";
/// 1 in the modes that stand the light on the snapped point itself.
inline constexpr const char* kHandleAtOriginOption = "HandleAtOrigin";
/// 1 in the mode that places by the light's shadow.
inline constexpr const char* kShadowHandlesOption = "ShadowHandles";

// ---- the selection layer ----

/// The viewer's selection layer, found by name on the viewport.
inline constexpr const char* kSelectionLayerName = "SelectionLayer";
/// Set on the selection layer on every kEnabledOption: 1 while the placement layer is on.
inline constexpr const char* kSelectionModeOption = "BeamwrightSelectionMode";

// ---- the snapping layer: one prepared pick, read back at once ----

/// The viewer's snapping layer, found by name on the viewport.
inline constexpr const char* kSnappingLayerName = "SnappingLayer";
/// Set with a group of the event's pixel and, for some modes, a strategy.
inline constexpr const char* kPreparePickOnDemandOption = "SnappingLayer.PreparePickOnDemand";
/// The request's snapping strategy, a string from the mode table.
inline constexpr const char* kStrategyTypeAttribute = "StrategyType";
/// Read back at once: a group of the picked point and the normal there.
inline constexpr const char* kPickOnDemandOption = "SnappingLayer.PickOnDemand";
/// The picked point in the answer, three floats.
inline constexpr const char* kPointAttribute = "point";
/// The surface normal at the point in the answer, three floats.
inline constexpr const char* kNormalAttribute = "normal";

// ---- the manipulator, whose handles move the selected lights ----

/// The viewer's light manipulator, found by name on the viewport.
inline constexpr const char* kManipulatorName = "GLBeamwrightManipulator";
/// Set on every handle on each press or move: the event's modifiers attribute.
inline constexpr const char* kCurrentModifiersOption = "CurrentModifiers";
/// Set on every handle on each placing press or drag: the placement, or null for none.
inline constexpr const char* kLightDataOption = "LightData";
/// Where the placed light stands, three doubles.
inline constexpr const char* kPositionAttribute = "position";
/// Where the placed light looks, three doubles.
inline constexpr const char* kDirectionAttribute = "direction";
/// From the placed light to the picked point, a double.
inline constexpr const char* kDistanceAttribute = "distance";
/// 1 when the light stands on the picked point itself.
inline constexpr const char* kStrictPositionAttribute = "strictPosition";
/// 1 when the light keeps its orientation.
inline constexpr const char* kOrientationFixedAttribute = "orientationFixed";

// ---- the viewer delegate's methods ----

/// Answers the path of the package that holds the current selection; called before a clone.
inline constexpr const char* kFindPackageMethod = "FindPackageLocationPathForCurrentSelection";
/// Creates a light package from a group of the fields below and the two name options; unanswered.
inline constexpr const char* kCreateLightPackageMethod = "CreateLightPackage";
/// Where the new package stands, three doubles.
inline constexpr const char* kPackagePositionAttribute = "Position";
/// The new package's rotation in degrees about x, y and z, three doubles.
inline constexpr const char* kPackageRotationAttribute = "Rotation";
/// The new package's distance to its centre of interest, a double.
inline constexpr const char* kPackageCenterOfInterestAttribute = "CenterOfInterest";
/// The new package's shadow fall distance, a double.
inline constexpr const char* kPackageShadowFallDistanceAttribute = "ShadowFallDistance";

}  // namespace Tessera::Sorrel::Names
