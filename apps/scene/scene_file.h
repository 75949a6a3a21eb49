#pragma once
// Reading scenes: scene files (JSON; the format is described in
// docs/scene-format.md) and asset files of any format Assimp reads.
// Every problem throws a SceneFileError with one line that names the file, the
// place (line and column, or key path) and what is wrong.

#include <string>

#include "apps/scene/scene_description.h"
#include "apps/scene/scene_file_error.h"

namespace viewer {

/// Reads a scene file (`.json`) or, any other name, an asset Assimp reads.
SceneDescription loadScene(const std::string& path);

/// Reads the asset at `path` as a scene of its own: its meshes, lights and
/// cameras, the first camera as the view (else one framing the asset), and
/// the default rig where it has no light.
SceneDescription loadAssetScene(const std::string& path);

/// Widens the depth range of the scene's view and cameras to hold the scene.
void fitDepthRanges(SceneDescription& scene);

/// Adds the default rig to a scene without a light or USD light.
void addDefaultRigWhereUnlit(SceneDescription& scene);

/// Reads and checks the scene file at `path`; mesh files are found relative
/// to the scene file's folder.
SceneDescription loadSceneFile(const std::string& path);

/// Reads and checks scene text; `file` names it in messages and `folder` is
/// where relative mesh files are found.
SceneDescription parseScene(const std::string& text, const std::string& file,
                            const std::string& folder);

}  // namespace viewer
