#include "host/viewer/scene.h"

namespace sorrel {

std::string parentOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos || slash == 0 ? std::string() : path.substr(0, slash);
}

Location& Scene::set(const std::string& path, AttrRef attributes, const Matrix& local) {
    Location& location = locations_[path];
    location.attributes = std::move(attributes);
    location.local = local;
    return location;
}

void Scene::remove(const std::string& path) {
    for (const std::string& gone : subtree(path)) locations_.erase(gone);
}

Location* Scene::find(const std::string& path) {
    const auto found = locations_.find(path);
    return found != locations_.end() ? &found->second : nullptr;
}

const Location* Scene::find(const std::string& path) const {
    const auto found = locations_.find(path);
    return found != locations_.end() ? &found->second : nullptr;
}

std::vector<std::string> Scene::subtree(const std::string& path) const {
    std::vector<std::string> paths;
    if (contains(path)) paths.push_back(path);
    // Descendants share the prefix and lie together in sorted order, parents first.
    const std::string prefix = path + "/";
    for (auto it = locations_.lower_bound(prefix); it != locations_.end(); ++it) {
        if (it->first.compare(0, prefix.size(), prefix) != 0) break;
        paths.push_back(it->first);
    }
    return paths;
}

std::optional<Matrix> Scene::worldTransform(const std::string& path) const {
    const Location* location = find(path);
    if (location == nullptr) return std::nullopt;
    Matrix world = location->local;
    for (std::string parent = parentOf(path); !parent.empty(); parent = parentOf(parent))
        if (const Location* above = find(parent)) world = multiplyMatrices(world, above->local);
    return world;
}

}  // namespace sorrel
