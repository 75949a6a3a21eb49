#pragma once
// Where the window keeps the scene: a save goes back to the scene file it
// opened, or beside the asset it opened as "<asset>.beamwright.json"; an
// export beside it as "<name>.beamwright.gltf". The file it opened is never
// written over unless it is a scene file of its own.

#include <string>

namespace viewer {

struct KeepFiles {
    std::string save;
    std::string gltf;
};

/// Where a scene opened from `opened` is saved and exported.
KeepFiles keepFilesFor(const std::string& opened);

}  // namespace viewer
