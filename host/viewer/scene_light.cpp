#include "host/viewer/scene_light.h"

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/viewer/scene.h"
#include "host/viewer/selection.h"

namespace sorrel {

namespace {

constexpr std::size_t kColorChannels = 3;
/// A light at rest looks down its negative local Z axis.
constexpr int kLocalZRow = 2;

Vec3 readColor(const AttrRef& attribute, const Vec3& fallback) {
    if (attribute.type() != kFloat || attribute.valueCount() < kColorChannels) return fallback;
    return {attribute.floatValue(0), attribute.floatValue(1), attribute.floatValue(2)};
}

LightProperties readLightProperties(const AttrRef& geometry) {
    LightProperties properties;
    properties.color = readColor(geometry.child("color"), properties.color);
    properties.intensity = readDouble(geometry.child("intensity")).value_or(properties.intensity);
    properties.coneAngle = readDouble(geometry.child("coneAngle")).value_or(properties.coneAngle);
    properties.coneFalloff =
        readDouble(geometry.child("coneFalloff")).value_or(properties.coneFalloff);
    properties.shadows = readInt(geometry.child("shadows")).value_or(0) != 0;
    return properties;
}

}  // namespace

AttrRef lightGeometry(const LightProperties& properties, double centerOfInterest) {
    const Vec3& c = properties.color;
    return groupAttr({{names::kCenterOfInterest, doubleAttr(centerOfInterest)},
                      {"color", floatsAttr({static_cast<float>(c.x), static_cast<float>(c.y),
                                            static_cast<float>(c.z)})},
                      {"intensity", doubleAttr(properties.intensity)},
                      {"coneAngle", doubleAttr(properties.coneAngle)},
                      {"coneFalloff", doubleAttr(properties.coneFalloff)},
                      {"shadows", intAttr(properties.shadows ? 1 : 0)}});
}

SceneLight placedLight(const std::string& path, const Matrix& world) {
    SceneLight light;
    light.path = path;
    light.position = matrixRow(world, kTranslationRow);
    light.direction = normalizedOrZero(-matrixRow(world, kLocalZRow));
    return light;
}

std::vector<SceneLight> locationLights(const Scene& scene) {
    std::vector<SceneLight> lights;
    for (const auto& [path, location] : scene.locations()) {
        if (!hasType(location, names::kLightType)) continue;
        SceneLight light = placedLight(path, *scene.worldTransform(path));
        const AttrRef geometry = location.attributes.child(names::kGeometry);
        light.centerOfInterest = readDouble(geometry.child(names::kCenterOfInterest)).value_or(0.0);
        light.properties = readLightProperties(geometry);
        light.selected = location.selected;
        lights.push_back(std::move(light));
    }
    return lights;
}

}  // namespace sorrel
