#pragma once
// PlacementMode: how a light is placed from a picked point, chosen by the
// label that option "Mode" carries.

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

/// The label of option "Mode" that selects `mode`; empty for ModeNone and for
/// values outside the enumeration.
std::string_view placementModeLabel(PlacementMode mode);

/// The mode whose label equals `text` in length and bytes, case-sensitive;
/// ModeNone for any other text, the empty text included.
PlacementMode placementModeFromLabel(std::string_view text);

}  // namespace Tessera::Sorrel::ViewerUtils
