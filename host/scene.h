#pragma once
// The host's scene: a tree of locations, each with an attribute group and a
// local transform (sixteen doubles, row vectors, translation in row 3), and
// named meshes of world-space triangles for ray casts.

#include <array>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/attribute_model.h"

namespace sorrel {

using Matrix = std::array<double, 16>;
constexpr Matrix kIdentity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// Row-vector product: a acts first.
Matrix multiplyMatrices(const Matrix& a, const Matrix& b);
Matrix translationMatrix(double x, double y, double z);

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

private:
    std::map<std::string, Location> locations_;
};

/// The parent of a location path ("/a/b" -> "/a", "/a" -> "").
std::string parentOf(const std::string& path);

}  // namespace sorrel
