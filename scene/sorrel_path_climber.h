#pragma once
// SorrelPathClimber: steps from a location path to its parent's path.

#include <string>

namespace UTIL::SceneTree {

struct SorrelPathClimber {
    /// Everything before the last '/': "/root/a/b" gives "/root/a", "/root/a/" gives
    /// "/root/a", and "/root" gives the empty string, the mark of a node without
    /// parent. A path without '/' is returned as it is.
    static std::string parentPath(const std::string& path);
};

}  // namespace UTIL::SceneTree
