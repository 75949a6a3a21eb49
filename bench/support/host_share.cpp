#include "bench/support/host_share.h"

#include <algorithm>
#include <array>
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

struct HostCallScope {
    HostCallScope() { ++hostDepth; }
    ~HostCallScope() { --hostDepth; }
};

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

}  // namespace bench
