#pragma once
// The viewer's own vocabulary, as every plugin of it speaks it: the host
// tables and object kinds asked for by name, and the event group with its
// mouse fields and bits. Each name is written here once; the plugin's own
// names live beside the folders that use them (scene/, placement/, handles/).

#include <cstdint>

namespace Tessera::Sorrel::Names {

// ---- host tables that setHost fetches (frame/host_suite_registry.cpp) ----

/// Fetched first by every setHost; the plugin holds it and never calls it.
inline constexpr const char* kPluginManagerSuite = "PluginManager";
/// The option identifier generator: fetched by setHost, and again by getOptionId
/// when setHost's host had none yet.
inline constexpr const char* kOptionIdGeneratorSuite = "OptionIdGeneratorHost";
/// Fetched twice by setHost, never called.
inline constexpr const char* kLoggingSuite = "Logging";
/// Attribute creation, reading and group building; fetched twice by setHost.
inline constexpr const char* kAttributeHostSuite = "AttributeHost";

// ---- object kinds: the name a row carries, and its host table (frame/plugin_kinds.h) ----

/// The kind that both layer rows carry.
inline constexpr const char* kViewportLayerKind = "ViewportLayerPlugin";
/// The host table that a layer class's setHost asks for.
inline constexpr const char* kViewportLayerHostSuite = "ViewportLayerHost";
/// The kind that the component row carries.
inline constexpr const char* kViewerDelegateComponentKind = "ViewerDelegateComponentPlugin";
/// The host table that the component class's setHost asks for.
inline constexpr const char* kViewerDelegateComponentHostSuite = "ViewerDelegateComponentHost";
/// The viewer delegate's kind, which the plugin only wraps.
inline constexpr const char* kViewerDelegateKind = "ViewerDelegatePlugin";
/// The host table that the viewer delegate's wrapper calls.
inline constexpr const char* kViewerDelegateHostSuite = "ViewerDelegateHost";
/// The camera's kind, which the plugin only wraps.
inline constexpr const char* kViewportCameraKind = "ViewportCameraPlugin";
/// The host table that the camera's wrapper calls.
inline constexpr const char* kViewportCameraHostSuite = "ViewportCameraHost";
/// The viewport's kind, which the plugin only wraps.
inline constexpr const char* kViewportKind = "ViewportPlugin";
/// The host table that the viewport's wrapper calls.
inline constexpr const char* kViewportHostSuite = "ViewportHost";
/// The manipulator's kind, which the plugin only wraps.
inline constexpr const char* kManipulatorKind = "ManipulatorPlugin";
/// The host table that the manipulator's wrapper calls.
inline constexpr const char* kManipulatorHostSuite = "ManipulatorHost";
/// The manipulator handle's kind, which the plugin only wraps.
inline constexpr const char* kManipulatorHandleKind = "ManipulatorHandlePlugin";
/// The manipulator handle's host table: fetched, never called.
inline constexpr const char* kManipulatorHandleHostSuite = "ManipulatorHandleHost";

// ---- the event group a layer's event receives ----

/// What kind of thing a group describes, as a string: an event's type (read by
/// getEventTypeHash), and a location's type among its attributes (read by the
/// delegate component, which tells lights by it).
inline constexpr const char* kTypeAttribute = "type";
/// The event's own attributes (read by getEventData).
inline constexpr const char* kEventDataAttribute = "data";

/// A press: places, or creates a package (placement layer).
inline constexpr const char* kMouseButtonPressEvent = "MouseButtonPress";
/// A move: places with the left button held (placement layer), hovers with none (handles layer).
inline constexpr const char* kMouseMoveEvent = "MouseMove";
/// The pointer left the viewport: ends a hover (handles layer).
inline constexpr const char* kLeaveEvent = "Leave";

/// The button a press is of (placement layer).
inline constexpr const char* kButtonAttribute = "button";
/// The buttons held, as bits (both layers).
inline constexpr const char* kButtonsAttribute = "buttons";
/// The modifier keys held, as bits (both layers; the placement layer also hands
/// the attribute on to the manipulator's handles).
inline constexpr const char* kModifiersAttribute = "modifiers";
/// The pointer's pixel column (both layers); passed on unread to the snapping layer.
inline constexpr const char* kXAttribute = "x";
/// The pointer's pixel row (both layers); passed on unread to the snapping layer.
inline constexpr const char* kYAttribute = "y";

/// The left button, as kButtonAttribute names it (placement layer).
inline constexpr std::int32_t kLeftButton = 1;
/// The left button held, as a bit of kButtonsAttribute (placement layer).
inline constexpr std::int32_t kLeftButtonHeldBit = 0x1;
/// Shift held, as a bit of kModifiersAttribute; Shift alone with a left press creates
/// a light package (placement layer).
inline constexpr std::int32_t kShiftModifier = 0x02000000;

// ---- options the viewer defines for every layer ----

/// Asked of every layer by the handles layer's hover search, whose hits then
/// beat every depth; the handles layer answers 1.
inline constexpr const char* kIsUILayerOption = "ViewportLayer.IsUILayer";
/// Locations that a layer's picking leaves out, a string attribute of paths
/// (taken by the handles layer).
inline constexpr const char* kExcludedLocationsPickingOption =
    "ViewportLayer.ExcludedLocationsPicking";

}  // namespace Tessera::Sorrel::Names
