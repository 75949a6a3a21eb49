#include "scene/light_component.h"

#include <algorithm>
#include <deque>

#include "frame/viewer_delegate_wrapper.h"
#include "lqm/time.h"
#include "scene/scene_names.h"
#include "vrt/prim.h"
#include "vrt/xform_cache.h"

using namespace Tessera::Sorrel::Names;
using namespace Tessera::Sorrel::ViewerAPI;
using Tessera::Sorrel::ViewerUtils::findOrCreateSceneNode;
using Tessera::Sorrel::ViewerUtils::findSceneNode;
using Tessera::Sorrel::ViewerUtils::removeSceneNode;

namespace {

const std::string kRootPath = kRootLocationPath;
constexpr std::uint32_t kCurrentTransform = 0;

/// A USD light's location is its prim path below this prefix: /World/Key is /usd/World/Key.
const std::string kUsdLocationPrefix = kUsdLocationPathPrefix;
/// vrt's type code of a double value.
constexpr int kDoubleValueType = 25;
/// Distance to the centre of interest of a light whose prim gives none as a double.
constexpr double kDefaultCenterOfInterest = 20.0;

const vrt::Token& lightApi() {
    static const vrt::Token token(kUsdLightApiSchema);
    return token;
}

const vrt::Token& centerOfInterestName() {
    static const vrt::Token token(kUsdCenterOfInterestAttribute);
    return token;
}

/// The prim's transformation relative to its parent at `time`.
lqm::Mat4<double> localTransformation(const vrt::Prim& prim, double time) {
    const vrt::XformCache cache(time);
    // Whether the prim resets the transformation stack is not used: every node
    // stays under its parent.
    bool resetsStack = false;
    return cache.getLocalTransformation(prim, &resetsStack);
}

/// The prim's centre of interest as a double value, or the default distance.
vrt::Value centerOfInterestOf(const vrt::Prim& prim) {
    vrt::Value value;
    const vrt::Attribute attribute = prim.getAttr(centerOfInterestName());
    // Read at the earliest time, not at the event's: the distance is not animated here.
    if (attribute.isValid()) attribute.getValue(value, lqm::earliestTimeValue());
    if (value.getType() != kDoubleValueType) value = vrt::Value(kDefaultCenterOfInterest);
    return value;
}

}  // namespace

BeamwrightLayerVDC::BeamwrightLayerVDC()
    : usdRoot(std::make_shared<SceneNode>(vrt::Path::AbsoluteRootPath())) {}

BeamwrightLayerVDC::~BeamwrightLayerVDC() {
    // Children and parents hold one another: without this the whole USD mirror
    // would outlive the component as a cycle.
    usdRoot->detachChildren();
}

bool BeamwrightLayerVDC::locationEvent(const LocationEvent& event, bool) {
    // The path's one copy: a new node keeps it as its key.
    std::string text(event.locationPath);
    if (event.locationRemoved) {
        removeLocation(text);
        return false;
    }

    // Parents are never made up: a location whose parent is unknown is dropped.
    const auto [node, isNew] = lightSceneTree.findOrAdd(std::move(text));
    if (node != nullptr && !isNew && !event.attributesChanged && !event.transformChanged &&
        !event.stateChanged)
        return false;
    markLocationsDirty();
    if (node == nullptr) return false;
    const std::string& path = *node->path;

    LightLocationData& data = node->data;
    if (isNew || event.attributesChanged || event.stateChanged) {
        data.excluded = event.excluded;
        data.attributes = event.attributes;
    }
    if (isNew || event.transformChanged)
        data.worldMatrix = getViewerDelegate()->getWorldTransform(path, kCurrentTransform);
    if (isNew) {
        // Most scenes load with nothing selected: no hashing of the path then.
        data.selected = !selectedLocations.empty() && selectedLocations.count(path) != 0;
        data.pickerObject = makePickerObject(path);
    }
    updateLightLocationData(data);
    lightSceneTree.recordChanged(node);

    // The host reports the moved location only; what lies below moves with it.
    if (!isNew && event.transformChanged) refreshSubtree(node);
    return false;
}

bool BeamwrightLayerVDC::usdLocationEvent(const UsdLocationEvent& event, bool) {
    const vrt::Path& path = *event.path;
    if (event.primRemoved) {
        if (removeSceneNode(usdRoot, path)) markUsdDirty();
        return false;
    }
    if (!event.primAdded && !event.primChanged) return false;

    SceneNode& node = *findOrCreateSceneNode(usdRoot, path);
    markUsdDirty();
    const vrt::Prim& prim = *event.prim;
    node.setLocalMatrix(localTransformation(prim, event.time), /* ignoresParent = */ false);
    // A prim that loses the API is no light any more; its node stays.
    if (prim.hasApi(lightApi()))
        node.usdAttributes.insert_or_assign(centerOfInterestName(), centerOfInterestOf(prim));
    else
        node.usdAttributes.erase(centerOfInterestName());
    node.setSelected(selectedUsdPaths.count(path) != 0, /* recursive = */ false);
    node.excluded = event.excluded;
    return false;
}

void BeamwrightLayerVDC::locationsSelected(const std::vector<std::string>& locations) {
    selectedLocations.clear();
    selectedLocations.insert(locations.begin(), locations.end());
    for (LocationNode& node : lightSceneTree.walk(lightSceneTree.find(kRootPath)))
        node.data.selected = selectedLocations.count(*node.path) != 0;
}

void BeamwrightLayerVDC::usdLocationsSelected(const std::vector<std::string>& paths) {
    selectedUsdPaths.clear();
    for (const std::string& text : paths) selectedUsdPaths.emplace(text);
    usdRoot->setSelected(false, /* recursive = */ true);
    for (const vrt::Path& path : selectedUsdPaths)
        if (const auto node = findSceneNode(usdRoot, path)) node->setSelected(true, false);
    // Unlike the location side, a record holds a copy of the flag.
    markUsdDirty();
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

void BeamwrightLayerVDC::collectUsdLights(std::vector<LightLocationData>& records) {
    std::deque<std::shared_ptr<SceneNode>> pending{usdRoot};
    while (!pending.empty()) {
        const std::shared_ptr<SceneNode> node = std::move(pending.front());
        pending.pop_front();
        if (!collectUsdLight(*node, records)) continue;
        for (const auto& entry : node->children) pending.push_back(entry.second);
    }
}

bool BeamwrightLayerVDC::collectUsdLight(SceneNode& node, std::vector<LightLocationData>& records) {
    // Unlike the location side, an excluded prim hides its whole subtree.
    if (node.excluded) return false;
    const auto found = node.usdAttributes.find(centerOfInterestName());
    if (found == node.usdAttributes.end()) return true;
    const double distance = found->second.get<double>();

    LightLocationData& record = records.emplace_back();
    record.excluded = false;
    record.pickerObject = makePickerObject(kUsdLocationPrefix + node.path.string());
    record.worldMatrix = node.getWorldMatrix();
    record.isLight = true;
    record.showHandle = true;
    record.selected = node.selected;
    record.pickable = true;
    updateIdentityAndPose(record);
    record.centerOfInterest = record.position + record.direction * distance;
    // A USD light has no colour of its own.
    record.color = kDefaultLightColor;
    return true;
}

void BeamwrightLayerVDC::markLocationsDirty() {
    dirtyFlags |= kLocationLightsStale;
    locationLights.clear();
    lights.clear();
}

void BeamwrightLayerVDC::removeLocation(const std::string& path) {
    LocationNode* const node = lightSceneTree.find(path);
    if (node == nullptr) return;
    // Siblings do not keep their order: the last one takes the removed one's place.
    lightSceneTree.unlinkFromParent(node);
    lightSceneTree.removeSubtree(node);
    markLocationsDirty();
}

void BeamwrightLayerVDC::refreshSubtree(LocationNode* top) {
    const auto delegate = getViewerDelegate();
    for (LocationNode& node : lightSceneTree.walk(top)) {
        node.data.worldMatrix = delegate->getWorldTransform(*node.path, kCurrentTransform);
        updateLightLocationData(node.data);
        lightSceneTree.recordChanged(&node);
    }
}

void BeamwrightLayerVDC::collectLocationLights() {
    locationLights.clear();
    const LocationNode* const root = lightSceneTree.find(kRootPath);
    if (root == nullptr) return;
    lightSceneTree.collectListed(root, locationLights, pendingSlots);
}
