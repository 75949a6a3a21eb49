#pragma once
// The viewer delegate's light package commands, as the placement layer calls
// them by name.
//
// "CreateLightPackage" takes a group of "Position" (three doubles, world
// space), "Rotation" (three doubles, degrees about x, y and z), and the
// optional "CenterOfInterest", "ShadowFallDistance" (doubles),
// "PackageClassName" and "MarquetteNodeName" (strings). It adds a package
// location below kLightPackagesRoot, or below kLightPackagesRoot/<marquette
// node name> when that is given, named "package<n>" with the first free n,
// with the package's world transform set from "Position" and "Rotation"; and
// a light location "light" under it that stands on the package, carrying
// "geometry.centerOfInterest" and "geometry.shadowFallDistance". Both are
// sent to the components as new locations. The answer is the package's path
// as a string attribute, or null when the argument is no group.
//
// "FindPackageLocationPathForCurrentSelection" answers the path of the first
// selected location (in path order) when that is a package, else of its
// parent when that is one, as a string attribute; null otherwise.

#include <optional>
#include <string>

#include "host/core/attribute_ref.h"
#include "host/viewer/scene.h"

namespace sorrel {

class ViewerDelegate;

constexpr const char* kLightPackagesRoot = "/root/world/lgt";

void installLightPackageCommands(ViewerDelegate& delegate);

/// The attributes of a package location of class `className`, made below
/// the node `marquette` ("" for none).
AttrRef lightPackageAttributes(const std::string& className, const std::string& marquette);
/// The class of a package location; nothing for a location that is no package.
std::optional<std::string> lightPackageClassOf(const Location& location);

}  // namespace sorrel
