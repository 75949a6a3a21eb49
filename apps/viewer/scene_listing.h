#pragma once
// What `beamwright-viewer --list` prints: the scene as loaded, one line each,
// for people trying a new file and for scripts:
//
//   mesh NAME TRIANGLES
//   light PATH KIND position (x, y, z) aim (x, y, z) coi D [default]
//   usdlight PATH KIND position (x, y, z) aim (x, y, z) coi D
//   camera NAME
//
// Positions and aims are in world space; "default" marks the rig the viewer
// added to a scene without lights.

#include <string>

#include "apps/scene/scene_description.h"

namespace viewer {

std::string sceneListing(const SceneDescription& scene);

}  // namespace viewer
