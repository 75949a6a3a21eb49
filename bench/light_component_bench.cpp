// BeamwrightLayerVDC fed by the host's viewer delegate, each figure beside a
// floor measured in the same run: the same paths inserted into a plain
// unordered map, or the same number of entries walked. "ratio" is component
// time over floor time.

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/support/seconds_of.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_plugin_base.h"
#include "host/core/names.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewer_tables.h"
#include "scene/light_component.h"
#include "tests/support/light_attributes.h"

using namespace Tessera::Sorrel::ViewerAPI;

using bench::secondsOf;

namespace {

constexpr std::size_t kChildrenPerLocation = 8;
constexpr std::size_t kLocationsPerLight = 10;
constexpr std::size_t kMovedGroupSize = 10000;
constexpr double kNanosecondsPerSecond = 1e9;
constexpr double kMicrosecondsPerSecond = 1e6;
constexpr int kIngestIterations = 5;

using FloorMap = std::unordered_map<std::string, LightLocationData>;

void attachHost() {
    static const bool attached = [] {
        sorrel::PluginHost::instance().allowAll();
        auto* const record = reinterpret_cast<PluginHost*>(sorrel::viewerHostRecord());
        ViewportLayerPluginBase::setHost(record);
        ViewerDelegateComponentPluginBase::setHost(record);
        return true;
    }();
    static_cast<void>(attached);
}

/// `top` and its descendants, level by level, so that parents come first.
std::vector<std::string> makePaths(const std::string& top, std::size_t count) {
    std::vector<std::string> paths{top};
    for (std::size_t parent = 0; paths.size() < count; ++parent)
        for (std::size_t child = 0; child < kChildrenPerLocation && paths.size() < count; ++child)
            paths.push_back(paths[parent] + "/n" + std::to_string(child));
    return paths;
}

/// A host scene of `paths`, every tenth a light, each moved a little from its parent.
void fillScene(sorrel::Scene& scene, const std::vector<std::string>& paths) {
    const sorrel::AttrRef light = testing_support::lightAttributes(/* distance = */ 5.0);
    const sorrel::AttrRef group = testing_support::groupAttributes();
    for (std::size_t i = 0; i < paths.size(); ++i)
        scene.set(paths[i], i % kLocationsPerLight == 0 ? light : group,
                  sorrel::translationMatrix(1.0, 0.0, 0.5));
}

/// The host's viewer delegate with one BeamwrightLayerVDC made through its entry table.
class Viewer {
public:
    Viewer() {
        attachHost();
        delegate.addComponent(sorrel::names::kLightComponent,
                              reinterpret_cast<void* const*>(&suite()));
    }
    ~Viewer() { delegate.removeComponents(); }

    /// Reports a location as a host reports a new one.
    void report(const std::string& path) {
        const sorrel::Location* location = delegate.scene().find(path);
        entries().locationEvent(path, location->attributes, sorrel::AttrRef(),
                                sorrel::LocationFlags::kAttributesChanged);
    }
    sorrel::ComponentObject& entries() {
        return *delegate.component(sorrel::names::kLightComponent);
    }
    BeamwrightLayerVDC& component() {
        auto* const handle = static_cast<PluginObjectHandle*>(entries().handle());
        return dynamic_cast<BeamwrightLayerVDC&>(pluginObject<ViewerDelegateComponent>(handle));
    }

    sorrel::ViewerDelegate delegate;

private:
    static const ViewerDelegateComponentPluginSuite& suite() {
        static const ViewerDelegateComponentPluginSuite table =
            buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
        return table;
    }
};

void report(benchmark::State& state, double seconds, double floorSeconds, std::size_t items) {
    const double perIteration = 1.0 / static_cast<double>(state.iterations());
    state.counters["ns_per_item"] =
        seconds * kNanosecondsPerSecond * perIteration / static_cast<double>(items);
    state.counters["floor_us"] = floorSeconds * kMicrosecondsPerSecond * perIteration;
    state.counters["ratio"] = seconds / floorSeconds;
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(items));
}

/// Walks every entry of the floor map, as a walk of the tree touches every record.
double floorWalk(const FloorMap& floor) {
    return secondsOf([&] {
        for (const auto& entry : floor)
            benchmark::DoNotOptimize(entry.second.worldMatrix.data()[0]);
    });
}

FloorMap floorOf(const std::vector<std::string>& paths) {
    FloorMap floor;
    for (const std::string& path : paths) floor.try_emplace(path);
    return floor;
}

/// New locations reported one by one, parents first; ns_per_item is per event.
void ingestLocationEvents(benchmark::State& state) {
    const std::vector<std::string> paths =
        makePaths("/root", static_cast<std::size_t>(state.range(0)));
    double seconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        Viewer viewer;
        fillScene(viewer.delegate.scene(), paths);
        const double time = secondsOf([&] {
            for (const std::string& path : paths) viewer.report(path);
        });
        FloorMap floor;
        floorSeconds += secondsOf([&] {
            for (const std::string& path : paths) benchmark::DoNotOptimize(floor.try_emplace(path));
        });
        seconds += time;
        state.SetIterationTime(time);
    }
    report(state, seconds, floorSeconds, paths.size());
}

/// One light's attributes change, then the list is read: one walk of the tree.
void getLightsAfterOneChange(benchmark::State& state) {
    const std::vector<std::string> paths =
        makePaths("/root", static_cast<std::size_t>(state.range(0)));
    Viewer viewer;
    fillScene(viewer.delegate.scene(), paths);
    for (const std::string& path : paths) viewer.report(path);
    const FloorMap floor = floorOf(paths);
    BeamwrightLayerVDC& component = viewer.component();
    double seconds = 0.0;
    double floorSeconds = 0.0;
    for (auto _ : state) {
        viewer.report(paths[kLocationsPerLight]);
        const double time =
            secondsOf([&] { benchmark::DoNotOptimize(component.getLights().data()); });
        floorSeconds += floorWalk(floor);
        seconds += time;
        state.SetIterationTime(time);
    }
    state.counters["lights"] = static_cast<double>(component.getLights().size());
    report(state, seconds, floorSeconds, paths.size());
}

/// A group of kMovedGroupSize locations moved by the host, which reports the group
/// only; the component asks for every world transform below it. "host_ratio" sets
/// the time beside the host composing the same world transforms by itself.
void refreshMovedGroup(benchmark::State& state) {
    std::vector<std::string> paths = makePaths("/root/group", kMovedGroupSize);
    Viewer viewer;
    viewer.delegate.scene().set("/root", testing_support::groupAttributes());
    viewer.report("/root");
    fillScene(viewer.delegate.scene(), paths);
    for (const std::string& path : paths) viewer.report(path);
    const FloorMap floor = floorOf(paths);
    double seconds = 0.0;
    double floorSeconds = 0.0;
    double hostSeconds = 0.0;
    double offset = 0.0;
    for (auto _ : state) {
        offset += 1.0;
        const sorrel::Matrix moved = sorrel::translationMatrix(offset, 0.0, 0.0);
        const double time = secondsOf([&] { viewer.delegate.moveLocation("/root/group", moved); });
        floorSeconds += floorWalk(floor);
        hostSeconds += secondsOf([&] {
            for (const std::string& path : paths)
                benchmark::DoNotOptimize(viewer.delegate.scene().worldTransform(path));
        });
        seconds += time;
        state.SetIterationTime(time);
    }
    state.counters["host_ratio"] = seconds / hostSeconds;
    report(state, seconds, floorSeconds, paths.size());
}

BENCHMARK(ingestLocationEvents)
    ->Arg(10000)
    ->Arg(100000)
    ->Iterations(kIngestIterations)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(getLightsAfterOneChange)
    ->Arg(10000)
    ->Arg(100000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(refreshMovedGroup)->UseManualTime()->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
