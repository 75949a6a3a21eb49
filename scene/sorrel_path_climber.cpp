#include "scene/sorrel_path_climber.h"

namespace UTIL::SceneTree {

std::string SorrelPathClimber::parentPath(const std::string& path) {
    const std::size_t lastSlash = path.rfind('/');
    if (lastSlash == std::string::npos) return path;
    return path.substr(0, lastSlash);
}

}  // namespace UTIL::SceneTree
