#pragma once
// The host's scene: a tree of locations, each with an attribute group and a
// local transform (sixteen doubles, row vectors, translation in row 3), and
// named meshes of triangles, each with its world transform, for ray casts.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/core/attribute_ref.h"
#include "host/viewer/matrix.h"
#include "host/viewer/mesh.h"

namespace sorrel {

struct Location {
    AttrRef attributes;  // a group, or null
    Matrix local = kIdentity;
    bool selected = false;
};

class Scene {
public:
    /// Adds or replaces a location; its parent need not exist in the host.
    Location& set(const std::string& path, AttrRef attributes, const Matrix& local = kIdentity);
    void remove(const std::string& path);  // with its whole subtree
    Location* find(const std::string& path);
    const Location* find(const std::string& path) const;
    bool contains(const std::string& path) const { return find(path) != nullptr; }
    /// Paths in the subtree of `path`, itself first, parents before children.
    std::vector<std::string> subtree(const std::string& path) const;
    /// The composed world matrix, or nothing when the location is unknown.
    std::optional<Matrix> worldTransform(const std::string& path) const;
    const std::map<std::string, Location>& locations() const { return locations_; }

    /// The meshes that ray casts hit, by name.
    std::map<std::string, Mesh>& meshes() { return meshes_; }
    const std::map<std::string, Mesh>& meshes() const { return meshes_; }

private:
    std::map<std::string, Location> locations_;
    std::map<std::string, Mesh> meshes_;
};

/// The parent of a location path ("/a/b" -> "/a", "/a" -> "").
std::string parentOf(const std::string& path);

}  // namespace sorrel
