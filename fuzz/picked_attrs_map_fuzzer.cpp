// The picked-attributes map at the layer's boundary, both ways. The picker
// pass entry fills a map from whatever group the host lends (children named
// by any text, names repeated, values of any type, no group at all) and the
// caller keeps its reference. The pick entry turns the map that the layer
// filled into a group, the null attribute for an empty map, or leaves the
// caller's pointer alone when the layer picked nothing. Oracle: a group the
// pick entry made fills the very map back; the references balance.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "frame/picked_attrs_map.h"
#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer.h"
#include "frame/viewport_layer_suite.h"
#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "host/viewer/viewer_tables.h"
#include "tests/support/quiet_layer.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

constexpr int kMostSteps = 16;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "picked attributes map: %s\n", what);
    std::abort();
}

/// A layer whose picker pass keeps the map it was given and whose pick
/// answers with the map it is told to.
class MapProbe : public testing_support::QuietLayer {
public:
    void pickerDraw(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                    const PickedAttrsMap& picked) override {
        drawn = picked;
    }
    bool pick(std::int32_t, std::int32_t, std::int32_t, std::int32_t, bool, PickedAttrsMap& picked,
              float*) override {
        picked = answer;
        return answers;
    }

    PickedAttrsMap drawn;
    PickedAttrsMap answer;
    bool answers = false;
};

using PickerDraw = void (*)(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t, void*);
using Pick = std::int32_t (*)(void*, std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                              std::int32_t, void**, float*);

bool sameEntries(const PickedAttrsMap& a, const PickedAttrsMap& b) {
    if (a.size() != b.size()) return false;
    for (auto i = a.begin(), j = b.begin(); i != a.end(); ++i, ++j)
        if (i->first != j->first || i->second.handle() != j->second.handle()) return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ViewportLayerPluginBase::setHost(reinterpret_cast<PluginHost*>(sorrel::viewerHostRecord()));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ViewportLayerPluginSuite suite =
        buildViewportLayerSuite(&ViewportLayer::create<MapProbe>);
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        fuzzing::FuzzedValues in(data, size);
        int hostHandle = 0;
        PluginObjectHandle* const layer = suite.create(&hostHandle);
        MapProbe& probe = static_cast<MapProbe&>(pluginObject<ViewportLayer>(layer));
        const auto pickerDraw = reinterpret_cast<PickerDraw>(suite.pickerDraw);
        const auto pick = reinterpret_cast<Pick>(suite.pick);

        for (int step = 0; step < kMostSteps && !in.exhausted(); ++step) {
            if (in.flip()) {
                // The host lends any group; the references stay the host's.
                const sorrel::AttrRef lent = in.attribute(2);
                pickerDraw(layer, 0, 0, 1, 1, lent.get());
                for (const auto& [id, value] : probe.drawn)
                    if (!value.isValid()) fail("a picked value is null");
                continue;
            }
            if (in.flip()) {
                // Children named by numbers, some named twice: the later one stands.
                std::vector<std::pair<std::string, sorrel::AttrRef>> children;
                std::map<std::uint64_t, sorrel::AttrHandle> latest;
                const int count = in.inRange(1, 6);
                for (int i = 0; i < count; ++i) {
                    const std::uint64_t id = in.inRange<std::uint64_t>(0, 3);
                    sorrel::AttrRef value = sorrel::intAttr(i);
                    latest[id] = value.get();
                    children.emplace_back(std::to_string(id), std::move(value));
                }
                const sorrel::AttrRef lent = sorrel::groupAttr(std::move(children));
                pickerDraw(layer, 0, 0, 1, 1, lent.get());
                std::map<std::uint64_t, sorrel::AttrHandle> seen;
                for (const auto& [id, value] : probe.drawn)
                    seen[id] = static_cast<sorrel::AttrHandle>(value.handle());
                if (seen != latest) fail("a repeated number does not keep its later child");
                continue;
            }
            probe.answer.clear();
            const int count = in.inRange(0, 4);
            for (int i = 0; i < count; ++i) {
                const std::uint64_t id =
                    in.flip() ? in.inRange<std::uint64_t>(0, 9) : in.any<std::uint64_t>();
                if (sorrel::AttrRef value = in.attribute(1))
                    probe.answer[id] = Attribute::adopt(value.release());
            }
            probe.answers = in.flip();
            int sentinel = 0;
            void* out = &sentinel;
            float depth = 0.0f;
            const std::int32_t picked = pick(layer, 0, 0, 1, 1, 0, &out, &depth);
            if (picked != (probe.answers ? 1 : 0)) fail("pick reports another answer");
            if (!probe.answers) {
                if (out != &sentinel) fail("an unanswered pick wrote the caller's pointer");
                continue;
            }
            if (probe.answer.empty() != (out == nullptr))
                fail("an empty map is not the null group");
            const sorrel::AttrRef group(static_cast<sorrel::AttrHandle>(out));
            pickerDraw(layer, 0, 0, 1, 1, group.get());
            if (!sameEntries(probe.drawn, probe.answer)) fail("a map does not survive its group");
        }
        probe.drawn.clear();
        probe.answer.clear();
        suite.destroy(layer);
    }
    fuzzing::expectBalanced(before);
    return 0;
}
