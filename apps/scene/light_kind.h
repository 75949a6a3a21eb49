#pragma once
// The kinds of light by the names scene files and listings give them.

#include <optional>
#include <string>

#include "apps/scene/scene_description.h"

namespace viewer {

/// "spot", "point", "directional" or "area".
const char* lightKindName(LightKind kind);
/// The kind `name` names, or nothing.
std::optional<LightKind> lightKindNamed(const std::string& name);

}  // namespace viewer
