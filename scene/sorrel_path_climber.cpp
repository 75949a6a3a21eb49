#include "scene/sorrel_path_climber.h"

namespace UTIL::SceneTree {

std::string SorrelPathClimber::parentPath(const std::string& path) {
    return std::string(parentOf(path));
}

}  // namespace UTIL::SceneTree
