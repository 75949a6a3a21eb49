#pragma once
// The names the handles layer reads: its own option, the environment
// variables that tune it, and where its shader files lie. Each name is written
// here once; the layer's row name and the options it shares with the placement
// layer are in scene/scene_names.h, the viewer's layer options in
// frame/frame_names.h.

namespace Tessera::Sorrel::Names {

/// The handles' size factor, a double clamped to the layer's limits; the host sets
/// it on the placement layer, which hands it on.
inline constexpr const char* kManipulatorScaleOption = "Manipulator.Scale";

/// The installation's root, under which the handles layer finds its shader files.
inline constexpr const char* kSorrelRootVariable = "SORREL_ROOT";
/// Set to 1, switches hovering off (read once per process).
inline constexpr const char* kDisableHoverVariable = "SORREL_BEAMWRIGHT_DISABLE_HOVER_EFFECT";
/// Set to 1, lets only the handles themselves be hovered (read once per process).
inline constexpr const char* kHoverOnHandlesOnlyVariable =
    "SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY";

/// Where the handle shader files lie below kSorrelRootVariable, without their extensions.
inline constexpr const char* kHandleShaderStemBelowRoot =
    "/plugins/Resources/Core/Shaders/TransformManipulators/Manipulators";

}  // namespace Tessera::Sorrel::Names
