// The layer entry table: what reaches the class, and who owns each reference.

#include <gtest/gtest.h>

#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer.h"
#include "frame/viewport_layer_suite.h"
#include "host/core/plugin_objects.h"
#include "tests/support/quiet_layer.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;

namespace {

/// Records what the entries hand over and answers picks as told.
class EntryProbe : public testing_support::QuietLayer {
public:
    bool event(const GroupAttribute&) override { return ++events > 0; }
    void stateChanged(bool state, void*) override { lastState = state; }
    void pickerDraw(std::int32_t, std::int32_t, std::int32_t, std::int32_t,
                    const PickedAttrsMap& excluded) override {
        pickerMapSize = static_cast<int>(excluded.size());
    }
    bool pick(std::int32_t, std::int32_t, std::int32_t, std::int32_t, bool, PickedAttrsMap& picked,
              float*) override {
        if (pickAnswer) picked[9] = IntAttribute::create(9);
        return pickResult;
    }

    int events = 0;
    bool lastState = false;
    int pickerMapSize = -1;
    bool pickResult = false;
    bool pickAnswer = false;
};

class LayerEntries : public testing_support::UnitTest {
protected:
    EntryProbe& probe() {
        return static_cast<EntryProbe&>(
            pluginObject<ViewportLayer>(static_cast<PluginObjectHandle*>(layer.handle())));
    }
    const ViewportLayerPluginSuite suite =
        buildViewportLayerSuite(&ViewportLayer::create<EntryProbe>);
    int token = 0;
    sorrel::LayerObject layer{reinterpret_cast<void* const*>(&suite), &token};
};

TEST_F(LayerEntries, OnlyGroupEventsReachTheClassAndOptionsAreGivenOver) {
    EXPECT_FALSE(layer.event(sorrel::stringAttr("MouseMove")));
    EXPECT_FALSE(layer.event(AttrRef()));
    EXPECT_EQ(probe().events, 0);
    EXPECT_TRUE(layer.event(sorrel::groupAttr({})));
    EXPECT_EQ(probe().events, 1);

    layer.stateChanged(2);
    EXPECT_TRUE(probe().lastState) << "any byte but 0 is true";
    layer.stateChanged(0);
    EXPECT_FALSE(probe().lastState);

    layer.setOption(1, sorrel::stringAttr("dropped by the class"));
    EXPECT_FALSE(layer.getOption(1));
}

TEST_F(LayerEntries, PickingLendsItsGroupAndHandsTheAnswerOverOnlyOnSuccess) {
    layer.pickerDraw(0, 0, 1, 1, AttrRef());
    EXPECT_EQ(probe().pickerMapSize, 0) << "a null group arrives as an empty map";
    layer.pickerDraw(0, 0, 1, 1, sorrel::groupAttr({{"4", sorrel::intAttr(1)}}));
    EXPECT_EQ(probe().pickerMapSize, 1);

    AttrRef out = sorrel::stringAttr("kept");
    float depth = 0.0f;
    EXPECT_FALSE(layer.pick(0, 0, 1, 1, true, out, &depth));
    EXPECT_EQ(out.stringValue(), "kept");
    probe().pickResult = true;
    EXPECT_TRUE(layer.pick(0, 0, 1, 1, true, out, &depth));
    EXPECT_FALSE(out) << "an empty map is handed over as the null handle";
    probe().pickAnswer = true;
    EXPECT_TRUE(layer.pick(0, 0, 1, 1, false, out, &depth));
    EXPECT_EQ(out.child("9").intValue(), 9);
}

}  // namespace
