// SampleAccessor over every layout of the host's sample blocks: one sample in
// the caller's inline buffer, contiguous values on the heap, one pointer per
// sample; float, double and text values, asked for as their own type or
// another; no sample, no value, several samples at any times, NaN among
// them, any requested time. Oracle: the chosen sample is the first nearest
// the time (a NaN time at the first sample keeps the first), its values are
// the attribute's, and every block that must be given back is.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame/sample_accessor.h"
#include "frame/viewport_layer_plugin_base.h"
#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "host/core/attribute_model.h"
#include "host/core/sample_blocks.h"
#include "host/viewer/viewer_tables.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "sample accessor: %s\n", what);
    std::abort();
}

/// The first index of the least distance to `time` among the samples whose
/// distance is a number; the first index when its own distance is not one.
std::size_t expectedSample(const std::vector<float>& times, float time) {
    if (std::isnan(std::fabs(times[0] - time))) return 0;
    std::size_t best = 0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const float distance = std::fabs(times[i] - time);
        if (!std::isnan(distance) && distance < std::fabs(times[best] - time)) best = i;
    }
    return best;
}

template <typename T>
bool sameValue(const T& read, const T& held) {
    return std::memcmp(&read, &held, sizeof(T)) == 0;
}
// Texts cross as NUL-terminated characters: what follows a NUL is not read.
bool sameValue(const char* read, const std::string& held) {
    return std::strcmp(read, held.c_str()) == 0;
}
bool sameValue(float read, float held) { return sameValue<float>(read, held); }
bool sameValue(double read, double held) { return sameValue<double>(read, held); }

template <typename T, typename Held>
void check(const SampleAccessor<T>& accessor, const sorrel::AttrNode& node, int typeCode,
           const std::vector<std::vector<Held>>& samples, float time) {
    if (node.type != typeCode || node.times.empty()) {
        if (!accessor.empty() || accessor.size() != 0) fail("values of nothing");
        return;
    }
    const std::vector<Held>& chosen = samples[expectedSample(node.times, time)];
    // A sample without values may leave no values pointer at all.
    if (accessor.size() != static_cast<std::int64_t>(chosen.size()))
        fail("not the chosen sample's count");
    for (std::size_t i = 0; i < chosen.size(); ++i)
        if (!sameValue(accessor[static_cast<std::int64_t>(i)], chosen[i]))
            fail("not the chosen sample's values");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    ViewportLayerPluginBase::setHost(reinterpret_cast<PluginHost*>(sorrel::viewerHostRecord()));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        fuzzing::FuzzedValues in(data, size);
        sorrel::SampleBlocks::instance().setPolicy({/* contiguous = */ in.flip(),
                                                    /* useInlineBuffer = */ in.flip()});
        const sorrel::AttrRef held = in.attribute(0);
        const float time = in.flip() ? 0.0f : in.realFloat();
        if (held) {
            const sorrel::AttrNode& node = sorrel::AttributeModel::instance().read(held.get());
            const Attribute attribute = Attribute::share(held.get());
            switch (in.inRange(0, 2)) {
                case 0:
                    check(SampleAccessor<float>(attribute, time), node, kFloatType, node.floats,
                          time);
                    break;
                case 1:
                    check(SampleAccessor<double>(attribute, time), node, kDoubleType, node.doubles,
                          time);
                    break;
                default:
                    check(SampleAccessor<const char*>(Attribute(attribute), time), node,
                          kStringType, node.strings, time);
            }
        }
        sorrel::SampleBlocks::instance().setPolicy({});
    }
    fuzzing::expectBalanced(before);
    return 0;
}
