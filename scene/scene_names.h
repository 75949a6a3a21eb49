#pragma once
// The names of the light scene: the attributes the plugin reads from the
// viewer's locations and USD prims, the picker object's field, and the names
// that both layers share, which live here because scene/ is the highest folder
// below both placement/ and handles/. Each name is written here once.

namespace Tessera::Sorrel::Names {

// ---- the plugin's rows, as the host and the layers find them ----

/// The delegate component's row (registered by plugin/), which the handles
/// layer finds on the viewer delegate to read the light list.
inline constexpr const char* kLightComponentName = "BeamwrightLayerVDC";
/// The handles layer's row (registered by plugin/), to which the placement
/// layer hands every option it is set.
inline constexpr const char* kHandlesLayerName = "BeamwrightCOIHandlesLayer";

/// Switches the plugin's layers on (an integer, non-zero for on): the host sets
/// it on the placement layer, which hands it on to the handles layer; both read it.
inline constexpr const char* kEnabledOption = "Enabled";

// ---- picking ----

/// The one field of a picker object, the location's path as a string: the
/// delegate component builds it, the handles layer reads it from what any
/// layer picked.
inline constexpr const char* kLocationAttribute = "location";

// ---- location attributes, read by the delegate component ----

/// The location type (of kTypeAttribute) whose locations are lights.
inline constexpr const char* kLightLocationType = "light";
/// Non-zero hides the location in the viewer, and with it the handle.
inline constexpr const char* kHideAttribute = "viewer.default.drawOptions.hide";
/// Non-zero hides only the light's handle.
inline constexpr const char* kHideHandleAttribute = "viewer.default.beamwright.hideHandle";
/// 0 keeps the handle out of picking; pickable when absent.
inline constexpr const char* kPickableAttribute = "viewer.default.pickable";
/// The distance from a light to its centre of interest; a light without it has
/// no handle. The placement layer reads it from a package it clones.
inline constexpr const char* kCenterOfInterestAttribute = "geometry.centerOfInterest";
/// The handle's colour in the viewer (three or four floats), first choice.
inline constexpr const char* kDrawColorAttribute = "viewer.default.drawOptions.color";
/// The light's preview colour, the handle's colour when the viewer names none.
inline constexpr const char* kPreviewColorAttribute = "geometry.previewColor";
/// A package's shadow fall distance, read by the placement layer from a
/// package it clones.
inline constexpr const char* kShadowFallDistanceAttribute = "geometry.shadowFallDistance";

// ---- location paths and USD prims, read by the delegate component ----

/// The root of the viewer's location tree.
inline constexpr const char* kRootLocationPath = "/root";
/// What a USD light's prim path is put below to make its location path.
inline constexpr const char* kUsdLocationPathPrefix = "/usd";
/// The applied schema that makes a USD prim a light.
inline constexpr const char* kUsdLightApiSchema = "SorrelUsdLightAPI";
/// A USD light's distance to its centre of interest, a double.
inline constexpr const char* kUsdCenterOfInterestAttribute = "centerOfInterest";

}  // namespace Tessera::Sorrel::Names
