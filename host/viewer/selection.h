#pragma once
// The viewer's selection, kept as the `selected` flags of the scene's
// locations, and the location types that the host's own objects look for.

#include <string>
#include <vector>

#include "host/viewer/scene.h"

namespace sorrel {

class ViewerDelegate;

/// Whether the location's "type" is a string attribute with this text.
bool hasType(const Location& location, const std::string& type);

/// The selected locations, in path order.
std::vector<std::string> selectedPaths(const Scene& scene);

/// Makes exactly `paths` the selection (unknown paths are passed over) and
/// tells the delegate's components.
void selectLocations(ViewerDelegate& delegate, const std::vector<std::string>& paths);

}  // namespace sorrel
