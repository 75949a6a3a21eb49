// The plugin table, setHost and object life, seen from the host through the binary contract.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/core/names.h"
#include "host/core/plugin_objects.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;
using testing_support::plugin;

namespace {

using Requests = std::vector<std::string>;

class PluginEntry : public testing_support::PluginContractTest {
protected:
    /// A row's setHost with one host table refused; requests() then holds what it asked for.
    static int setHostRefusing(const PluginRowView& row, const char* table) {
        PluginHost& host = PluginHost::instance();
        host.refuse(table);
        host.clearRequests();
        const int status = row.setHost(viewerHostRecord());
        host.allowAll();
        return status;
    }
};

TEST_F(PluginEntry, TableHoldsThreeRowsRebuiltOnEveryCall) {
    const char* const names[] = {sorrel::names::kHandlesLayer, sorrel::names::kPlacementLayer,
                                 sorrel::names::kLightComponent};
    const char* const layer = "ViewportLayerPlugin";
    const char* const apiNames[] = {layer, layer, "ViewerDelegateComponentPlugin"};
    for (int call = 0; call < 2; ++call) {
        unsigned int count = 0;
        const auto rows = plugin().getPlugins(&count);
        ASSERT_EQ(count, 3u) << "call " << call;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(rows[i].name, names[i]);
            EXPECT_EQ(rows[i].apiName, apiNames[i]);
            EXPECT_EQ(rows[i].apiVersion, 2u);
            EXPECT_EQ(rows[i].pluginVersionMajor, 0u);
            EXPECT_EQ(rows[i].pluginVersionMinor, 1u);
            EXPECT_EQ(rows[i].getSuite(), rows[i].getSuite()) << "same static table each call";
            rows[i].flush();
        }
    }

    // A row appended from outside grows the table in place, until the next rebuild.
    PluginRowView outside = plugin().getPlugins()[2];
    outside.name = "OutsideComponent";
    plugin().registerPlugin(outside);
    const PluginRowView appended = readPluginRow(
        static_cast<const char*>(plugin().getPlugins()[0].address) + 3 * kPluginRowSize);
    EXPECT_EQ(appended.name, "OutsideComponent");
    EXPECT_EQ(plugin().getPlugins().size(), 3u);
}

TEST_F(PluginEntry, SetHostFetchesTablesInOrderAndReportsFailures) {
    const auto rows = plugin().getPlugins();
    PluginHost& host = PluginHost::instance();
    EXPECT_EQ(rows[0].setHost(viewerHostRecord()), 0);
    EXPECT_EQ(host.requests(), (Requests{"PluginManager 1", "OptionIdGeneratorHost 1", "Logging 1",
                                         "Logging 1", "AttributeHost 5", "AttributeHost 5"}));
    host.clearRequests();
    EXPECT_EQ(rows[2].setHost(nullptr), -1);
    EXPECT_TRUE(host.requests().empty()) << "a null host is refused without a call";

    EXPECT_EQ(setHostRefusing(rows[0], "OptionIdGeneratorHost"), 0) << "not reported";
    EXPECT_EQ(setHostRefusing(rows[2], "Logging"), -1);
    EXPECT_EQ(host.requests().back(), "Logging 1") << "tables after the failure stay unfetched";
    EXPECT_EQ(setHostRefusing(rows[1], "PluginManager"), -1);
    EXPECT_EQ(host.requests(), Requests{"PluginManager 1"});
    EXPECT_EQ(setHostRefusing(rows[0], "AttributeHost"), -1);
}

TEST_F(PluginEntry, CreateFetchesTheObjectTableAndDestroyReleasesIt) {
    PluginHost& host = PluginHost::instance();
    int token = 0;
    for (const auto& row : plugin().getPlugins()) {
        host.clearRequests();
        void* const* suite = row.getSuite();
        if (row.apiName == "ViewportLayerPlugin") {
            LayerObject first(suite, &token);
            LayerObject second(suite, &token);
            EXPECT_FALSE(first.layerFlag());
            EXPECT_EQ(host.requests(), (Requests{"ViewportLayerHost 2", "ViewportLayerHost 2"}));
        } else {
            ComponentObject component(suite, &token);
            EXPECT_EQ(component.marker(), 0x0F01111D47000001ull);
            EXPECT_EQ(host.requests(), Requests{"ViewerDelegateComponentHost 2"});
        }
        // destroy(null) is harmless for every class.
        entryAt<void (*)(void*)>(suite, 1)(nullptr);
    }
}

TEST_F(PluginEntry, ComponentEntriesCopyEventsAndSelectionsAndKeepTheReferenceRules) {
    // Every flag bit, a wrongly typed transform and a null attribute group.
    int token = 0;
    const ComponentObject component(suiteOf(sorrel::names::kLightComponent), &token);
    const AttrRef light = groupAttr({{"type", stringAttr("light")}});
    component.locationEvent("/root/world/lgt/a", light, stringAttr("not a transform"), 0xFFFFFFFFu);
    component.locationEvent("/root/world/lgt/b", AttrRef(), AttrRef(), 0);
    component.locationsSelected({});
    component.usdLocationsSelected({"/a", "/b"});
    EXPECT_FALSE(component.queryFlag());
    EXPECT_FALSE(component.attributeQueryA("anything"));
    EXPECT_FALSE(component.attributeQueryB("anything"));
    EXPECT_FALSE(component.getOption(1));
    component.setOption(1, intAttr(1));
}

}  // namespace
