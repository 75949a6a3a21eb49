#include "scene/light_component.h"

#include <algorithm>

#include "frame/viewer_delegate_wrapper.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

const std::string kRootPath = "/root";
constexpr std::uint32_t kCurrentTransform = 0;

}  // namespace

bool BeamwrightLayerVDC::locationEvent(const LocationEvent& event, bool) {
    const std::string& path = event.locationPath;
    if (event.locationRemoved) {
        removeLocation(path);
        return false;
    }

    LocationNode* node = lightSceneTree.find(path);
    const bool isNew = node == nullptr;
    if (!isNew && !event.attributesChanged && !event.transformChanged && !event.stateChanged)
        return false;

    markLocationsDirty();
    if (isNew) {
        // Parents are never made up: a location whose parent is unknown is dropped.
        node = lightSceneTree.findOrInsert(path, /* createMissingParents = */ false);
        if (node == nullptr) return false;
    }

    LightLocationData& data = node->data;
    if (isNew || event.attributesChanged || event.stateChanged) {
        data.excluded = event.excluded;
        data.attributes = event.attributes;
    }
    if (isNew || event.transformChanged)
        data.worldMatrix = getViewerDelegate()->getWorldTransform(path, kCurrentTransform);
    if (isNew) {
        data.selected = selectedLocations.count(path) != 0;
        data.pickerObject = makePickerObject(path);
    }
    updateLightLocationData(data);

    // The host reports the moved location only; what lies below moves with it.
    if (!isNew && event.transformChanged) refreshSubtree(node);
    return false;
}

void BeamwrightLayerVDC::locationsSelected(const std::vector<std::string>& locations) {
    selectedLocations.clear();
    selectedLocations.insert(locations.begin(), locations.end());
    for (LocationNode& node : lightSceneTree.walk(lightSceneTree.find(kRootPath)))
        node.data.selected = selectedLocations.count(*node.path) != 0;
}

const BeamwrightLayerVDC::LightList& BeamwrightLayerVDC::getLights() {
    if (dirtyFlags == 0) return lights;
    if (dirtyFlags & kLocationLightsStale) collectLocationLights();
    if (dirtyFlags & kUsdLightsStale) {
        usdLights.clear();
        collectUsdLights(usdLights);
    }
    // Only now, since usdLights may have reallocated while it grew.
    lights.clear();
    lights.reserve(locationLights.size() + usdLights.size());
    lights.insert(lights.end(), locationLights.begin(), locationLights.end());
    for (const LightLocationData& record : usdLights) lights.push_back(&record);
    dirtyFlags = 0;
    return lights;
}

void BeamwrightLayerVDC::markUsdDirty() {
    dirtyFlags |= kUsdLightsStale;
    usdLights.clear();
    lights.clear();
}

void BeamwrightLayerVDC::collectUsdLights(std::vector<LightLocationData>&) {}

void BeamwrightLayerVDC::markLocationsDirty() {
    dirtyFlags |= kLocationLightsStale;
    locationLights.clear();
    lights.clear();
}

void BeamwrightLayerVDC::removeLocation(const std::string& path) {
    LocationNode* const node = lightSceneTree.find(path);
    if (node == nullptr) return;
    if (node->parent != nullptr) {
        // Siblings do not keep their order: the last one takes the removed one's place.
        std::vector<LocationNode*>& siblings = node->parent->children;
        const auto entry = std::find(siblings.begin(), siblings.end(), node);
        std::iter_swap(entry, siblings.end() - 1);
        siblings.pop_back();
    }
    lightSceneTree.removeSubtree(node);
    markLocationsDirty();
}

void BeamwrightLayerVDC::refreshSubtree(LocationNode* top) {
    const auto delegate = getViewerDelegate();
    for (LocationNode& node : lightSceneTree.walk(top)) {
        node.data.worldMatrix = delegate->getWorldTransform(*node.path, kCurrentTransform);
        updateLightLocationData(node.data);
    }
}

void BeamwrightLayerVDC::collectLocationLights() {
    locationLights.clear();
    const LightSceneTree& tree = lightSceneTree;
    // An unlisted location does not hide what lies below it.
    for (const LocationNode& node : tree.walk(tree.find(kRootPath))) {
        const LightLocationData& data = node.data;
        if (!data.excluded && data.isLight && data.showHandle) locationLights.push_back(&data);
    }
}
