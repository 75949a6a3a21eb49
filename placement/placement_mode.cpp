#include "placement/placement_mode.h"

namespace Tessera::Sorrel::ViewerUtils {

namespace {

struct ModeLabel {
    PlacementMode mode;
    std::string_view label;
};

// In the order in which a label is looked up; the first match wins.
constexpr ModeLabel kModeLabels[] = {
    {PlacementMode::ModeEditLightMaterials, "Edit Light Materials"},
    {PlacementMode::ModeFixedRotation, "Fixed Rotation"},
    {PlacementMode::ModeNormal, "Normal"},
    {PlacementMode::ModeSpecular, "Specular"},
    {PlacementMode::ModeReflection, "Reflection"},
    {PlacementMode::ModeShadow, "Shadow"},
    {PlacementMode::ModeFaceCenter, "Face - Center"},
    {PlacementMode::ModeFaceCenterOriented, "Face - Center - Oriented to Normal"},
    {PlacementMode::ModeObjectSurface, "Object Surface"},
    {PlacementMode::ModeObjectSurfaceOriented, "Object Surface - Oriented to Normal"},
    {PlacementMode::ModeObjectCenter, "Object - Center"},
};

}  // namespace

std::string_view placementModeLabel(const PlacementMode mode) {
    for (const ModeLabel& entry : kModeLabels) {
        if (entry.mode == mode) return entry.label;
    }
    return {};
}

PlacementMode placementModeFromLabel(const std::string_view text) {
    for (const ModeLabel& entry : kModeLabels) {
        if (entry.label == text) return entry.mode;
    }
    return PlacementMode::ModeNone;
}

}  // namespace Tessera::Sorrel::ViewerUtils
