#pragma once
// SorrelPathClimber: steps from a location path to its parent's path.

#include <string>
#include <string_view>

namespace UTIL::SceneTree {

struct SorrelPathClimber {
    /// Everything before the last '/': "/root/a/b" gives "/root/a", "/root/a/" gives
    /// "/root/a", and "/root" gives the empty string, the mark of a node without
    /// parent. A path without '/' is returned as it is.
    static std::string parentPath(const std::string& path);
    /// The same, as a view into `path`. Inline: every new location climbs once.
    static std::string_view parentOf(std::string_view path) {
        const std::size_t lastSlash = path.rfind('/');
        if (lastSlash == std::string_view::npos) return path;
        return path.substr(0, lastSlash);
    }
};

}  // namespace UTIL::SceneTree
