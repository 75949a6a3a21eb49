#pragma once
// Reading scene files (JSON; the format is described in docs/scene-format.md).
// Every problem throws a SceneFileError with one line that names the file, the
// place (line and column, or key path) and what is wrong.

#include <string>

#include "apps/scene/scene_description.h"
#include "apps/scene/scene_file_error.h"

namespace viewer {

/// Where light locations stand: every light path lies below it.
constexpr const char* kLightsRoot = "/root/world/lgt";

/// Reads and checks the scene file at `path`; mesh files are found relative
/// to the scene file's folder.
SceneDescription loadSceneFile(const std::string& path);

/// Reads and checks scene text; `file` names it in messages and `folder` is
/// where relative mesh files are found.
SceneDescription parseScene(const std::string& text, const std::string& file,
                            const std::string& folder);

}  // namespace viewer
