#include "host/viewer/host_layer.h"

#include "host/core/suite_table.h"

namespace sorrel {

namespace {

HostLayer& layerOf(void* pluginHandle) {
    return *static_cast<HostLayer*>(static_cast<HostObjectRecord*>(pluginHandle)->object);
}

void setOptionEntry(void* pluginHandle, std::uint64_t id, void* givenOver) {
    layerOf(pluginHandle).setOption(id, AttrRef(static_cast<AttrHandle>(givenOver)));
}

void* getOptionEntry(void* pluginHandle, std::uint64_t id) {
    return layerOf(pluginHandle).getOption(id).release();
}

// Other plugins reach a host layer only through its options.
const SuiteTable& hostLayerSuite() {
    static const SuiteTable table = [] {
        SuiteTable t("host ViewportLayerPlugin");
        t.set(10, &setOptionEntry).set(11, &getOptionEntry);
        return t;
    }();
    return table;
}

}  // namespace

void* const* HostLayer::suite() { return hostLayerSuite().data(); }

}  // namespace sorrel
