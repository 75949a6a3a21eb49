// Both layers' setOption and getOption entries, with every option name that
// the plugin and its siblings know, identifiers that nobody made, and values
// of every type and shape. The placement layer hands every option on to the
// handles layer and tells the selection layer of its mode. The layers are
// created as a host creates them and not set up, which a host may do before
// it sets options.

#include <cstddef>
#include <cstdint>

#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "fuzz/loaded_plugin.h"
#include "host/core/names.h"
#include "host/viewer_stage.h"

namespace {

constexpr std::int32_t kViewportSize = 64;  // pixels, both sides
constexpr int kMostOptions = 64;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::loadPlugin();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using sorrel::names::kHandlesLayer;
    using sorrel::names::kPlacementLayer;
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        fuzzing::FuzzedValues in(data, size);
        sorrel::ViewerStage stage(kViewportSize, kViewportSize, {0, 0, 8}, {0, 0, 0});
        sorrel::Viewport& viewport = stage.viewport();
        const sorrel::LayerObject& handles =
            viewport.addPluginLayer(kHandlesLayer, fuzzing::suiteOf(kHandlesLayer));
        const sorrel::LayerObject& placement =
            viewport.addPluginLayer(kPlacementLayer, fuzzing::suiteOf(kPlacementLayer));

        for (int option = 0; option < kMostOptions && !in.exhausted(); ++option) {
            const sorrel::LayerObject& layer = in.flip() ? handles : placement;
            if (in.inRange(0, 15) == 0) {
                const std::uint64_t id = in.any<std::uint64_t>();
                if (in.flip())
                    layer.setOption(id, in.attribute());
                else
                    layer.getOption(id);
                continue;
            }
            const std::string name = in.pick(fuzzing::kOptionNames);
            if (in.inRange(0, 3) == 0)
                layer.getOption(name);
            else
                layer.setOption(name, in.optionValue(name));
        }
        viewport.removePluginLayer(kPlacementLayer);
        viewport.removePluginLayer(kHandlesLayer);
    }
    fuzzing::expectBalanced(before);
    return 0;
}
