#include "apps/scene/obj_mesh.h"

#include <tiny_obj_loader.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>
#include <vector>

namespace viewer {

using sorrel::Mesh;
using sorrel::Vec3;

namespace {

constexpr int kTriangle = 3;
constexpr int kQuad = 4;

/// The reader's messages end in newlines and may hold several lines.
std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    while (!text.empty() && text.back() == ' ') text.pop_back();
    return text;
}

/// Three values from `values` at `index`; what `what` names must be there.
Vec3 triple(const std::vector<tinyobj::real_t>& values, int index, const char* what) {
    const auto at = static_cast<std::size_t>(3 * index);
    if (index < 0 || at + 2 >= values.size())
        throw std::runtime_error("a face names " + std::string(what) + " " +
                                 std::to_string(index + 1) + " of " +
                                 std::to_string(values.size() / 3));
    return {values[at], values[at + 1], values[at + 2]};
}

bool everyCornerHasANormal(const std::vector<tinyobj::shape_t>& shapes) {
    for (const tinyobj::shape_t& shape : shapes)
        for (const tinyobj::index_t& corner : shape.mesh.indices)
            if (corner.normal_index < 0) return false;
    return true;
}

/// The mesh's points: one per vertex, or one per vertex and normal pair when
/// shading is smooth, so that a corner may have its own normal.
class PointTable {
public:
    PointTable(Mesh& mesh, const tinyobj::attrib_t& attributes, bool smooth)
        : mesh_(mesh), attributes_(attributes), smooth_(smooth) {}

    std::uint32_t pointOf(const tinyobj::index_t& corner) {
        const std::pair<int, int> key{corner.vertex_index, smooth_ ? corner.normal_index : -1};
        const auto found = points_.find(key);
        if (found != points_.end()) return found->second;
        const std::uint32_t point =
            mesh_.addPoint(triple(attributes_.vertices, corner.vertex_index, "vertex"));
        if (smooth_)
            normals_.push_back(
                normalizedOrZero(triple(attributes_.normals, corner.normal_index, "normal")));
        points_.emplace(key, point);
        return point;
    }
    std::vector<Vec3> takeNormals() { return std::move(normals_); }

private:
    Mesh& mesh_;
    const tinyobj::attrib_t& attributes_;
    const bool smooth_;
    std::map<std::pair<int, int>, std::uint32_t> points_;
    std::vector<Vec3> normals_;
};

}  // namespace

Mesh loadObjMesh(const std::string& path) {
    tinyobj::ObjReaderConfig config;
    config.triangulate = false;  // quads stay faces
    config.vertex_color = false;
    tinyobj::ObjReader reader;
    if (!reader.ParseFromFile(path, config))
        throw std::runtime_error(
            oneLine(reader.Error().empty() ? "cannot be read" : reader.Error()));

    const std::vector<tinyobj::shape_t>& shapes = reader.GetShapes();
    const bool smooth = everyCornerHasANormal(shapes);
    Mesh mesh;
    PointTable table(mesh, reader.GetAttrib(), smooth);
    std::size_t polygons = 0;
    for (const tinyobj::shape_t& shape : shapes) {
        std::size_t first = 0;
        for (const unsigned char count : shape.mesh.num_face_vertices) {
            std::vector<std::uint32_t> corners;
            for (std::size_t i = 0; i < count; ++i)
                corners.push_back(table.pointOf(shape.mesh.indices[first + i]));
            first += count;
            if (count == kQuad)
                mesh.addQuad(corners[0], corners[1], corners[2], corners[3]);
            else
                for (std::size_t i = 2; i < corners.size(); ++i)
                    mesh.addTriangle(corners[0], corners[i - 1], corners[i]);
            polygons += count >= kTriangle ? 1 : 0;
        }
    }
    if (polygons == 0) throw std::runtime_error("holds no polygon");
    if (smooth) mesh.setPointNormals(table.takeNormals());
    return mesh;
}

}  // namespace viewer
