#pragma once
// The names that cross the boundary, as a host builds and reads them: the
// plugin's classes, the host's own objects the plugin finds by name, the
// options set on both sides, the delegate's commands, the fields of mouse
// events and location attributes. Each name is here once; the host, the
// viewer, the fuzzers and the benchmarks take it from here.

namespace sorrel::names {

// ---- the plugin's classes, as its rows name them ----

/// The viewport layer that turns mouse events into light placements.
inline constexpr const char* kPlacementLayer = "BeamwrightLayer";
/// The viewport layer that draws the centre-of-interest handles.
inline constexpr const char* kHandlesLayer = "BeamwrightCOIHandlesLayer";
/// The viewer delegate component that keeps the list of lights.
inline constexpr const char* kLightComponent = "BeamwrightLayerVDC";

// ---- the host's objects, which the plugin finds by name ----

/// The selection layer; told by the placement layer whether it places.
inline constexpr const char* kSelectionLayer = "SelectionLayer";
/// The snapping layer; answers what lies under a pixel.
inline constexpr const char* kSnappingLayer = "SnappingLayer";
/// The manipulator whose handles move the selected lights.
inline constexpr const char* kManipulator = "GLBeamwrightManipulator";

// ---- options the host sets on the placement layer (it hands each on) ----

/// Int: non-zero turns the layers on.
inline constexpr const char* kEnabled = "Enabled";
/// String: a placement mode's label, "" for none.
inline constexpr const char* kMode = "Mode";
/// Double, world units: the distance a light stands from what it lights.
inline constexpr const char* kDefaultDistance = "DefaultDistance";
/// Double, world units: the distance a light stands behind what casts the shadow.
inline constexpr const char* kDefaultShadowFallDistance = "DefaultShadowFallDistance";
/// Double: the scale of the handles.
inline constexpr const char* kManipulatorScale = "Manipulator.Scale";
/// String: the class of a created light package.
inline constexpr const char* kPackageClassName = "PackageClassName";
/// String: the node below which a package is created.
inline constexpr const char* kMarquetteNodeName = "MarquetteNodeName";
/// Strings: locations whose handles the picking pass leaves out.
inline constexpr const char* kExcludedLocationsPicking = "ViewportLayer.ExcludedLocationsPicking";

// ---- options a layer answers when asked ----

/// Of any viewport layer: int, non-zero for a layer drawn over the scene.
inline constexpr const char* kIsUILayer = "ViewportLayer.IsUILayer";
/// Of the placement layer, for the manipulator: ints, what the current mode
/// asks of the manipulator (the light stays; it moves without turning; the
/// handle stands at the light's origin; the shadow handles show).
inline constexpr const char* kPositionLocked = "PositionLocked";
inline constexpr const char* kFixedRotation = "FixedRotation";
inline constexpr const char* kHandleAtOrigin = "HandleAtOrigin";
inline constexpr const char* kShadowHandles = "ShadowHandles";

// ---- options the plugin sets on the host's objects ----

/// On the selection layer: int, whether light placement is on.
inline constexpr const char* kSelectionMode = "BeamwrightSelectionMode";
/// On the snapping layer: a group of "x", "y" (pixels) and "StrategyType".
inline constexpr const char* kPreparePickOnDemand = "SnappingLayer.PreparePickOnDemand";
/// Read from the snapping layer: the point and normal under the prepared pixel.
inline constexpr const char* kPickOnDemand = "SnappingLayer.PickOnDemand";
/// On each manipulator handle: where the light goes (kLightData* fields).
inline constexpr const char* kLightData = "LightData";
/// On each manipulator handle: the modifier bits of the event being handled.
inline constexpr const char* kCurrentModifiers = "CurrentModifiers";

/// Fields of "LightData": doubles, world space; and ints, whether the light
/// stands on the point itself and whether it keeps its orientation.
inline constexpr const char* kLightDataPosition = "position";
inline constexpr const char* kLightDataDirection = "direction";
inline constexpr const char* kLightDataDistance = "distance";
inline constexpr const char* kLightDataStrictPosition = "strictPosition";
inline constexpr const char* kLightDataOrientationFixed = "orientationFixed";
/// Fields of the snapping layer's prepared pick.
inline constexpr const char* kPickX = "x";
inline constexpr const char* kPickY = "y";
inline constexpr const char* kPickStrategy = "StrategyType";

// ---- the viewer delegate's commands, which the placement layer calls ----

/// Answers the path of the package of the current selection.
inline constexpr const char* kFindPackageCommand = "FindPackageLocationPathForCurrentSelection";
/// Creates or clones a light package; takes the kPackage* fields.
inline constexpr const char* kCreatePackageCommand = "CreateLightPackage";
inline constexpr const char* kPackagePosition = "Position";
inline constexpr const char* kPackageRotation = "Rotation";
inline constexpr const char* kPackageCenterOfInterest = "CenterOfInterest";
inline constexpr const char* kPackageShadowFallDistance = "ShadowFallDistance";

// ---- mouse events, as the host hands them to viewport layers ----

/// An event is a group of kEventType and kEventData.
inline constexpr const char* kEventType = "type";
inline constexpr const char* kEventData = "data";
/// Event types.
inline constexpr const char* kMouseMove = "MouseMove";
inline constexpr const char* kMouseButtonPress = "MouseButtonPress";
inline constexpr const char* kMouseButtonRelease = "MouseButtonRelease";
inline constexpr const char* kLeave = "Leave";
/// Fields of the data: ints, pixels from the top left corner, the button
/// that changed, the bits of the buttons held, the bits of the keys held.
inline constexpr const char* kEventX = "x";
inline constexpr const char* kEventY = "y";
inline constexpr const char* kEventButton = "button";
inline constexpr const char* kEventButtons = "buttons";
inline constexpr const char* kEventModifiers = "modifiers";

/// Values of "button"; each is also its bit in "buttons".
inline constexpr int kNoButton = 0;
inline constexpr int kLeftButton = 1;
inline constexpr int kRightButton = 2;
inline constexpr int kMiddleButton = 4;
/// Bits of "modifiers".
inline constexpr int kShiftModifier = 0x02000000;
inline constexpr int kControlModifier = 0x04000000;
inline constexpr int kAltModifier = 0x08000000;

// ---- location attributes the plugin reads ----

/// String: what a location is (kLightType, kLightPackageType, ...).
inline constexpr const char* kType = "type";
inline constexpr const char* kLightType = "light";
inline constexpr const char* kLightPackageType = "light package";
inline constexpr const char* kGroupType = "group";
/// Group of a light's properties.
inline constexpr const char* kGeometry = "geometry";
/// Double, world units, in kGeometry: how far ahead the light aims.
inline constexpr const char* kCenterOfInterest = "centerOfInterest";
inline constexpr const char* kGeometryCenterOfInterest = "geometry.centerOfInterest";
/// Double, world units, in kGeometry: how far behind a shadow's caster the light stands.
inline constexpr const char* kShadowFallDistance = "shadowFallDistance";
/// String: the location a picked handle stands for, in the picked attributes.
inline constexpr const char* kPickedLocation = "location";

// ---- USD prims ----

/// The API that makes a USD prim a light for the plugin's USD mirror.
inline constexpr const char* kUsdLightApi = "SorrelUsdLightAPI";
/// Double: a USD light's centre of interest.
inline constexpr const char* kUsdCenterOfInterest = "centerOfInterest";

}  // namespace sorrel::names
