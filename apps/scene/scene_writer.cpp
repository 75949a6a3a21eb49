#include "apps/scene/scene_writer.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <variant>

#include "apps/scene/atomic_file.h"
#include "apps/scene/light_kind.h"
#include "host/core/names.h"

namespace viewer {

namespace {

using Json = nlohmann::ordered_json;

/// Spaces of indentation in the written file.
constexpr int kIndent = 2;
constexpr const char* kSavedSuffix = ".beamwright.json";

Json vec3(const Vec3& v) { return Json::array({v.x, v.y, v.z}); }

Json transform(const Matrix& m) { return Json{{"matrix", Json(m)}}; }

Json material(const sorrel::Material& m) {
    return Json{{"color", vec3(m.color)}, {"shininess", m.shininess}, {"specular", m.specular}};
}

Json camera(const CameraDescription& c) {
    return Json{{"eye", vec3(c.eye)},
                {"target", vec3(c.target)},
                {"fov", c.fovDegrees},
                {"width", c.width},
                {"height", c.height}};
}

Json shape(const MeshDescription& mesh) {
    const ShapeDescription& s = *mesh.shape;
    Json entry{{"name", mesh.name}, {"shape", s.shape}};
    if (s.shape == "plane") {
        entry["size"] = Json::array({s.size.x, s.size.z});
        entry["divisions"] = s.divisions;
    } else if (s.shape == "box") {
        entry["size"] = vec3(s.size);
    } else if (s.shape == "sphere") {
        entry["radius"] = s.radius;
    } else if (s.shape == "cylinder") {
        entry["radius"] = s.radius;
        entry["height"] = s.height;
    } else {
        entry["majorRadius"] = s.majorRadius;
        entry["minorRadius"] = s.minorRadius;
    }
    entry["transform"] = transform(mesh.mesh.world);
    entry["material"] = material(mesh.mesh.material);
    return entry;
}

Json asset(const AssetDescription& a, const std::string& folder) {
    // Named from the saved file's folder, as the reader finds it.
    const std::filesystem::path relative =
        std::filesystem::absolute(a.path).lexically_normal().lexically_proximate(
            std::filesystem::absolute(folder.empty() ? "." : folder).lexically_normal());
    Json entry{{"name", a.name},
               {"file", relative.empty() ? a.path : relative.generic_string()},
               {"transform", transform(a.transform)}};
    if (a.material) entry["material"] = material(*a.material);
    entry["lights"] = false;
    return entry;
}

Json light(const LightDescription& l) {
    const sorrel::LightProperties& p = l.properties;
    return Json{{"path", l.path},
                {"kind", lightKindName(l.kind)},
                {"transform", transform(l.local)},
                {"centerOfInterest", l.centerOfInterest},
                {"color", vec3(p.color)},
                {"intensity", p.intensity},
                {"cone", {{"angle", p.coneAngle}, {"falloff", p.coneFalloff}}},
                {"shadows", p.shadows}};
}

Json group(const GroupDescription& g) {
    Json entry{{"path", g.path}, {"transform", transform(g.local)}};
    if (g.packageClass) entry["package"] = *g.packageClass;
    return entry;
}

struct OptionJson {
    const std::string& name;
    Json operator()(int value) const {
        // "Enabled" is a switch in the file; other whole numbers stay numbers.
        return name == sorrel::names::kEnabled ? Json(value != 0) : Json(value);
    }
    Json operator()(double value) const { return value; }
    Json operator()(const std::string& value) const { return value; }
    Json operator()(const std::vector<std::string>& values) const { return values; }
};

bool holdsContainers(const Json& array) {
    return std::any_of(array.begin(), array.end(),
                       [](const Json& item) { return item.is_structured(); });
}

/// Objects a key a line, arrays of numbers or names on one line, so that a
/// matrix reads as one and a diff shows what moved.
void layOut(const Json& value, int depth, std::string& out) {
    const std::string inner(static_cast<std::size_t>((depth + 1) * kIndent), ' ');
    const std::string outer(static_cast<std::size_t>(depth * kIndent), ' ');
    if (value.is_object() && !value.empty()) {
        out += "{\n";
        bool first = true;
        for (const auto& [key, item] : value.items()) {
            out += (first ? "" : ",\n") + inner + Json(key).dump() + ": ";
            layOut(item, depth + 1, out);
            first = false;
        }
        out += "\n" + outer + "}";
    } else if (value.is_array() && holdsContainers(value)) {
        out += "[\n";
        for (std::size_t i = 0; i < value.size(); ++i) {
            out += (i == 0 ? "" : ",\n") + inner;
            layOut(value[i], depth + 1, out);
        }
        out += "\n" + outer + "]";
    } else if (value.is_array()) {
        out += "[";
        for (std::size_t i = 0; i < value.size(); ++i)
            out += (i == 0 ? "" : ", ") + value[i].dump();
        out += "]";
    } else {
        out += value.dump();
    }
}

Json pixel(const Pixel& p) { return Json::array({p[0], p[1]}); }

Json tour(const TourDescription& t) {
    Json entry = Json::object();
    if (t.light) entry["light"] = *t.light;
    if (t.press) entry["press"] = pixel(*t.press);
    if (t.drag) entry["drag"] = pixel(*t.drag);
    if (!t.pressByMode.empty()) {
        Json byMode = Json::object();
        for (const auto& [label, where] : t.pressByMode) byMode[label] = pixel(where);
        entry["pressByMode"] = byMode;
    }
    if (t.hover) entry["hover"] = *t.hover;
    if (t.package) entry["package"] = pixel(*t.package);
    return entry;
}

}  // namespace

std::string sceneFileText(const SceneDescription& scene, const std::string& folder) {
    Json root;
    root["camera"] = camera(scene.camera);
    Json meshes = Json::array();
    for (const MeshDescription& mesh : scene.meshes)
        if (mesh.shape && !mesh.asset) meshes.push_back(shape(mesh));
    for (const AssetDescription& a : scene.assets) meshes.push_back(asset(a, folder));
    root["meshes"] = meshes;
    Json groups = Json::array();
    for (const GroupDescription& g : scene.groups) groups.push_back(group(g));
    root["groups"] = groups;
    Json lights = Json::array();
    for (const LightDescription& l : scene.lights) lights.push_back(light(l));
    root["lights"] = lights;
    Json usdLights = Json::array();
    for (const LightDescription& l : scene.usdLights) usdLights.push_back(light(l));
    root["usdLights"] = usdLights;
    root["selection"] = scene.selection;
    // By name, as a reader of JSON objects gives them back.
    std::vector<std::pair<std::string, OptionValue>> sorted = scene.options;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Json options = Json::object();
    for (const auto& [name, value] : sorted) options[name] = std::visit(OptionJson{name}, value);
    root["options"] = options;
    root["tour"] = tour(scene.tour);
    std::string text;
    layOut(root, 0, text);
    return text + "\n";
}

void saveSceneFile(const std::string& path, const SceneDescription& scene) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    writeFileAtomically(path, sceneFileText(scene, folder.empty() ? "." : folder));
}

std::string savePathFor(const std::string& opened) {
    const std::string extension = std::filesystem::path(opened).extension().string();
    if (extension == ".json" || extension == ".JSON") return opened;
    return opened + kSavedSuffix;
}

}  // namespace viewer
