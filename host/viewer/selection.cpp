#include "host/viewer/selection.h"

#include <algorithm>

#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/viewer/viewer_delegate.h"

namespace sorrel {

bool hasType(const Location& location, const std::string& type) {
    return readString(location.attributes.child(names::kType)) == type;
}

std::vector<std::string> selectedPaths(const Scene& scene) {
    std::vector<std::string> paths;
    for (const auto& [path, location] : scene.locations())
        if (location.selected) paths.push_back(path);
    return paths;
}

void selectLocations(ViewerDelegate& delegate, const std::vector<std::string>& paths) {
    std::vector<std::string> selected;
    for (const std::string& path : paths)
        if (delegate.scene().contains(path)) selected.push_back(path);
    for (const auto& entry : delegate.scene().locations()) {
        const std::string& path = entry.first;
        delegate.scene().find(path)->selected =
            std::find(selected.begin(), selected.end(), path) != selected.end();
    }
    delegate.sendSelection(selected);
}

}  // namespace sorrel
