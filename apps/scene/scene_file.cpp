#include "apps/scene/scene_file.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include "apps/scene/asset_import.h"
#include "apps/scene/file_extension.h"
#include "apps/scene/json_node.h"
#include "apps/scene/light_kind.h"
#include "apps/scene/placement_modes.h"
#include "apps/scene/scene_framing.h"
#include "host/core/names.h"
#include "host/render/primitive_meshes.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer/scene.h"

namespace viewer {

using nlohmann::json;
using sorrel::Mesh;

namespace {

constexpr double kMaxFovDegrees = 170.0;
constexpr double kMaxConeDegrees = 179.0;
constexpr int kMaxViewportPixels = 8192;
constexpr const char* kSceneFileExtension = "json";
/// A plane of this many divisions a side has a million quads.
constexpr int kMaxDivisions = 1000;
/// The locations above every light location, made by the viewer itself.
const std::vector<std::string> kStandardGroups = {"/root", "/root/world", kLightsRoot};

Matrix scaling(const Vec3& s) {
    Matrix m = sorrel::kIdentity;
    m[0] = s.x, m[5] = s.y, m[10] = s.z;
    return m;
}

/// "translate", "rotate" (degrees about x, then y, then z) and "scale" (one
/// number or three), applied scale first and translation last; or "matrix",
/// sixteen numbers row by row (row vectors, translation in the last row), as
/// a saved scene writes every transform.
Matrix readTransform(const JsonNode& node) {
    node.expectKeys({"translate", "rotate", "scale", "matrix"});
    if (const auto numbers = node.find("matrix")) {
        if (node.has("translate") || node.has("rotate") || node.has("scale"))
            node.fail("give either 'matrix' or 'translate', 'rotate' and 'scale'");
        const std::vector<JsonNode> items = numbers->elements();
        if (items.size() != sorrel::kIdentity.size()) numbers->fail("expected 16 numbers");
        Matrix m{};
        for (std::size_t i = 0; i < items.size(); ++i) m[i] = items[i].number();
        return m;
    }
    Vec3 scale{1.0, 1.0, 1.0};
    if (const auto s = node.find("scale")) {
        const double uniform = s->isNumber() ? s->positive() : 0.0;
        scale = s->isNumber() ? Vec3{uniform, uniform, uniform} : s->vec3();
    }
    const Vec3 rotate = node.has("rotate") ? node["rotate"].vec3() : Vec3{};
    const Vec3 translate = node.has("translate") ? node["translate"].vec3() : Vec3{};
    Matrix m = sorrel::multiplyMatrices(scaling(scale), sorrel::rotationFromEulerDegrees(rotate));
    sorrel::setMatrixRow(m, sorrel::kTranslationRow, translate);
    return m;
}

/// The scene's camera: its own, or one of its assets' cameras by "name".
CameraDescription readCamera(const JsonNode& node, const std::vector<NamedCamera>& cameras) {
    node.expectKeys({"name", "eye", "target", "fov", "width", "height"});
    CameraDescription camera;
    if (const auto name = node.find("name")) {
        if (node.has("eye") || node.has("target") || node.has("fov"))
            node.fail("a named camera takes only 'width' and 'height' besides");
        const std::string wanted = name->text();
        const auto found = std::find_if(cameras.begin(), cameras.end(),
                                        [&](const NamedCamera& c) { return c.name == wanted; });
        if (found == cameras.end()) name->fail("no camera '" + wanted + "' in the scene's assets");
        camera = found->camera;
    }
    if (const auto eye = node.find("eye")) camera.eye = eye->vec3();
    if (const auto target = node.find("target")) camera.target = target->vec3();
    if (sorrel::length(camera.target - camera.eye) == 0.0)
        node.fail("the eye and the target are the same point");
    if (const auto fov = node.find("fov")) {
        camera.fovDegrees = fov->positive();
        if (camera.fovDegrees > kMaxFovDegrees)
            fov->fail("expected at most " + std::to_string(int(kMaxFovDegrees)) + " degrees");
    }
    for (const auto& [key, size] :
         {std::pair{"width", &camera.width}, {"height", &camera.height}}) {
        if (const auto pixels = node.find(key)) {
            *size = pixels->integer();
            if (*size < 1 || *size > kMaxViewportPixels)
                pixels->fail("expected 1 to " + std::to_string(kMaxViewportPixels) + " pixels");
        }
    }
    return camera;
}

sorrel::Material readMaterial(const JsonNode& node) {
    node.expectKeys({"color", "roughness", "shininess", "specular"});
    sorrel::Material material;
    if (const auto color = node.find("color")) material.color = color->vec3();
    if (node.has("roughness") && node.has("shininess"))
        node.fail("give either 'roughness' or 'shininess', not both");
    if (const auto roughness = node.find("roughness"))
        material.shininess = sorrel::shininessOfRoughness(roughness->number());
    if (const auto shininess = node.find("shininess")) material.shininess = shininess->positive();
    if (const auto specular = node.find("specular")) material.specular = specular->number();
    return material;
}

ShapeDescription readShape(const JsonNode& node, const std::string& name) {
    const auto number = [&node](const char* key, double fallback) {
        return node.has(key) ? node[key].positive() : fallback;
    };
    ShapeDescription shape;
    shape.shape = name;
    if (name == "plane") {
        node.expectKeys({"name", "shape", "size", "divisions", "transform", "material"});
        shape.size = {10.0, 0.0, 10.0};
        if (const auto s = node.find("size")) {
            const std::vector<JsonNode> sides = s->elements();
            if (sides.size() != 2) s->fail("expected [width, depth]");
            shape.size = {sides[0].positive(), 0.0, sides[1].positive()};
        }
        shape.divisions = node.has("divisions") ? node["divisions"].integer() : 1;
        if (shape.divisions < 1 || shape.divisions > kMaxDivisions)
            node["divisions"].fail("expected 1 to " + std::to_string(kMaxDivisions) +
                                   " divisions, got " + std::to_string(shape.divisions));
    } else if (name == "box") {
        node.expectKeys({"name", "shape", "size", "transform", "material"});
        if (node.has("size")) shape.size = node["size"].vec3();
        if (!(shape.size.x > 0 && shape.size.y > 0 && shape.size.z > 0))
            node["size"].fail("expected sides greater than 0");
    } else if (name == "sphere") {
        node.expectKeys({"name", "shape", "radius", "transform", "material"});
        shape.radius = number("radius", 1.0);
    } else if (name == "cylinder") {
        node.expectKeys({"name", "shape", "radius", "height", "transform", "material"});
        shape.radius = number("radius", 0.5);
        shape.height = number("height", 1.0);
    } else if (name == "torus") {
        node.expectKeys({"name", "shape", "majorRadius", "minorRadius", "transform", "material"});
        shape.majorRadius = number("majorRadius", 1.0);
        shape.minorRadius = number("minorRadius", 0.3);
    } else {
        node["shape"].fail("unknown shape '" + name +
                           "' (known: plane, box, sphere, cylinder, torus)");
    }
    return shape;
}

Mesh buildShape(const ShapeDescription& shape) {
    if (shape.shape == "plane") return Mesh::plane(shape.size.x, shape.size.z, shape.divisions);
    if (shape.shape == "box") return Mesh::box(shape.size);
    if (shape.shape == "sphere") return sorrel::sphereMesh(shape.radius);
    if (shape.shape == "cylinder") return sorrel::cylinderMesh(shape.radius, shape.height);
    return sorrel::torusMesh(shape.majorRadius, shape.minorRadius);
}

/// The asset a mesh entry names, brought in whole under its transform.
void readAsset(const JsonNode& node, const std::string& folder, TakenNames& taken,
               SceneDescription& scene) {
    node.expectKeys({"name", "file", "transform", "material", "lights"});
    AssetDescription asset;
    asset.name = node["name"].text();
    const JsonNode file = node["file"];
    asset.file = file.text();
    asset.path =
        !asset.file.empty() && asset.file.front() == '/' ? asset.file : folder + "/" + asset.file;
    if (!std::ifstream(asset.path)) file.fail("no mesh file '" + asset.path + "'");
    if (const auto transform = node.find("transform")) asset.transform = readTransform(*transform);
    if (const auto material = node.find("material")) asset.material = readMaterial(*material);
    ImportedAsset imported;
    try {
        imported = importAsset(asset.path, asset.transform, asset.name, taken);
    } catch (const SceneFileError& error) {
        file.fail(error.what());
    }
    const std::size_t index = scene.assets.size();
    scene.assets.push_back(asset);
    for (MeshDescription& mesh : imported.meshes) {
        mesh.asset = index;
        if (asset.material) mesh.mesh.material = *asset.material;
        scene.meshes.push_back(std::move(mesh));
    }
    // A saved scene lists the asset's lights itself, as they stood.
    const bool lights = node.has("lights") ? node["lights"].boolean() : true;
    for (LightDescription& light : imported.lights) {
        if (!lights) break;
        light.asset = index;
        scene.lights.push_back(std::move(light));
    }
    for (NamedCamera& camera : imported.cameras) scene.cameras.push_back(std::move(camera));
}

void readMesh(const JsonNode& node, const std::string& folder, TakenNames& taken,
              SceneDescription& scene) {
    const std::string name = node["name"].text();
    if (taken.meshes.count(name) != 0) node["name"].fail("'" + name + "' is given twice");
    if (node.has("shape") == node.has("file")) node.fail("give either 'shape' or 'file'");
    if (node.has("file")) return readAsset(node, folder, taken, scene);
    MeshDescription description;
    description.name = name;
    description.shape = readShape(node, node["shape"].text());
    description.mesh = buildShape(*description.shape);
    if (const auto transform = node.find("transform"))
        description.mesh.world = readTransform(*transform);
    if (const auto material = node.find("material"))
        description.mesh.material = readMaterial(*material);
    taken.meshes.insert(name);
    scene.meshes.push_back(std::move(description));
}

/// A light's place: "transform", or "position" with an optional "aim" point,
/// both in its parent's space. The aim also gives the centre of interest.
void readLightPlacement(const JsonNode& node, LightDescription& light) {
    if (node.has("transform") && (node.has("position") || node.has("aim")))
        node.fail("give either 'transform' or 'position' and 'aim', not both");
    if (const auto transform = node.find("transform")) {
        light.local = readTransform(*transform);
        return;
    }
    if (node.has("aim") && !node.has("position")) node.fail("an 'aim' needs a 'position'");
    if (!node.has("position")) return;
    const Vec3 position = node["position"].vec3();
    if (const auto aim = node.find("aim")) {
        const Vec3 towards = aim->vec3() - position;
        const auto orientation = sorrel::orientationAlong(towards);
        if (!orientation) aim->fail("the aim is the light's own position");
        light.local = *orientation;
        light.centerOfInterest = sorrel::length(towards);
    }
    sorrel::setMatrixRow(light.local, sorrel::kTranslationRow, position);
}

LightDescription readLight(const JsonNode& node) {
    node.expectKeys({"path", "kind", "transform", "position", "aim", "centerOfInterest", "color",
                     "intensity", "cone", "shadows"});
    LightDescription light;
    light.path = node["path"].text();
    if (const auto kind = node.find("kind")) {
        const std::string name = kind->text();
        const std::optional<LightKind> known = lightKindNamed(name);
        if (!known)
            kind->fail("unknown kind '" + name + "' (known: spot, point, directional, area)");
        light.kind = *known;
    }
    readLightPlacement(node, light);
    if (const auto distance = node.find("centerOfInterest"))
        light.centerOfInterest = distance->positive();
    sorrel::LightProperties& properties = light.properties;
    if (const auto color = node.find("color")) properties.color = color->vec3();
    if (const auto intensity = node.find("intensity")) properties.intensity = intensity->number();
    if (const auto cone = node.find("cone")) {
        cone->expectKeys({"angle", "falloff"});
        if (const auto angle = cone->find("angle")) properties.coneAngle = angle->positive();
        if (properties.coneAngle > kMaxConeDegrees)
            (*cone)["angle"].fail("expected less than 180 degrees");
        if (const auto falloff = cone->find("falloff")) properties.coneFalloff = falloff->number();
    }
    if (const auto shadows = node.find("shadows")) properties.shadows = shadows->boolean();
    return light;
}

/// A location path: absolute, without an empty or trailing step.
void checkPath(const JsonNode& node, const std::string& path) {
    if (path.size() < 2 || path.front() != '/' || path.back() == '/' ||
        path.find("//") != std::string::npos)
        node.fail("'" + path + "' is no location path (such as /root/world/lgt/key)");
}

/// Groups, lights and USD lights; `known` gathers the location paths.
void readLocations(const JsonNode& root, std::set<std::string>& known, SceneDescription& scene) {
    const std::string lightsPrefix = std::string(kLightsRoot) + "/";
    const auto add = [&](const JsonNode& node, const std::string& path) {
        const JsonNode where = node["path"];
        checkPath(where, path);
        if (path.compare(0, lightsPrefix.size(), lightsPrefix) != 0)
            where.fail("'" + path + "' does not lie below " + kLightsRoot);
        if (known.count(path) != 0) where.fail("'" + path + "' is given twice");
        if (known.count(sorrel::parentOf(path)) == 0)
            where.fail("the parent of '" + path + "' is missing (add it to \"groups\" first)");
        known.insert(path);
    };
    if (const auto groups = root.find("groups")) {
        for (const JsonNode& node : groups->elements()) {
            node.expectKeys({"path", "transform", "package"});
            GroupDescription group;
            group.path = node["path"].text();
            add(node, group.path);
            if (const auto transform = node.find("transform"))
                group.local = readTransform(*transform);
            if (const auto package = node.find("package")) group.packageClass = package->text();
            scene.groups.push_back(group);
        }
    }
    if (const auto lights = root.find("lights")) {
        for (const JsonNode& node : lights->elements()) {
            scene.lights.push_back(readLight(node));
            add(node, scene.lights.back().path);
        }
    }
    if (const auto lights = root.find("usdLights")) {
        std::set<std::string> prims;
        for (const JsonNode& node : lights->elements()) {
            scene.usdLights.push_back(readLight(node));
            const std::string& path = scene.usdLights.back().path;
            checkPath(node["path"], path);
            if (!prims.insert(path).second) node["path"].fail("'" + path + "' is given twice");
        }
    }
}

void readSelection(const JsonNode& root, const std::set<std::string>& known,
                   SceneDescription& scene) {
    if (const auto selection = root.find("selection")) {
        scene.selection = selection->texts();
        const std::vector<JsonNode> items = selection->elements();
        for (std::size_t i = 0; i < items.size(); ++i)
            if (known.count(scene.selection[i]) == 0)
                items[i].fail("no light or group '" + scene.selection[i] + "'");
    }
}

OptionValue readOption(const JsonNode& node, const std::string& name) {
    if (name == sorrel::names::kEnabled) return node.boolean() ? 1 : 0;
    if (name == sorrel::names::kMode) {
        const std::string label = node.text();
        if (!isModeLabel(label)) node.fail("unknown mode '" + label + "'");
        return label;
    }
    if (name == sorrel::names::kDefaultDistance ||
        name == sorrel::names::kDefaultShadowFallDistance)
        return node.positive();
    if (name == sorrel::names::kManipulatorScale) return node.positive();
    if (name == sorrel::names::kPackageClassName || name == sorrel::names::kMarquetteNodeName)
        return node.text();
    if (name == sorrel::names::kExcludedLocationsPicking) return node.texts();
    node.fail("unknown option '" + name +
              "' (known: Enabled, Mode, DefaultDistance, DefaultShadowFallDistance, "
              "Manipulator.Scale, PackageClassName, MarquetteNodeName, "
              "ViewportLayer.ExcludedLocationsPicking)");
}

TourDescription readTour(const JsonNode& node) {
    node.expectKeys({"light", "press", "drag", "pressByMode", "hover", "package"});
    TourDescription tour;
    if (const auto light = node.find("light")) tour.light = light->text();
    if (const auto hover = node.find("hover")) tour.hover = hover->text();
    if (const auto press = node.find("press")) tour.press = press->pixel();
    if (const auto drag = node.find("drag")) tour.drag = drag->pixel();
    if (const auto package = node.find("package")) tour.package = package->pixel();
    if (const auto byMode = node.find("pressByMode")) {
        for (const auto& [label, pixel] : byMode->members()) {
            if (!isModeLabel(label)) pixel.fail("unknown mode '" + label + "'");
            tour.pressByMode[label] = pixel.pixel();
        }
    }
    return tour;
}

/// The 1-based line and column of a byte offset into `text`.
std::string lineAndColumn(const std::string& text, std::size_t offset) {
    std::size_t line = 1, column = 1;
    for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
        if (text[i] == '\n') ++line, column = 0;
        ++column;
    }
    return std::to_string(line) + ":" + std::to_string(column);
}

/// The parser's message without its code and position, which we give ourselves.
std::string parserComplaint(const std::string& message) {
    const std::size_t colon = message.find(": ");
    return colon == std::string::npos ? message : message.substr(colon + 2);
}

}  // namespace

SceneDescription parseScene(const std::string& text, const std::string& file,
                            const std::string& folder) {
    json document;
    try {
        document = json::parse(text);
    } catch (const json::parse_error& error) {
        throw SceneFileError(file + ":" +
                             lineAndColumn(text, error.byte == 0 ? 0 : error.byte - 1) + ": " +
                             parserComplaint(error.what()));
    } catch (const json::out_of_range& error) {
        // A number past what a double holds, such as 1e400: the parser names it, not where.
        const std::string message = error.what();
        const std::size_t code = message.find("] ");
        const std::string complaint =
            code == std::string::npos ? message : message.substr(code + 2);
        const std::size_t quote = complaint.find('\'');
        const std::string number = quote == std::string::npos
                                       ? ""
                                       : complaint.substr(quote + 1, complaint.size() - quote - 2);
        const std::size_t at = number.empty() ? std::string::npos : text.find(number);
        throw SceneFileError(file + (at == std::string::npos ? "" : ":" + lineAndColumn(text, at)) +
                             ": " + complaint + " (past the largest number a double holds)");
    }
    const JsonNode root(document, file, "");
    root.expectKeys(
        {"camera", "meshes", "groups", "lights", "usdLights", "selection", "options", "tour"});

    SceneDescription scene;
    scene.file = file;
    TakenNames taken;
    taken.locations.insert(kStandardGroups.begin(), kStandardGroups.end());
    // The file's own locations first, so that an asset's lights are named around them.
    readLocations(root, taken.locations, scene);
    if (const auto meshes = root.find("meshes"))
        for (const JsonNode& node : meshes->elements()) readMesh(node, folder, taken, scene);
    readSelection(root, taken.locations, scene);
    aimImportedLights(scene);
    if (const auto camera = root.find("camera"))
        scene.camera = readCamera(*camera, scene.cameras);
    else if (!scene.cameras.empty())
        scene.camera = scene.cameras.front().camera;
    addDefaultRigWhereUnlit(scene);
    fitDepthRanges(scene);
    if (const auto options = root.find("options"))
        for (const auto& [name, value] : options->members())
            scene.options.emplace_back(name, readOption(value, name));
    if (const auto tour = root.find("tour")) scene.tour = readTour(*tour);
    return scene;
}

void fitDepthRanges(SceneDescription& scene) {
    const SceneBounds bounds = sceneBounds(scene.meshes);
    fitDepthRange(scene.camera, bounds);
    for (NamedCamera& named : scene.cameras) fitDepthRange(named.camera, bounds);
}

void addDefaultRigWhereUnlit(SceneDescription& scene) {
    if (!scene.lights.empty() || !scene.usdLights.empty()) return;
    scene.lights = defaultRig(sceneBounds(scene.meshes));
}

SceneDescription loadAssetScene(const std::string& path) {
    if (!std::ifstream(path)) throw SceneFileError(path + ": no such file, or it cannot be read");
    SceneDescription scene;
    scene.file = path;
    AssetDescription asset;
    asset.file = asset.path = path;
    const std::size_t slash = path.rfind('/');
    asset.name = path.substr(slash == std::string::npos ? 0 : slash + 1);
    TakenNames taken;
    taken.locations.insert(kStandardGroups.begin(), kStandardGroups.end());
    ImportedAsset imported = importAsset(path, sorrel::kIdentity, "", taken);
    scene.assets.push_back(asset);
    for (MeshDescription& mesh : imported.meshes) mesh.asset = 0;
    for (LightDescription& light : imported.lights) light.asset = 0;
    scene.meshes = std::move(imported.meshes);
    scene.lights = std::move(imported.lights);
    scene.cameras = std::move(imported.cameras);
    aimImportedLights(scene);
    scene.camera = scene.cameras.empty() ? framingCamera(sceneBounds(scene.meshes), {})
                                         : scene.cameras.front().camera;
    addDefaultRigWhereUnlit(scene);
    fitDepthRanges(scene);
    // Lights placed from the asset stand off by a share of its size, whatever its units.
    const double distance = placementDistance(sceneBounds(scene.meshes));
    scene.options = {{sorrel::names::kEnabled, 1},
                     {sorrel::names::kDefaultDistance, distance},
                     {sorrel::names::kDefaultShadowFallDistance, distance}};
    return scene;
}

SceneDescription loadScene(const std::string& path) {
    return lowerCaseExtension(path) == kSceneFileExtension ? loadSceneFile(path)
                                                           : loadAssetScene(path);
}

SceneDescription loadSceneFile(const std::string& path) {
    std::ifstream stream(path);
    if (!stream) throw SceneFileError(path + ": no such file, or it cannot be read");
    std::ostringstream text;
    text << stream.rdbuf();
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash);
    return parseScene(text.str(), path, folder);
}

}  // namespace viewer
