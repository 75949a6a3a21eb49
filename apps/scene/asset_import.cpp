#include "apps/scene/asset_import.h"

#include <assimp/material.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <assimp/DefaultLogger.hpp>
#include <assimp/Importer.hpp>
#include <assimp/LogStream.hpp>
#include <cmath>
#include <fstream>
#include <map>
#include <optional>
#include <utility>

#include "apps/scene/file_extension.h"
#include "apps/scene/scene_file_error.h"
#include "apps/scene/scene_framing.h"
#include "apps/scene/unique_names.h"
#include "host/siblings/light_orientation.h"

namespace viewer {

using sorrel::Mesh;

namespace {

/// The key of a node's extras that carries a light's centre of interest.
constexpr const char* kCentreOfInterestKey = "centerOfInterest";

/// Validation stays on so that a file whose data do not hold together is
/// refused. Vertices are not joined: joining folds a NaN vertex into another
/// and hides it.
constexpr unsigned kImportSteps = aiProcess_ValidateDataStructure | aiProcess_FindDegenerates;
constexpr unsigned kTriangle = 3;
constexpr unsigned kQuad = 4;
constexpr double kPi = 3.14159265358979323846;
constexpr double kDegreesPerRadian = 180.0 / kPi;
/// The cone a point light is shaded with, and an area light's, degrees.
constexpr double kPointConeDegrees = 170.0;
constexpr double kAreaConeDegrees = 120.0;
constexpr double kMaxConeDegrees = 179.0;
constexpr double kMinFovDegrees = 1.0;
constexpr double kMaxFovDegrees = 170.0;

/// Where an Assimp importer departs from Assimp's own conventions. Its glTF
/// reader gives the half cone angles glTF stores, a camera's horizontal field of
/// view as the vertical one times the aspect, and the camera's node translation
/// again as the camera's own position. Its Collada reader gives the file's cone
/// as the inner angle and widens the outer one by a guess from the falloff
/// exponent.
struct ReaderQuirks {
    bool halfConeAngles = false;
    bool fovIsVerticalTimesAspect = false;
    bool cameraPositionRepeatsNode = false;
    bool coneIsInnerAngle = false;
};

ReaderQuirks quirksOf(const std::string& path) {
    const std::string extension = lowerCaseExtension(path);
    const bool gltf = extension == "gltf" || extension == "glb";
    return {gltf, gltf, gltf, extension == "dae"};
}

/// What Assimp's readers say while they read, for the warnings that mean a
/// file was read only in part: such a file is refused, not shown half.
/// Assimp's logger is one for the process; it lives while an import runs.
class ReaderWarnings {
public:
    ReaderWarnings() {
        Assimp::DefaultLogger::create("", Assimp::Logger::NORMAL, /* defStreams = */ 0);
        Assimp::DefaultLogger::get()->attachStream(new Collector(*this),
                                                   Assimp::Logger::Warn | Assimp::Logger::Err);
    }
    ~ReaderWarnings() { Assimp::DefaultLogger::kill(); }
    ReaderWarnings(const ReaderWarnings&) = delete;
    ReaderWarnings& operator=(const ReaderWarnings&) = delete;

    /// The first warning that says the reader dropped part of the file.
    std::optional<std::string> dropped() const {
        for (const std::string& warning : warnings_)
            for (const char* sign : kDroppedSigns)
                if (warning.find(sign) != std::string::npos) return warning;
        return std::nullopt;
    }

private:
    /// Words of the readers' warnings about data they dropped.
    static constexpr const char* kDroppedSigns[] = {"out-of-range", "out of range"};

    class Collector : public Assimp::LogStream {
    public:
        explicit Collector(ReaderWarnings& owner) : owner_(owner) {}
        void write(const char* message) override {
            // "Warn,  T0: text\n": the text alone.
            std::string text = message;
            const std::size_t colon = text.find(": ");
            if (colon != std::string::npos) text.erase(0, colon + 2);
            while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) text.pop_back();
            owner_.warnings_.push_back(std::move(text));
        }

    private:
        ReaderWarnings& owner_;
    };

    std::vector<std::string> warnings_;
};

/// Most of Assimp's readers size their arrays from counts the file declares,
/// before reading what the counts promise: a PLY header that declares two
/// billion vertices takes tens of gigabytes. While a file is read, the
/// process may grow by kImportMemoryBudget at most; an allocation past it
/// fails, and Assimp reports the failure. (AddressSanitizer reserves its own
/// address space and cannot run under such a limit: there the guard is off.)
constexpr unsigned long long kImportMemoryBudget = 4ull << 30;  // bytes
constexpr unsigned long long kBytesPerMebibyte = 1ull << 20;

class ImportMemoryLimit {
public:
    ImportMemoryLimit() {
#if !defined(__SANITIZE_ADDRESS__)
        std::ifstream statm("/proc/self/statm");
        unsigned long long pages = 0;
        if (!(statm >> pages) || getrlimit(RLIMIT_AS, &previous_) != 0) return;
        const unsigned long long used =
            pages * static_cast<unsigned long long>(sysconf(_SC_PAGESIZE));
        rlimit limited = previous_;
        limited.rlim_cur =
            std::min<unsigned long long>(previous_.rlim_max, used + kImportMemoryBudget);
        active_ = limited.rlim_cur < previous_.rlim_cur && setrlimit(RLIMIT_AS, &limited) == 0;
#endif
    }
    ~ImportMemoryLimit() {
        if (active_) setrlimit(RLIMIT_AS, &previous_);
    }
    ImportMemoryLimit(const ImportMemoryLimit&) = delete;
    ImportMemoryLimit& operator=(const ImportMemoryLimit&) = delete;

private:
    rlimit previous_{};
    bool active_ = false;
};

/// Assimp's words for an allocation that failed.
bool ranOutOfMemory(const std::string& error) {
    return error.find("bad_alloc") != std::string::npos;
}

[[noreturn]] void refuse(const std::string& path, const std::string& what) {
    throw SceneFileError(path + ": " + what);
}

/// Assimp's messages may run over several lines.
std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    while (!text.empty() && (text.back() == ' ' || text.back() == '\r')) text.pop_back();
    return text;
}

/// Assimp's column-vector matrix as ours (row vectors, translation in the last row).
Matrix toMatrix(const aiMatrix4x4& m) {
    const ai_real* const rows[4] = {m[0], m[1], m[2], m[3]};
    Matrix out{};
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) out[static_cast<std::size_t>(4 * c + r)] = rows[r][c];
    return out;
}

Vec3 toVec3(const aiVector3D& v) { return {v.x, v.y, v.z}; }

bool finite(const Vec3& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

bool finite(const Matrix& m) {
    return std::all_of(m.begin(), m.end(), [](double v) { return std::isfinite(v); });
}

/// The name a node goes by: its own, else its mesh's, else `fallback`.
std::string nodeName(const aiNode& node, const std::string& fallback) {
    return node.mName.length > 0 ? node.mName.C_Str() : fallback;
}

/// A node with its world transform.
struct PlacedNode {
    const aiNode* node;
    Matrix world;
};

/// Every node, parents first, walked without recursion so that a deep file
/// cannot overflow the stack; refused past the limit.
std::vector<PlacedNode> placedNodes(const aiScene& scene, const Matrix& placement,
                                    std::size_t limit, const std::string& path) {
    std::vector<PlacedNode> nodes;
    std::vector<PlacedNode> pending{
        {scene.mRootNode,
         sorrel::multiplyMatrices(toMatrix(scene.mRootNode->mTransformation), placement)}};
    while (!pending.empty()) {
        const PlacedNode placed = pending.back();
        pending.pop_back();
        if (!finite(placed.world))
            refuse(path,
                   "node '" + nodeName(*placed.node, "") + "' has a transform that is not finite");
        nodes.push_back(placed);
        if (nodes.size() + pending.size() + placed.node->mNumChildren > limit)
            refuse(path, "more than " + std::to_string(limit) + " nodes");
        for (unsigned i = placed.node->mNumChildren; i-- > 0;) {
            const aiNode* child = placed.node->mChildren[i];
            pending.push_back(
                {child, sorrel::multiplyMatrices(toMatrix(child->mTransformation), placed.world)});
        }
    }
    return nodes;
}

/// Checks what the meshes would take before any is built.
void checkSizes(const aiScene& scene, const std::vector<PlacedNode>& nodes,
                const ImportLimits& limits, const std::string& path) {
    std::size_t triangles = 0, points = 0;
    for (const PlacedNode& placed : nodes) {
        for (unsigned i = 0; i < placed.node->mNumMeshes; ++i) {
            const aiMesh& mesh = *scene.mMeshes[placed.node->mMeshes[i]];
            points += mesh.mNumVertices;
            for (unsigned f = 0; f < mesh.mNumFaces; ++f)
                triangles +=
                    mesh.mFaces[f].mNumIndices >= kTriangle ? mesh.mFaces[f].mNumIndices - 2 : 0;
            if (triangles > limits.triangles)
                refuse(path, "more than " + std::to_string(limits.triangles) + " triangles");
            if (points > limits.points)
                refuse(path, "more than " + std::to_string(limits.points) + " vertices");
        }
    }
    if (scene.mNumLights > limits.lights)
        refuse(path, std::to_string(scene.mNumLights) + " lights, more than " +
                         std::to_string(limits.lights));
    if (scene.mNumCameras > limits.cameras)
        refuse(path, std::to_string(scene.mNumCameras) + " cameras, more than " +
                         std::to_string(limits.cameras));
    if (scene.mNumMaterials > limits.materials)
        refuse(path, std::to_string(scene.mNumMaterials) + " materials, more than " +
                         std::to_string(limits.materials));
}

sorrel::Material materialOf(const aiMaterial* source) {
    sorrel::Material material;
    if (source == nullptr) return material;
    aiColor4D color;
    if (source->Get(AI_MATKEY_BASE_COLOR, color) == aiReturn_SUCCESS ||
        source->Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS) {
        const Vec3 rgb{color.r, color.g, color.b};
        if (finite(rgb)) material.color = rgb;
    }
    float value = 0.0f;
    if (source->Get(AI_MATKEY_ROUGHNESS_FACTOR, value) == aiReturn_SUCCESS && std::isfinite(value))
        material.shininess = sorrel::shininessOfRoughness(value);
    else if (source->Get(AI_MATKEY_SHININESS, value) == aiReturn_SUCCESS && value > 0.0f &&
             std::isfinite(value))
        material.shininess = value;
    aiColor3D specular;
    if (source->Get(AI_MATKEY_SPECULAR_FACTOR, value) == aiReturn_SUCCESS && std::isfinite(value))
        material.specular = value;
    else if (source->Get(AI_MATKEY_COLOR_SPECULAR, specular) == aiReturn_SUCCESS)
        material.specular = std::max({specular.r, specular.g, specular.b});
    if (!std::isfinite(material.specular)) material.specular = sorrel::Material{}.specular;
    return material;
}

/// One of the asset's meshes as ours: points, faces, normals where each point has one.
Mesh meshOf(const aiMesh& source, const std::string& name, const std::string& path) {
    Mesh mesh;
    for (unsigned v = 0; v < source.mNumVertices; ++v) {
        const Vec3 point = toVec3(source.mVertices[v]);
        if (!finite(point))
            refuse(path, "mesh '" + name + "': vertex " + std::to_string(v) +
                             " has a coordinate that is not finite");
        mesh.addPoint(point);
    }
    for (unsigned f = 0; f < source.mNumFaces; ++f) {
        const aiFace& face = source.mFaces[f];
        if (face.mNumIndices < kTriangle) continue;
        for (unsigned i = 0; i < face.mNumIndices; ++i)
            if (face.mIndices[i] >= source.mNumVertices)
                refuse(path, "mesh '" + name + "': face " + std::to_string(f) + " names vertex " +
                                 std::to_string(face.mIndices[i]) + " of " +
                                 std::to_string(source.mNumVertices));
        const unsigned* const c = face.mIndices;
        if (face.mNumIndices == kQuad)
            mesh.addQuad(c[0], c[1], c[2], c[3]);
        else
            for (unsigned i = 2; i < face.mNumIndices; ++i) mesh.addTriangle(c[0], c[i - 1], c[i]);
    }
    if (source.HasNormals()) {
        std::vector<Vec3> normals;
        for (unsigned v = 0; v < source.mNumVertices; ++v) {
            const Vec3 normal = sorrel::normalizedOrZero(toVec3(source.mNormals[v]));
            if (!finite(normal)) return mesh;  // drawn flat instead
            normals.push_back(normal);
        }
        mesh.setPointNormals(std::move(normals));
    }
    return mesh;
}

std::size_t meshInstances(const aiScene& scene, const std::vector<PlacedNode>& nodes) {
    std::size_t count = 0;
    for (const PlacedNode& placed : nodes) count += placed.node->mNumMeshes;
    return scene.mNumMeshes == 0 ? 0 : count;
}

void addMeshes(const aiScene& scene, const std::vector<PlacedNode>& nodes,
               const std::string& prefix, const std::string& path, TakenNames& taken,
               ImportedAsset& asset) {
    const bool single = meshInstances(scene, nodes) == 1;
    for (const PlacedNode& placed : nodes) {
        for (unsigned i = 0; i < placed.node->mNumMeshes; ++i) {
            const aiMesh& source = *scene.mMeshes[placed.node->mMeshes[i]];
            const std::string node =
                nodeName(*placed.node, source.mName.length > 0 ? source.mName.C_Str() : "mesh");
            const std::string wanted = prefix.empty() ? node
                                       : single       ? prefix
                                                      : prefix + "/" + node;
            MeshDescription description;
            description.name = uniqueName(wanted, taken.meshes);
            description.node = node;
            description.mesh = meshOf(source, description.name, path);
            description.mesh.world = placed.world;
            if (source.mMaterialIndex < scene.mNumMaterials)
                description.mesh.material = materialOf(scene.mMaterials[source.mMaterialIndex]);
            asset.meshes.push_back(std::move(description));
        }
    }
}

std::map<std::string, Matrix> worldByName(const std::vector<PlacedNode>& nodes) {
    std::map<std::string, Matrix> worlds;
    for (const PlacedNode& placed : nodes) worlds.emplace(placed.node->mName.C_Str(), placed.world);
    return worlds;
}

/// The centres of interest that nodes carry in their extras (as "centerOfInterest",
/// which the viewer's own glTF export writes), by node name; positive and finite only.
std::map<std::string, double> centresOfInterestByName(const std::vector<PlacedNode>& nodes) {
    std::map<std::string, double> centres;
    for (const PlacedNode& placed : nodes) {
        const aiMetadata* const data = placed.node->mMetaData;
        double distance = 0.0;
        float single = 0.0f;
        if (data == nullptr) continue;
        if (!data->Get(kCentreOfInterestKey, distance) && data->Get(kCentreOfInterestKey, single))
            distance = single;
        if (std::isfinite(distance) && distance > 0.0)
            centres.emplace(placed.node->mName.C_Str(), distance);
    }
    return centres;
}

/// The world transform of the node a light or camera names; the placement
/// alone where no node has its name.
Matrix worldOf(const std::map<std::string, Matrix>& worlds, const aiString& name,
               const Matrix& placement) {
    const auto found = worlds.find(name.C_Str());
    return found != worlds.end() ? found->second : placement;
}

LightKind kindOf(aiLightSourceType type) {
    switch (type) {
        case aiLightSource_POINT:
            return LightKind::Point;
        case aiLightSource_DIRECTIONAL:
            return LightKind::Directional;
        case aiLightSource_AREA:
            return LightKind::Area;
        default:
            return LightKind::Spot;
    }
}

/// The light's strength is its colour's largest channel; the colour is what is left.
void setColorAndIntensity(const aiColor3D& diffuse, sorrel::LightProperties& properties) {
    const Vec3 color{diffuse.r, diffuse.g, diffuse.b};
    const double strength = std::max({color.x, color.y, color.z});
    if (!finite(color) || !(strength > 0.0)) {
        properties.intensity = finite(color) ? 0.0 : properties.intensity;
        return;
    }
    properties.color = color * (1.0 / strength);
    properties.intensity = strength;
}

void setCone(const aiLight& source, LightKind kind, const ReaderQuirks& quirks,
             sorrel::LightProperties& properties) {
    if (kind == LightKind::Point || kind == LightKind::Directional) {
        properties.coneAngle = kPointConeDegrees;
        return;
    }
    if (kind == LightKind::Area) {
        properties.coneAngle = kAreaConeDegrees;
        return;
    }
    const double full = quirks.halfConeAngles ? 2.0 : 1.0;
    const double inner = full * source.mAngleInnerCone * kDegreesPerRadian;
    const double outer =
        quirks.coneIsInnerAngle ? inner : full * source.mAngleOuterCone * kDegreesPerRadian;
    if (std::isfinite(outer) && outer > 0.0)
        properties.coneAngle = std::min(outer, kMaxConeDegrees);
    // The Collada reader's outer angle is a guess: its fade keeps the default.
    if (!quirks.coneIsInnerAngle && std::isfinite(inner) && inner >= 0.0 && inner <= outer)
        properties.coneFalloff = (std::min(outer, kMaxConeDegrees) - inner) / 2.0;
}

void addLights(const aiScene& scene, const std::map<std::string, Matrix>& worlds,
               const std::map<std::string, double>& centres, const Matrix& placement,
               const std::string& path, const ReaderQuirks& quirks, TakenNames& taken,
               ImportedAsset& asset) {
    for (unsigned i = 0; i < scene.mNumLights; ++i) {
        const aiLight& source = *scene.mLights[i];
        const Matrix world = worldOf(worlds, source.mName, placement);
        const std::string name = pathSafeName(source.mName.C_Str(), "light");
        LightDescription light;
        light.path = uniqueName(std::string(kLightsRoot) + "/" + name, taken.locations);
        light.kind = kindOf(source.mType);
        const Vec3 position = sorrel::transformPoint(toVec3(source.mPosition), world);
        Vec3 direction = sorrel::transformDirection(toVec3(source.mDirection), world);
        if (!finite(position) || !finite(direction))
            refuse(path, "light '" + name + "' has a position or direction that is not finite");
        // A point light aims nowhere of its own: down, so that it has a centre of interest.
        if (sorrel::length(direction) == 0.0) direction = {0.0, -1.0, 0.0};
        light.local = *sorrel::orientationAlong(direction);
        sorrel::setMatrixRow(light.local, sorrel::kTranslationRow, position);
        setColorAndIntensity(source.mColorDiffuse, light.properties);
        setCone(source, light.kind, quirks, light.properties);
        if (const auto given = centres.find(source.mName.C_Str()); given != centres.end()) {
            light.centerOfInterest = given->second;
            light.centerOfInterestGiven = true;
        }
        asset.lights.push_back(std::move(light));
    }
}

void addCameras(const aiScene& scene, const std::map<std::string, Matrix>& worlds,
                const Matrix& placement, const std::string& path, const ReaderQuirks& quirks,
                TakenNames& taken, ImportedAsset& asset) {
    for (unsigned i = 0; i < scene.mNumCameras; ++i) {
        const aiCamera& source = *scene.mCameras[i];
        const Matrix world = worldOf(worlds, source.mName, placement);
        NamedCamera named;
        named.name =
            uniqueName(source.mName.length > 0 ? source.mName.C_Str() : "camera", taken.cameras);
        CameraDescription& camera = named.camera;
        const Vec3 own = quirks.cameraPositionRepeatsNode ? Vec3{} : toVec3(source.mPosition);
        camera.eye = sorrel::transformPoint(own, world);
        const Vec3 look =
            sorrel::normalizedOrZero(sorrel::transformDirection(toVec3(source.mLookAt), world));
        if (!finite(camera.eye) || sorrel::length(look) == 0.0)
            refuse(path, "camera '" + named.name + "' has no finite place or direction");
        camera.target = camera.eye + look;  // moved to the scene's depth by aimImportedLights
        const double aspect =
            source.mAspect > 0.0f ? source.mAspect : double(camera.width) / camera.height;
        // The readers give the full horizontal angle, whatever Assimp's header says.
        const double vertical =
            quirks.fovIsVerticalTimesAspect
                ? source.mHorizontalFOV / aspect
                : 2.0 * std::atan(std::tan(source.mHorizontalFOV / 2.0) / aspect);
        if (std::isfinite(vertical) && vertical > 0.0)
            camera.fovDegrees =
                std::clamp(vertical * kDegreesPerRadian, kMinFovDegrees, kMaxFovDegrees);
        asset.cameras.push_back(std::move(named));
    }
}

}  // namespace

ImportedAsset importAsset(const std::string& path, const Matrix& placement,
                          const std::string& prefix, TakenNames& taken,
                          const ImportLimits& limits) {
    const ReaderWarnings warnings;
    Assimp::Importer importer;
    const aiScene* scene = nullptr;
    {
        const ImportMemoryLimit limit;
        scene = importer.ReadFile(path, kImportSteps);
    }
    if (scene == nullptr && ranOutOfMemory(importer.GetErrorString()))
        refuse(path, "reading it takes more than " +
                         std::to_string(kImportMemoryBudget / kBytesPerMebibyte) +
                         " MiB, the most a file may take (the counts it declares are too large)");
    if (scene == nullptr || scene->mRootNode == nullptr)
        refuse(path, "not a scene file Assimp can read: " +
                         oneLine(scene == nullptr ? importer.GetErrorString() : "it has no nodes"));
    if (const auto dropped = warnings.dropped())
        refuse(path, "Assimp reads it only in part: " + oneLine(*dropped));
    if (!finite(placement)) refuse(path, "its placement is not finite");
    const std::vector<PlacedNode> nodes = placedNodes(*scene, placement, limits.nodes, path);
    checkSizes(*scene, nodes, limits, path);

    ImportedAsset asset;
    addMeshes(*scene, nodes, prefix, path, taken, asset);
    const std::map<std::string, Matrix> worlds = worldByName(nodes);
    const ReaderQuirks quirks = quirksOf(path);
    addLights(*scene, worlds, centresOfInterestByName(nodes), placement, path, quirks, taken,
              asset);
    addCameras(*scene, worlds, placement, path, quirks, taken, asset);
    if (asset.meshes.empty() && asset.lights.empty() && asset.cameras.empty())
        refuse(path, "holds no mesh, light or camera");
    return asset;
}

void aimImportedLights(SceneDescription& scene) {
    const SceneBounds bounds = sceneBounds(scene.meshes);
    const double size = bounds.size();
    for (LightDescription& light : scene.lights) {
        if (!light.asset) continue;
        const Vec3 aim = -sorrel::matrixRow(light.local, 2);
        if (light.kind == LightKind::Directional) {
            const Vec3 standing = bounds.centre() - aim * size;
            sorrel::setMatrixRow(light.local, sorrel::kTranslationRow, standing);
        }
        if (light.centerOfInterestGiven) continue;
        const Vec3 position = sorrel::matrixRow(light.local, sorrel::kTranslationRow);
        light.centerOfInterest = distanceToFirstSurface(scene.meshes, position, aim).value_or(size);
    }
    for (NamedCamera& named : scene.cameras) {
        CameraDescription& camera = named.camera;
        const Vec3 look = sorrel::normalizedOrZero(camera.target - camera.eye);
        camera.target =
            camera.eye +
            look * distanceToFirstSurface(scene.meshes, camera.eye, look).value_or(size);
    }
}

}  // namespace viewer
