// The component's entries: location events with odd paths, every flag word,
// attributes and transforms of any type and shape; USD location events with
// odd paths and times, prims with or without the light schema and with a
// centre of interest of any value type, any transformation; both selections;
// options and queries. The host's scene answers world transforms, now and
// then missing or of the wrong type, and the lookup of the viewer delegate
// may find nothing.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzzed_values.h"
#include "fuzz/host_counts.h"
#include "fuzz/loaded_plugin.h"
#include "host/core/names.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewer_faults.h"
#include "lqm/mat4.h"
#include "vrt/stage.h"

namespace {

using fuzzing::FuzzedValues;
using sorrel::AttrRef;

constexpr int kMostSteps = 64;
constexpr std::uint32_t kKnownFlags[] = {0x1,     0x2,     0x4,     0x8,      0x10000,
                                         0x20000, 0x40000, 0x80000, 0x100000, 0x10};

std::uint32_t flagWord(FuzzedValues& in) {
    if (in.inRange(0, 3) == 0) return in.any<std::uint32_t>();
    std::uint32_t word = 0;
    for (const std::uint32_t bit : kKnownFlags)
        if (in.inRange(0, 2) == 0) word |= bit;
    return word;
}

std::vector<std::string> paths(FuzzedValues& in) {
    std::vector<std::string> result(in.inRange<std::size_t>(0, 4));
    for (std::string& path : result) path = in.path();
    return result;
}

/// A finite time for a USD sample: a stage's samples are ordered by time.
double sampleTime(FuzzedValues& in) {
    const double time = in.real();
    return std::isfinite(time) ? time : 0.0;
}

vrt::Value usdValue(FuzzedValues& in) {
    switch (in.inRange(0, 4)) {
        case 0:
            return vrt::Value();
        case 1:
            return vrt::Value(in.inRange(-5, 5));
        case 2:
            return vrt::Value(in.realFloat());
        case 3:
            return vrt::Value(in.text());
        default:
            return vrt::Value(in.real());
    }
}

/// Authors the prim at `path` on `stage` as the host's USD layer would.
vrt::Prim authoredPrim(vrt::Stage& stage, const vrt::Path& path, FuzzedValues& in) {
    static const vrt::Token kLightApi(sorrel::names::kUsdLightApi);
    static const vrt::Token kCentreOfInterest(sorrel::names::kUsdCenterOfInterest);
    vrt::Prim prim = stage.definePrim(path);
    if (in.flip())
        prim.applyApi(kLightApi);
    else
        prim.removeApi(kLightApi);
    if (in.flip()) {
        prim.removeAttr(kCentreOfInterest);
        const int samples = in.inRange(0, 3);
        for (int i = 0; i < samples; ++i)
            prim.setAttr(kCentreOfInterest, usdValue(in), sampleTime(in));
    }
    const sorrel::Matrix m = in.matrix();
    prim.setLocalTransformation(lqm::Mat4<double>(m.data()));
    return prim;
}

void sendUsdEvent(const sorrel::ComponentObject& component, vrt::Stage& stage, FuzzedValues& in) {
    constexpr std::uint32_t kAdded = 0x10000;
    constexpr std::uint32_t kChanged = 0x20000;
    constexpr std::uint32_t kRemoved = 0x40000;
    const vrt::Path path(in.path());
    const std::uint32_t flags = flagWord(in);
    const double time = in.real();
    const auto flag = in.any<std::uint8_t>();
    // A removed prim may be gone from the stage; an added or changed one is there.
    const bool mayBeGone = (flags & kRemoved) != 0 || (flags & (kAdded | kChanged)) == 0;
    if (mayBeGone && in.flip()) {
        stage.removePrim(path);
        const vrt::Prim gone;
        component.usdLocationEvent(time, &path, &gone, flags, flag);
        return;
    }
    const vrt::Prim prim = authoredPrim(stage, path, in);
    component.usdLocationEvent(time, &prim.getPath(), &prim, flags, flag);
}

void sendLocationEvent(const sorrel::ComponentObject& component, sorrel::ViewerDelegate& delegate,
                       FuzzedValues& in) {
    const std::string path = in.path();
    const AttrRef attributes = in.locationAttributes();
    // The host's scene answers the world transform of what it holds.
    if (in.flip()) delegate.scene().set(path, attributes, in.matrix());
    const AttrRef transform = in.flip() ? in.attribute(1) : AttrRef();
    component.locationEvent(path, attributes, transform, flagWord(in), in.any<std::uint8_t>());
}

void queryOrSetOption(const sorrel::ComponentObject& component, FuzzedValues& in) {
    switch (in.inRange(0, 3)) {
        case 0:
            component.setOption(in.any<std::uint64_t>(), in.attribute());
            break;
        case 1:
            component.getOption(in.any<std::uint64_t>());
            break;
        case 2:
            component.queryFlag();
            break;
        default:
            (in.flip() ? component.attributeQueryA(in.text())
                       : component.attributeQueryB(in.text()));
    }
}

void changeFaults(FuzzedValues& in) {
    sorrel::ViewerFaults& faults = sorrel::viewerFaults();
    faults.nullLookups.clear();
    if (in.inRange(0, 3) == 0) faults.nullLookups.insert(sorrel::Lookup::kViewerDelegate);
    faults.worldTransform = static_cast<sorrel::WorldTransformAnswer>(in.inRange(0, 2));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    fuzzing::loadPlugin();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzzing::HostCounts before = fuzzing::HostCounts::now();
    {
        FuzzedValues in(data, size);
        if (in.flip()) changeFaults(in);
        sorrel::ViewerDelegate delegate;
        vrt::Stage stage;
        const sorrel::ComponentObject& component = delegate.addComponent(
            sorrel::names::kLightComponent, fuzzing::suiteOf(sorrel::names::kLightComponent));
        for (int step = 0; step < kMostSteps && !in.exhausted(); ++step) {
            switch (in.inRange(0, 9)) {
                case 0:
                    component.locationsSelected(paths(in));
                    break;
                case 1:
                    component.usdLocationsSelected(paths(in));
                    break;
                case 2:
                    queryOrSetOption(component, in);
                    break;
                case 3:
                    changeFaults(in);
                    break;
                case 4:
                case 5:
                case 6:
                    sendUsdEvent(component, stage, in);
                    break;
                default:
                    sendLocationEvent(component, delegate, in);
            }
        }
        delegate.removeComponents();
        sorrel::viewerFaults().clear();
    }
    fuzzing::expectBalanced(before);
    return 0;
}
