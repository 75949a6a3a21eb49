#include "bench/support/location_scene.h"

#include "bench/support/host_share.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_plugin_base.h"
#include "host/core/names.h"
#include "host/core/plugin_host.h"
#include "host/viewer/viewer_tables.h"
#include "scene/light_component.h"
#include "tests/support/light_attributes.h"

namespace bench {

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

constexpr std::size_t kChildrenPerLocation = 8;
constexpr std::uint8_t kEventFlag = 1;
constexpr double kChildOffset = 0.5;  // world units from the parent, along x and z

const ViewerDelegateComponentPluginSuite& componentSuite() {
    static const ViewerDelegateComponentPluginSuite suite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
    return suite;
}

bool isLight(std::size_t index) { return index % kLocationsPerLight == 0; }

std::size_t parentIndex(std::size_t index) { return (index - 1) / kChildrenPerLocation; }

}  // namespace

std::vector<std::string> makePaths(std::size_t count) {
    std::vector<std::string> paths{"/root"};
    paths.reserve(count);
    for (std::size_t index = 1; index < count; ++index) {
        const std::size_t child = (index - 1) % kChildrenPerLocation;
        paths.push_back(paths[parentIndex(index)] + "/n" + std::to_string(child));
    }
    return paths;
}

LocationScene::LocationScene(const std::vector<std::string>& paths) {
    sorrel::PluginHost::instance().allowAll();
    PluginHost* const record = separableHostRecord();
    ViewportLayerPluginBase::setHost(record);
    ViewerDelegateComponentPluginBase::setHost(record);
    addComponent();

    const sorrel::AttrRef light = testing_support::lightAttributes(/* distance = */ 5.0);
    const sorrel::AttrRef group = testing_support::groupAttributes();
    sorrel::Scene& scene = delegate.scene();
    events.reserve(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        scene.set(paths[i], isLight(i) ? light : group,
                  sorrel::translationMatrix(kChildOffset, 0.0, kChildOffset));
        events.push_back({paths[i].c_str(), scene.find(paths[i])->attributes.get(), nullptr,
                          LocationEventFlag::kAttributesChanged});
    }
}

LocationScene::~LocationScene() { delegate.removeComponents(); }

void LocationScene::addComponent() {
    handle = delegate
                 .addComponent(sorrel::names::kLightComponent,
                               reinterpret_cast<void* const*>(&componentSuite()))
                 .handle();
    locationEvent = componentSuite().locationEvent;
}

void LocationScene::renewComponent() {
    delegate.removeComponents();
    addComponent();
}

void LocationScene::report(const RawLocationEvent& event) const {
    // Through the entry kept, as a host calls it: no look-up counted with the plugin.
    locationEvent(static_cast<PluginObjectHandle*>(handle), &event, kEventFlag);
}

void LocationScene::ingest() const {
    for (const RawLocationEvent& event : events) report(event);
}

void LocationScene::reportChange(std::size_t index) const { report(events.at(index)); }

BeamwrightLayerVDC& LocationScene::component() {
    return dynamic_cast<BeamwrightLayerVDC&>(
        pluginObject<ViewerDelegateComponent>(static_cast<PluginObjectHandle*>(handle)));
}

void IngestFloor::ingest() {
    for (const std::string& path : paths) index.try_emplace(path);
}

WalkFloor::WalkFloor(const std::vector<std::string>& paths) : nodes(paths.size()) {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes[i].isLight = isLight(i);
        nodes[i].showHandle = true;
        if (i > 0) nodes[parentIndex(i)].children.push_back(&nodes[i]);
    }
    pending.reserve(nodes.size());
    lights.reserve(nodes.size());
}

std::size_t WalkFloor::walk() {
    pending.clear();
    lights.clear();
    pending.push_back(&nodes.front());
    for (std::size_t next = 0; next < pending.size(); ++next) {
        const Node* const node = pending[next];
        if (!node->excluded && node->isLight && node->showHandle) lights.push_back(node);
        pending.insert(pending.end(), node->children.begin(), node->children.end());
    }
    return lights.size();
}

}  // namespace bench
