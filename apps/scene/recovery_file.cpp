#include "apps/scene/recovery_file.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>

namespace viewer {

namespace {

/// The state folder of the XDG base directories: $XDG_STATE_HOME when it is
/// an absolute path, else ~/.local/state.
std::filesystem::path stateHome() {
    const char* const state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && state[0] == '/') return state;
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home != nullptr && home[0] != '\0' ? home : ".") / ".local" /
           "state";
}

}  // namespace

std::string recoveryFileFor(const std::string& scene) {
    const std::filesystem::path full = std::filesystem::absolute(scene).lexically_normal();
    char hash[17];
    std::snprintf(hash, sizeof hash, "%016zx", std::hash<std::string>{}(full.string()));
    const std::string name = full.filename().string() + "-" + hash + ".recovery.json";
    return (stateHome() / "beamwright" / name).string();
}

bool recoveryIsNewer(const std::string& recovery, const std::string& scene) {
    std::error_code error;
    const auto written = std::filesystem::last_write_time(recovery, error);
    if (error) return false;
    const auto changed = std::filesystem::last_write_time(scene, error);
    return error || written > changed;
}

}  // namespace viewer
