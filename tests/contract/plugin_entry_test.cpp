// The plugin table, setHost and object life, seen from the host through the binary contract.

#include <gtest/gtest.h>

#include <algorithm>

#include "host/plugin_objects.h"
#include "host/viewer_delegate.h"
#include "host/viewport.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;
using testing_support::plugin;

namespace {

class PluginEntry : public testing_support::PluginContractTest {};

struct ExpectedRow {
    const char* name;
    const char* apiName;
};
constexpr ExpectedRow kRows[] = {
    {"BeamwrightCOIHandlesLayer", "ViewportLayerPlugin"},
    {"BeamwrightLayer", "ViewportLayerPlugin"},
    {"BeamwrightLayerVDC", "ViewerDelegateComponentPlugin"},
};

bool requested(const std::string& table) {
    const auto& requests = PluginHost::instance().requests();
    return std::find(requests.begin(), requests.end(), table) != requests.end();
}

TEST_F(PluginEntry, TableHoldsThreeRowsRebuiltOnEveryCall) {
    for (int call = 0; call < 3; ++call) {
        unsigned int count = 0;
        const auto rows = plugin().getPlugins(&count);
        ASSERT_EQ(count, 3u) << "call " << call;
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(rows[i].name, kRows[i].name);
            EXPECT_EQ(rows[i].apiName, kRows[i].apiName);
            EXPECT_EQ(rows[i].apiVersion, 2u);
            EXPECT_EQ(rows[i].pluginVersionMajor, 0u);
            EXPECT_EQ(rows[i].pluginVersionMinor, 1u);
            EXPECT_EQ(rows[i].getSuite(), rows[i].getSuite()) << "same static table each call";
            rows[i].flush();
        }
        // Both layer kinds share setHost; the component has its own.
        EXPECT_EQ(rows[0].setHost, rows[1].setHost);
        EXPECT_NE(rows[0].setHost, rows[2].setHost);
        EXPECT_NE(rows[0].getSuite(), rows[1].getSuite());
        EXPECT_EQ(rows[0].flush, rows[2].flush);
    }
}

TEST_F(PluginEntry, RegisterPluginAppendsUntilRebuilt) {
    unsigned int count = 0;
    const auto rows = plugin().getPlugins(&count);
    PluginRowView outside = rows[2];
    outside.name = "OutsideComponent";
    plugin().registerPlugin(outside);
    // The table grew in place: the fourth row follows the third.
    const PluginRowView appended =
        readPluginRow(static_cast<const char*>(rows[0].address) + 3 * kPluginRowSize);
    EXPECT_EQ(appended.name, "OutsideComponent");
    EXPECT_EQ(plugin().getPlugins().size(), 3u);
}

TEST_F(PluginEntry, SetHostFetchesTablesInOrderAndReportsFailures) {
    const auto rows = plugin().getPlugins();
    PluginHost& host = PluginHost::instance();

    host.clearRequests();
    EXPECT_EQ(rows[0].setHost(host.record()), 0);
    const std::vector<std::string> expected = {"PluginManager 1", "OptionIdGeneratorHost 1",
                                               "Logging 1",       "Logging 1",
                                               "AttributeHost 5", "AttributeHost 5"};
    EXPECT_EQ(host.requests(), expected);

    host.clearRequests();
    EXPECT_EQ(rows[2].setHost(nullptr), -1);
    EXPECT_TRUE(host.requests().empty()) << "a null host is refused without a call";

    host.refuse("OptionIdGeneratorHost");
    EXPECT_EQ(rows[0].setHost(host.record()), 0) << "a missing generator is not reported";
    host.allowAll();

    host.refuse("Logging");
    host.clearRequests();
    EXPECT_EQ(rows[2].setHost(host.record()), -1);
    EXPECT_FALSE(requested("AttributeHost 5")) << "tables after the failure stay unfetched";
    host.allowAll();

    host.refuse("PluginManager");
    host.clearRequests();
    EXPECT_EQ(rows[1].setHost(host.record()), -1);
    EXPECT_EQ(host.requests(), std::vector<std::string>{"PluginManager 1"});
    host.allowAll();

    host.refuse("AttributeHost");
    EXPECT_EQ(rows[0].setHost(host.record()), -1);
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
            EXPECT_EQ(host.requests(),
                      (std::vector<std::string>{"ViewportLayerHost 2", "ViewportLayerHost 2"}));
        } else {
            ComponentObject component(suite, &token);
            EXPECT_EQ(component.marker(), 0x0F01111D47000001ull);
            EXPECT_EQ(host.requests(), std::vector<std::string>{"ViewerDelegateComponentHost 2"});
        }
        // destroy(null) is harmless for every class.
        entryAt<void (*)(void*)>(suite, 1)(nullptr);
    }
}

TEST_F(PluginEntry, LayerEntriesKeepTheReferenceRules) {
    ViewerDelegate delegate;
    Viewport viewport(delegate, 64, 64);
    const LayerObject& layer = viewport.addPluginLayer("BeamwrightLayer", suiteOf("BeamwrightLayer"));
    // A non-group event is released and reported unused; so is a null one.
    EXPECT_FALSE(layer.event(intAttr(7)));
    EXPECT_FALSE(layer.event(AttrRef()));
    // Options consume the value; an unknown identifier reads as null.
    layer.setOption(0xDEADull, stringAttr("ignored"));
    EXPECT_FALSE(layer.getOption(0xDEADull));
    // Picking borrows its group and a layer that picks nothing leaves the out value alone.
    const AttrRef picking = groupAttr({{"1", intAttr(1)}});
    layer.pickerDraw(0, 0, 10, 10, picking);
    AttrRef out = stringAttr("untouched");
    float depth = 0.0f;
    EXPECT_FALSE(layer.pick(0, 0, 1, 1, true, out, &depth));
    EXPECT_EQ(out.stringValue(), "untouched");
    layer.stateChanged(2);
}

TEST_F(PluginEntry, ComponentEntriesCopyEventsAndSelections) {
    int token = 0;
    const ComponentObject component(suiteOf("BeamwrightLayerVDC"), &token);
    const AttrRef attrs = groupAttr({{"type", stringAttr("light")}});
    // Every flag bit, a wrongly typed transform and a null attribute group.
    component.locationEvent("/root/world/lgt/a", attrs, stringAttr("not a transform"), 0xFFFFFFFFu);
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
