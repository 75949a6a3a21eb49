#include "scene/sorrel_path_climber.h"

namespace UTIL::SceneTree {

std::string SorrelPathClimber::parentPath(const std::string& path) {
    return std::string(parentOf(path));
}

std::string_view SorrelPathClimber::parentOf(std::string_view path) {
    const std::size_t lastSlash = path.rfind('/');
    if (lastSlash == std::string_view::npos) return path;
    return path.substr(0, lastSlash);
}

}  // namespace UTIL::SceneTree
