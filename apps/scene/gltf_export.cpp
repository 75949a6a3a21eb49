#include "apps/scene/gltf_export.h"

#include <tiny_gltf.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <sstream>

#include "apps/scene/atomic_file.h"

namespace viewer {

namespace {

using sorrel::Vec3;

constexpr double kRadiansPerDegree = 3.14159265358979323846 / 180.0;
/// What the material's roughness is taken as: the inverse of the viewport's
/// Blinn-Phong match, roughness = sqrt(2 / (shininess + 2)).
double roughnessOfShininess(double shininess) { return std::sqrt(2.0 / (shininess + 2.0)); }

/// What a light's node and the light are named: its path below the lights'
/// root ("key", "package1/light"), which a reader makes a name of its own of.
std::string nodeNameOf(const std::string& path) {
    const std::string root = std::string(kLightsRoot) + "/";
    if (path.compare(0, root.size(), root) == 0) return path.substr(root.size());
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

/// Appends `values` to the model's one buffer as a view and an accessor;
/// answers the accessor's index.
template <typename T>
int addAccessor(tinygltf::Model& model, const std::vector<T>& values, int componentType, int type,
                std::size_t count, int target) {
    tinygltf::Buffer& buffer = model.buffers.front();
    // Views start on a four-byte boundary, as glTF asks of float data.
    buffer.data.resize((buffer.data.size() + 3) / 4 * 4);
    const std::size_t offset = buffer.data.size();
    const std::size_t bytes = values.size() * sizeof(T);
    buffer.data.resize(offset + bytes);
    std::memcpy(buffer.data.data() + offset, values.data(), bytes);

    tinygltf::BufferView view;
    view.buffer = 0;
    view.byteOffset = offset;
    view.byteLength = bytes;
    view.target = target;
    model.bufferViews.push_back(view);

    tinygltf::Accessor accessor;
    accessor.bufferView = static_cast<int>(model.bufferViews.size()) - 1;
    accessor.componentType = componentType;
    accessor.type = type;
    accessor.count = count;
    model.accessors.push_back(accessor);
    return static_cast<int>(model.accessors.size()) - 1;
}

std::vector<double> matrixOf(const sorrel::Matrix& m) {
    // Row vectors, translation in row 3, stored row by row: the very numbers
    // glTF stores column by column for column vectors.
    return std::vector<double>(m.begin(), m.end());
}

void addMesh(tinygltf::Model& model, const std::string& name, const sorrel::Mesh& mesh) {
    std::vector<float> positions;
    std::vector<double> low(3, HUGE_VAL);
    std::vector<double> high(3, -HUGE_VAL);
    for (const Vec3& p : mesh.points()) {
        const double xyz[3] = {p.x, p.y, p.z};
        for (int i = 0; i < 3; ++i) {
            positions.push_back(static_cast<float>(xyz[i]));
            low[i] = std::min(low[i], static_cast<double>(static_cast<float>(xyz[i])));
            high[i] = std::max(high[i], static_cast<double>(static_cast<float>(xyz[i])));
        }
    }
    std::vector<std::uint32_t> indices;
    for (const auto& corners : mesh.triangleCorners())
        indices.insert(indices.end(), corners.begin(), corners.end());
    if (positions.empty() || indices.empty()) return;

    tinygltf::Primitive primitive;
    primitive.mode = TINYGLTF_MODE_TRIANGLES;
    const int position =
        addAccessor(model, positions, TINYGLTF_COMPONENT_TYPE_FLOAT, TINYGLTF_TYPE_VEC3,
                    mesh.points().size(), TINYGLTF_TARGET_ARRAY_BUFFER);
    model.accessors[position].minValues = low;
    model.accessors[position].maxValues = high;
    primitive.attributes["POSITION"] = position;
    if (!mesh.pointNormals().empty()) {
        std::vector<float> normals;
        for (const Vec3& n : mesh.pointNormals())
            normals.insert(normals.end(), {static_cast<float>(n.x), static_cast<float>(n.y),
                                           static_cast<float>(n.z)});
        primitive.attributes["NORMAL"] =
            addAccessor(model, normals, TINYGLTF_COMPONENT_TYPE_FLOAT, TINYGLTF_TYPE_VEC3,
                        mesh.pointNormals().size(), TINYGLTF_TARGET_ARRAY_BUFFER);
    }
    primitive.indices =
        addAccessor(model, indices, TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT, TINYGLTF_TYPE_SCALAR,
                    indices.size(), TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER);

    tinygltf::Material material;
    material.name = name;
    const Vec3& c = mesh.material.color;
    material.pbrMetallicRoughness.baseColorFactor = {c.x, c.y, c.z, 1.0};
    material.pbrMetallicRoughness.metallicFactor = 0.0;
    material.pbrMetallicRoughness.roughnessFactor = roughnessOfShininess(mesh.material.shininess);
    model.materials.push_back(material);
    primitive.material = static_cast<int>(model.materials.size()) - 1;

    tinygltf::Mesh gltfMesh;
    gltfMesh.name = name;
    gltfMesh.primitives.push_back(primitive);
    model.meshes.push_back(gltfMesh);

    tinygltf::Node node;
    node.name = name;
    node.mesh = static_cast<int>(model.meshes.size()) - 1;
    node.matrix = matrixOf(mesh.world);
    model.nodes.push_back(node);
}

const char* gltfTypeOf(LightKind kind) {
    switch (kind) {
        case LightKind::Point:
            return "point";
        case LightKind::Directional:
            return "directional";
        default:
            return "spot";
    }
}

void addLight(tinygltf::Model& model, const sorrel::SceneLight& light, LightKind kind,
              const sorrel::Matrix& world) {
    const sorrel::LightProperties& p = light.properties;
    tinygltf::Light gltfLight;
    gltfLight.name = nodeNameOf(light.path);
    gltfLight.type = gltfTypeOf(kind);
    // The colour at full strength, its largest channel 1; the rest is intensity.
    const double strength = std::max({p.color.x, p.color.y, p.color.z});
    const Vec3 color = strength > 0.0 ? p.color * (1.0 / strength) : p.color;
    gltfLight.color = {color.x, color.y, color.z};
    gltfLight.intensity = p.intensity * strength;
    // glTF's cone angles are half openings, in radians.
    const double outer = p.coneAngle / 2.0;
    gltfLight.spot.outerConeAngle = outer * kRadiansPerDegree;
    gltfLight.spot.innerConeAngle =
        std::clamp(outer - p.coneFalloff, 0.0, outer) * kRadiansPerDegree;
    model.lights.push_back(gltfLight);

    tinygltf::Node node;
    node.name = gltfLight.name;
    node.matrix = matrixOf(world);
    tinygltf::Value::Object extension;
    extension["light"] = tinygltf::Value(static_cast<int>(model.lights.size()) - 1);
    node.extensions["KHR_lights_punctual"] = tinygltf::Value(extension);
    tinygltf::Value::Object extras;
    extras["centerOfInterest"] = tinygltf::Value(light.centerOfInterest);
    node.extras = tinygltf::Value(extras);
    model.nodes.push_back(node);
}

}  // namespace

std::string gltfText(const sorrel::Scene& scene, const std::vector<sorrel::SceneLight>& lights,
                     const LightKinds& kinds) {
    tinygltf::Model model;
    model.asset.version = "2.0";
    model.asset.generator = "beamwright-viewer";
    model.buffers.emplace_back();
    for (const auto& [name, mesh] : scene.meshes()) addMesh(model, name, mesh);
    for (const sorrel::SceneLight& light : lights) {
        const std::optional<sorrel::Matrix> world = scene.worldTransform(light.path);
        const auto kind = kinds.find(light.path);
        addLight(model, light, kind != kinds.end() ? kind->second : LightKind::Spot,
                 world ? *world : sorrel::kIdentity);
    }
    if (model.buffers.front().data.empty()) model.buffers.clear();

    tinygltf::Scene gltfScene;
    for (std::size_t i = 0; i < model.nodes.size(); ++i)
        gltfScene.nodes.push_back(static_cast<int>(i));
    model.scenes.push_back(gltfScene);
    model.defaultScene = 0;

    std::ostringstream text;
    tinygltf::TinyGLTF writer;
    writer.WriteGltfSceneToStream(&model, text, /* prettyPrint = */ true,
                                  /* writeBinary = */ false);
    return text.str();
}

void exportGltf(const std::string& path, const sorrel::Scene& scene,
                const std::vector<sorrel::SceneLight>& lights, const LightKinds& kinds) {
    writeFileAtomically(path, gltfText(scene, lights, kinds));
}

}  // namespace viewer
