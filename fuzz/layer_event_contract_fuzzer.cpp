// Both layers' event entry, with events of every shape: the kinds the plugin
// knows and others, coordinates far outside the viewport, any buttons and
// modifiers, children missing or of another type, no group at all. The host
// answers each pick of the hover search with whatever it likes (hits named
// by any text, values of any type, a depth or none), and its snapping layer,
// manipulator and package commands do their real work on a scene with a
// floor and selected lights. Options and selections change between events.
// A layer of another library lies among the plugin's.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "fuzz/loaded_plugin.h"
#include "host/core/names.h"
#include "host/core/plugin_library.h"
#include "host/viewer/foreign_objects.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer_stage.h"

namespace {

using fuzzing::FuzzedValues;
using sorrel::AttrRef;

constexpr std::int32_t kViewportSize = 64;  // pixels, both sides
constexpr int kMostSteps = 48;
const std::vector<std::string> kLights = {"/root/world/lgt/key", "/root/world/lgt/fill",
                                          "/root/world/lgt/rim"};

/// Puts a floor, light groups and lights into the stage's scene and selects some.
void furnish(sorrel::ViewerStage& stage, FuzzedValues& in) {
    stage.scene().meshes().emplace("floor", sorrel::Mesh::plane(20, 20, 4));
    sorrel::ViewerDelegate& delegate = stage.delegate();
    delegate.putLightRoots();
    for (const std::string& light : kLights)
        delegate.putLocation(light, in.locationAttributes(), in.matrix());
    std::vector<std::string> selected;
    for (const std::string& light : kLights)
        if (in.flip()) selected.push_back(light);
    stage.select(selected);
}

/// What the host answers when a layer asks what lies under the pointer.
AttrRef pickAnswer(FuzzedValues& in, float* depth) {
    if (in.flip()) *depth = in.flip() ? in.realFloat() : in.inRange(0, 100) / 100.0f;
    if (in.inRange(0, 3) == 0) return in.attribute();
    std::vector<std::pair<std::string, AttrRef>> hits;
    const int count = in.inRange(0, 3);
    for (int i = 0; i < count; ++i) {
        AttrRef hit = in.flip() ? sorrel::groupAttr({{sorrel::names::kPickedLocation,
                                                      sorrel::stringAttr(in.path())}})
                                : in.attribute();
        if (!hit) continue;
        hits.emplace_back(in.flip() ? std::to_string(in.inRange(0, 99)) : in.text(),
                          std::move(hit));
    }
    return sorrel::groupAttr(std::move(hits));
}

const sorrel::PluginLibrary& plugin() {
    static const sorrel::PluginLibrary library(BEAMWRIGHT_PLUGIN_PATH);
    return library;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::loadPlugin();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Setup and cleanup of the handles layer need a current context.
    static const sorrel::GLContext gl(kViewportSize, kViewportSize);
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        FuzzedValues in(data, size);
        sorrel::ViewerStage stage(kViewportSize, kViewportSize, {2, 9, 12}, {0, 0, 0}, &plugin());
        stage.viewport().addPluginLayer("OtherLibraryLayer", sorrel::foreignLayerSuite());
        furnish(stage, in);
        stage.viewport().setPickHandler([&in](const std::string&, std::int32_t, std::int32_t,
                                              std::int32_t, std::int32_t, bool,
                                              float* depth) { return pickAnswer(in, depth); });
        sorrel::LayerObject& handles = *stage.viewport().pluginLayer(sorrel::names::kHandlesLayer);
        sorrel::LayerObject& placement =
            *stage.viewport().pluginLayer(sorrel::names::kPlacementLayer);
        placement.setOption(sorrel::names::kEnabled, sorrel::intAttr(1));

        for (int step = 0; step < kMostSteps && !in.exhausted(); ++step) {
            switch (in.inRange(0, 9)) {
                case 0: {
                    const std::string& option = in.pick(fuzzing::kOptionNames);
                    (in.flip() ? handles : placement).setOption(option, in.optionValue(option));
                    break;
                }
                case 1: {
                    std::vector<std::string> selected;
                    for (const std::string& light : kLights)
                        if (in.flip()) selected.push_back(light);
                    stage.select(selected);
                    break;
                }
                default:
                    (in.flip() ? handles : placement).event(in.event(kViewportSize, kViewportSize));
            }
        }
        stage.viewport().setPickHandler(nullptr);
    }
    fuzzing::expectBalanced(before);
    return 0;
}
