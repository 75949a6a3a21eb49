#pragma once
// Where the scene's light locations stand and aim, to tell what an event did
// to them: which lights moved and which are new.

#include <map>
#include <string>
#include <vector>

#include "host/viewer/vec3.h"

namespace sorrel {
class Scene;
}

namespace viewer {

struct LightPose {
    sorrel::Vec3 position;  // world space
    sorrel::Vec3 aim;       // unit, world space
};

using LightPoses = std::map<std::string, LightPose>;

/// Every light location of the scene, by path.
LightPoses lightPoses(const sorrel::Scene& scene);

/// Whether a light stands or aims elsewhere, beyond rounding.
bool differ(const LightPose& a, const LightPose& b);

/// The lights of `after` that `before` holds at another pose, in path order.
std::vector<std::string> movedLights(const LightPoses& before, const LightPoses& after);
/// The lights of `after` that `before` lacks, in path order.
std::vector<std::string> newLights(const LightPoses& before, const LightPoses& after);

}  // namespace viewer
