#include "bench/support/host_share.h"

#include <x86intrin.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <map>
#include <string>
#include <utility>

#include "frame/abi/attribute_host_suite.h"
#include "frame/abi/option_id_generator_host_suite.h"
#include "frame/abi/viewer_delegate_component_host_suite.h"
#include "frame/abi/viewer_delegate_host_suite.h"
#include "frame/abi/viewport_camera_host_suite.h"
#include "frame/abi/viewport_host_suite.h"
#include "frame/abi/viewport_layer_host_suite.h"
#include "host/core/suite_table.h"
#include "host/viewer/viewer_tables.h"

namespace bench {

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

using Slots = std::array<void*, sorrel::kMaxSuitePositions>;

/// Depth of host calls under way; more than 0 while the host works.
int hostDepth = 0;

/// The host's time in ticks of the time stamp counter, read at the edges of
/// the outermost call: cheaper than a clock, and the same on every core.
bool timing = false;
std::uint64_t callStart = 0;
std::uint64_t hostTicks = 0;
std::uint64_t hostCalls = 0;
std::uint64_t preemptedCalls = 0;
/// Some ten times the longest call of the host's, far below a time slice.
constexpr double kPreemptedSeconds = 20e-6;
double secondsPerTick();

struct HostCallScope {
    HostCallScope() {
        if (hostDepth++ == 0 && timing) callStart = __rdtsc();
    }
    ~HostCallScope() {
        if (--hostDepth == 0 && timing) {
            const std::uint64_t ticks = __rdtsc() - callStart;
            // A call that took this long lost the processor to another
            // thread meanwhile; its time is not the host's work.
            static const auto preempted =
                static_cast<std::uint64_t>(kPreemptedSeconds / secondsPerTick());
            if (ticks < preempted) {
                hostTicks += ticks;
                ++hostCalls;
            } else {
                ++preemptedCalls;
            }
        }
    }
};

/// Seconds per tick of the time stamp counter, measured once against the clock.
double secondsPerTick() {
    static const double seconds = [] {
        using Clock = std::chrono::steady_clock;
        const auto start = Clock::now();
        const std::uint64_t first = __rdtsc();
        while (Clock::now() - start < std::chrono::milliseconds(20)) {
        }
        const std::uint64_t ticks = __rdtsc() - first;
        return std::chrono::duration<double>(Clock::now() - start).count() /
               static_cast<double>(ticks);
    }();
    return seconds;
}

/// The host's own table of each layout, as the host answered it.
template <class Suite>
const Suite* realTable = nullptr;

}  // namespace

/// One host function behind a trampoline; the name is what callgrind matches.
template <auto Field>
struct HostEntry;

template <class Suite, class Result, class... Args, Result (*Suite::*Field)(Args...)>
struct HostEntry<Field> {
    static Result call(Args... args) {
        const HostCallScope scope;
        return (realTable<Suite>->*Field)(args...);
    }
};

/// The record's own entry, which asks the host for a table.
struct HostEntryRecord {
    static void* getHostSuite(const char* name, unsigned int version);
};

namespace {

/// A table as handed out, with the host's and the trampolines' contents.
struct SeparableTable {
    Slots handedOut{};
    Slots real{};
    Slots separate{};
};

bool separating = true;

std::map<std::pair<std::string, unsigned int>, SeparableTable>& tables() {
    static auto* const all = new std::map<std::pair<std::string, unsigned int>, SeparableTable>;
    return *all;
}

template <class Suite, auto... Fields>
void putTrampolines(Slots& slots, const void* real) {
    realTable<Suite> = static_cast<const Suite*>(real);
    Suite& table = *reinterpret_cast<Suite*>(slots.data());
    ((table.*Fields = &HostEntry<Fields>::call), ...);
}

/// Puts trampolines at every position the plugin calls in the tables it knows.
void separate(const std::string& name, Slots& slots, const void* real) {
    using A = AttributeHostSuite;
    using V = ViewportHostSuite;
    if (name == "AttributeHost") {
        putTrampolines<A, &A::getType, &A::retainAttr, &A::releaseAttr, &A::getHash, &A::createInt,
                       &A::createDouble, &A::createString, &A::createGroup, &A::getNumberOfChildren,
                       &A::getChildNameByIndex, &A::getChildByIndex, &A::getChildByName,
                       &A::createBuilder, &A::releaseBuilder, &A::builderSet, &A::builderBuild,
                       &A::getNearestInt, &A::getNearestDouble, &A::getNearestString,
                       &A::getSampleBlock, &A::releaseSampleBlock, &A::createDoubleSamples>(slots,
                                                                                            real);
    } else if (name == "OptionIdGeneratorHost") {
        using O = OptionIdGeneratorHostSuite;
        putTrampolines<O, &O::getGenerator, &O::generateId>(slots, real);
    } else if (name == "ViewportLayerHost") {
        using L = ViewportLayerHostSuite;
        putTrampolines<L, &L::getViewport, &L::addPickedAttr, &L::pick>(slots, real);
    } else if (name == "ViewportHost") {
        putTrampolines<V, &V::getViewerDelegate, &V::getActiveCamera, &V::getWidth, &V::getHeight,
                       &V::setDirty, &V::getLayerByName, &V::getLayerByIndex, &V::getNumberOfLayers,
                       &V::getViewMatrix, &V::getProjectionMatrix, &V::getManipulator>(slots, real);
    } else if (name == "ViewportCameraHost") {
        using C = ViewportCameraHostSuite;
        putTrampolines<C, &C::getOrigin>(slots, real);
    } else if (name == "ViewerDelegateHost") {
        using D = ViewerDelegateHostSuite;
        putTrampolines<D, &D::getLocationAttributes, &D::getWorldTransform, &D::callMethod,
                       &D::getComponent>(slots, real);
    } else if (name == "ViewerDelegateComponentHost") {
        using D = ViewerDelegateComponentHostSuite;
        putTrampolines<D, &D::getViewerDelegate>(slots, real);
    }
}

}  // namespace

void* HostEntryRecord::getHostSuite(const char* name, unsigned int version) {
    const HostCallScope scope;
    void* const real = sorrel::viewerHostRecord()->getHostSuite(name, version);
    if (real == nullptr) return nullptr;
    const auto key = std::make_pair(std::string(name), version);
    auto found = tables().find(key);
    if (found == tables().end()) {
        SeparableTable& table = tables()[key];
        std::copy_n(static_cast<void* const*>(real), table.real.size(), table.real.begin());
        table.separate = table.real;
        separate(name, table.separate, real);
        table.handedOut = separating ? table.separate : table.real;
        found = tables().find(key);
    }
    return found->second.handedOut.data();
}

PluginHost* separableHostRecord() {
    static PluginHost record{&HostEntryRecord::getHostSuite};
    return &record;
}

void separateHostShare(bool separateShare) {
    separating = separateShare;
    for (auto& entry : tables()) {
        SeparableTable& table = entry.second;
        table.handedOut = separating ? table.separate : table.real;
    }
}

bool insideHost() { return hostDepth > 0; }

void timeHostCalls(bool on) {
    secondsPerTick();
    timing = on;
    hostTicks = 0;
    hostCalls = 0;
    preemptedCalls = 0;
}

HostTime hostTime() {
    return {static_cast<double>(hostTicks) * secondsPerTick(), hostCalls, preemptedCalls};
}

double stampSeconds() { return static_cast<double>(__rdtsc()) * secondsPerTick(); }

namespace {

/// A host function that does nothing, reached straight or through a trampoline.
[[gnu::noinline]] int probeTarget(int value) {
    asm volatile("" : "+r"(value));
    return value;
}
int (*volatile probeStraight)(int) = &probeTarget;

struct HostEntryProbe {
    [[gnu::noinline]] static int call(int value) {
        const HostCallScope scope;
        return probeStraight(value);
    }
};
int (*volatile probeSeparated)(int) = &HostEntryProbe::call;

/// Ticks of `calls` calls through `function`, and the ticks counted inside.
std::pair<std::uint64_t, std::uint64_t> probeTicks(int (*function)(int), int calls) {
    const std::uint64_t insideBefore = hostTicks;
    const std::uint64_t start = __rdtsc();
    int value = 0;
    for (int i = 0; i < calls; ++i) value = function(value);
    const std::uint64_t end = __rdtsc();
    return {end - start, hostTicks - insideBefore};
}

}  // namespace

double countingCost() {
    constexpr int kCalls = 1000;
    constexpr int kTries = 300;
    const bool wasTiming = timing;
    const std::uint64_t ticks = hostTicks;
    const std::uint64_t calls = hostCalls;
    timing = true;
    std::uint64_t straight = ~std::uint64_t{0};
    std::uint64_t inside = ~std::uint64_t{0};
    for (int i = 0; i < kTries; ++i) {
        straight = std::min(straight, probeTicks(probeStraight, kCalls).first);
        inside = std::min(inside, probeTicks(probeSeparated, kCalls).second);
    }
    timing = wasTiming;
    hostTicks = ticks;
    hostCalls = calls;
    // The straight call itself is the host's work, not the counting's.
    const double perCall = secondsPerTick() / kCalls;
    return std::max(static_cast<double>(inside) - static_cast<double>(straight), 0.0) * perCall;
}

}  // namespace bench
