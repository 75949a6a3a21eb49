#include "host/siblings/light_package_commands.h"

#include <string>
#include <utility>
#include <vector>

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer/selection.h"
#include "host/viewer/vector_attributes.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/world_placement.h"

namespace sorrel {

namespace {

constexpr const char* kPackageName = "package";
/// The package location's own group: its class and the node it was made below.
constexpr const char* kPackageGroup = "package";
constexpr const char* kPackageClass = "className";
constexpr const char* kPackageMarquette = "marquetteNodeName";
constexpr const char* kLightName = "light";

AttrRef findPackageForSelection(const Scene& scene) {
    const std::vector<std::string> selected = selectedPaths(scene);
    if (selected.empty()) return AttrRef();
    for (const std::string& path : {selected.front(), parentOf(selected.front())}) {
        const Location* const location = scene.find(path);
        if (location != nullptr && hasType(*location, names::kLightPackageType))
            return stringAttr(path);
    }
    return AttrRef();
}

std::string freePackagePath(const Scene& scene, const std::string& parent) {
    for (int n = 1;; ++n) {
        const std::string path = parent + "/" + kPackageName + std::to_string(n);
        if (!scene.contains(path)) return path;
    }
}

AttrRef lightAttributes(const AttrRef& command) {
    std::vector<std::pair<std::string, AttrRef>> geometry;
    if (const auto distance = readDouble(command.child(names::kPackageCenterOfInterest)))
        geometry.emplace_back(names::kCenterOfInterest, doubleAttr(*distance));
    if (const auto distance = readDouble(command.child(names::kPackageShadowFallDistance)))
        geometry.emplace_back(names::kShadowFallDistance, doubleAttr(*distance));
    return groupAttr({{names::kType, stringAttr(names::kLightType)},
                      {names::kGeometry, groupAttr(std::move(geometry))}});
}

AttrRef createLightPackage(ViewerDelegate& delegate, const AttrRef& command) {
    if (command.type() != kGroup) return AttrRef();
    Scene& scene = delegate.scene();
    const std::string marquette = readString(command.child(names::kMarquetteNodeName)).value_or("");
    const std::string parent =
        std::string(kLightPackagesRoot) + (marquette.empty() ? "" : "/" + marquette);
    const std::string packagePath = freePackagePath(scene, parent);
    const std::string lightPath = packagePath + "/" + kLightName;

    Matrix world = rotationFromEulerDegrees(
        readDoubleTriple(command.child(names::kPackageRotation)).value_or(Vec3{}));
    setMatrixRow(world, kTranslationRow,
                 readDoubleTriple(command.child(names::kPackagePosition)).value_or(Vec3{}));
    const std::string className = readString(command.child(names::kPackageClassName)).value_or("");
    scene.set(packagePath, lightPackageAttributes(className, marquette));
    placeInWorld(scene, packagePath, world);
    scene.set(lightPath, lightAttributes(command));

    delegate.sendLocation(packagePath);
    delegate.sendLocation(lightPath);
    return stringAttr(packagePath);
}

}  // namespace

AttrRef lightPackageAttributes(const std::string& className, const std::string& marquette) {
    return groupAttr({{names::kType, stringAttr(names::kLightPackageType)},
                      {kPackageGroup, groupAttr({{kPackageClass, stringAttr(className)},
                                                 {kPackageMarquette, stringAttr(marquette)}})}});
}

std::optional<std::string> lightPackageClassOf(const Location& location) {
    if (!hasType(location, names::kLightPackageType)) return std::nullopt;
    return readString(location.attributes.child(std::string(kPackageGroup) + "." + kPackageClass))
        .value_or("");
}

void installLightPackageCommands(ViewerDelegate& delegate) {
    delegate.defineMethod(names::kFindPackageCommand, [&delegate](const AttrRef&) {
        return findPackageForSelection(delegate.scene());
    });
    delegate.defineMethod(names::kCreatePackageCommand, [&delegate](const AttrRef& command) {
        return createLightPackage(delegate, command);
    });
}

}  // namespace sorrel
