#include "placement/placement_mode.h"

#include <cstddef>
#include <iterator>

namespace Tessera::Sorrel::ViewerUtils {

namespace {

using Mode = PlacementMode;
using Formula = PlacementFormula;

// One row for each mode, in the order of their values; a label is looked up in
// this order too, and the first match wins.
// clang-format off
constexpr PlacementModeTraits kModes[] = {
    // mode                           label                                  strategy         formula                   orientation  position  fixed     shadow
    //                                                                                                                  fixed        locked    rotation  handles
    {Mode::ModeNone,                  "",                                    nullptr,         Formula::None,            false,       false,    false,    false},
    {Mode::ModeEditLightMaterials,    "Edit Light Materials",                nullptr,         Formula::None,            false,       true,     false,    false},
    {Mode::ModeFixedRotation,         "Fixed Rotation",                      nullptr,         Formula::AimAlongNormal,  false,       false,    true,     false},
    {Mode::ModeNormal,                "Normal",                              nullptr,         Formula::AimAlongNormal,  false,       false,    false,    false},
    {Mode::ModeSpecular,              "Specular",                            nullptr,         Formula::AimBySpecular,   false,       false,    false,    false},
    {Mode::ModeReflection,            "Reflection",                          nullptr,         Formula::AimByReflection, false,       false,    false,    false},
    {Mode::ModeShadow,                "Shadow",                              nullptr,         Formula::AimAlongNormal,  false,       false,    false,    true},
    {Mode::ModeFaceCenter,            "Face - Center",                       "Face",          Formula::StandOnPoint,    true,        false,    false,    false},
    {Mode::ModeFaceCenterOriented,    "Face - Center - Oriented to Normal",  "FaceNormal",    Formula::StandOnPoint,    false,       false,    false,    false},
    {Mode::ModeObjectSurface,         "Object Surface",                      "Surface",       Formula::StandOnPoint,    true,        false,    false,    false},
    {Mode::ModeObjectSurfaceOriented, "Object Surface - Oriented to Normal", "SurfaceNormal", Formula::StandOnPoint,    false,       false,    false,    false},
    {Mode::ModeObjectCenter,          "Object - Center",                     "ObjectCentre",  Formula::StandOnPoint,    true,        false,    false,    false},
};
// clang-format on

constexpr bool rowsFollowTheValues() {
    for (std::size_t i = 0; i < std::size(kModes); ++i)
        if (static_cast<std::size_t>(kModes[i].mode) != i) return false;
    return true;
}
static_assert(rowsFollowTheValues(), "a mode's row stands at its value");

}  // namespace

const PlacementModeTraits& placementModeTraits(const PlacementMode mode) {
    const auto index = static_cast<std::size_t>(mode);
    return index < std::size(kModes) ? kModes[index] : kModes[0];
}

PlacementMode placementModeFromLabel(const std::string_view text) {
    for (const PlacementModeTraits& traits : kModes) {
        if (traits.label == text) return traits.mode;
    }
    return PlacementMode::ModeNone;
}

}  // namespace Tessera::Sorrel::ViewerUtils
