#pragma once
// Writing a scene back as a scene file (docs/scene-format.md) that the
// reader takes again: the camera, the built-in shapes and the assets (by
// file, relative to the scene file's folder; never written themselves), the
// groups and lights as they stand, with every transform as its sixteen
// numbers so that nothing is lost, the USD lights, the selection, the
// options and the tour. An asset's lights are written as the scene's own,
// and the asset's entry says not to bring them in again.
//
// The text depends on the scene alone: keys in a fixed order, numbers as
// the shortest text that reads back to the same double. Reading a saved
// file and saving it again gives the same bytes.

#include <string>

#include "apps/scene/scene_description.h"

namespace viewer {

/// The scene file text of `scene`, to be written into `folder` (where the
/// assets' files are named from).
std::string sceneFileText(const SceneDescription& scene, const std::string& folder);

/// Writes the scene to `path` through the writer of files the user keeps;
/// throws FileWriteError naming the file and the cause.
void saveSceneFile(const std::string& path, const SceneDescription& scene);

/// Where a scene opened from `opened` is saved: back to a scene file, and
/// beside an asset as "<asset>.beamwright.json", never over the asset.
std::string savePathFor(const std::string& opened);

}  // namespace viewer
