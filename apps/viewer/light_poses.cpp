#include "apps/viewer/light_poses.h"

#include "host/viewer/scene_light.h"

namespace viewer {

namespace {

/// World units (and unit-vector lengths) below which a light counts as not moved.
constexpr double kMoveTolerance = 1e-9;

}  // namespace

LightPoses lightPoses(const sorrel::Scene& scene) {
    LightPoses poses;
    for (const sorrel::SceneLight& light : sorrel::locationLights(scene))
        poses[light.path] = {light.position, light.direction};
    return poses;
}

bool differ(const LightPose& a, const LightPose& b) {
    return sorrel::length(a.position - b.position) > kMoveTolerance ||
           sorrel::length(a.aim - b.aim) > kMoveTolerance;
}

std::vector<std::string> movedLights(const LightPoses& before, const LightPoses& after) {
    std::vector<std::string> moved;
    for (const auto& [path, pose] : after) {
        const auto earlier = before.find(path);
        if (earlier != before.end() && differ(earlier->second, pose)) moved.push_back(path);
    }
    return moved;
}

std::vector<std::string> newLights(const LightPoses& before, const LightPoses& after) {
    std::vector<std::string> added;
    for (const auto& entry : after)
        if (before.count(entry.first) == 0) added.push_back(entry.first);
    return added;
}

}  // namespace viewer
