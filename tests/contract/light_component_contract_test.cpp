// BeamwrightLayerVDC loaded from Beamwright.so and driven by the host's viewer
// delegate. The host sees the component only through what it asks of the host:
// the references it holds on attributes and the world transforms it queries.
// USD paths and prims are lent for each call and read in place.

#include <gtest/gtest.h>

#include "host/core/names.h"
#include "host/viewer/viewer_delegate.h"
#include "tests/support/light_attributes.h"
#include "tests/support/plugin_fixture.h"
#include "vrt/stage.h"

using namespace sorrel;
using testing_support::groupAttributes;
using testing_support::lightAttributes;

namespace {

class LightComponentContract : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        delegate.addComponent(sorrel::names::kLightComponent,
                              suiteOf(sorrel::names::kLightComponent));
    }
    void TearDown() override {
        delegate.removeComponents();
        delegate.scene() = Scene();
        PluginContractTest::TearDown();
    }

    ComponentObject& component() { return *delegate.component(sorrel::names::kLightComponent); }
    static std::int64_t references() { return AttributeModel::instance().liveReferences(); }

    ViewerDelegate delegate;
};

TEST_F(LightComponentContract, RecordsAreKeptBelowAKnownParentAndReleasedWithTheirSubtree) {
    delegate.scene().set("/root", groupAttributes());
    delegate.scene().set("/root/lgt", lightAttributes(1.0));
    const std::int64_t idle = references();

    delegate.sendLocation("/root/lgt");
    EXPECT_EQ(references(), idle) << "a location before its parent is not kept";
    delegate.sendLocation("/root");
    const std::int64_t withRoot = references();
    delegate.sendLocation("/root/lgt");
    EXPECT_GT(references(), withRoot) << "the repeat after the parent is kept";
    EXPECT_EQ(delegate.transformQueries(), 2u) << "one world transform for each new location";
    delegate.sendRemoval("/root");
    EXPECT_EQ(references(), idle) << "removing the parent releases both records";

    // USD prims are lent for the call and read in place.
    vrt::Stage stage;
    vrt::Prim key = stage.definePrim(vrt::Path("/World/Key"));
    key.applyApi(vrt::Token(sorrel::names::kUsdLightApi));
    EXPECT_FALSE(
        component().usdLocationEvent(/* time = */ 0.0, &key.getPath(), &key, UsdFlags::kPrimAdded));
    delegate.sendUsdSelection({"/World/Key"});
    EXPECT_EQ(references(), idle) << "records are made when a layer asks for the list";
    delegate.sendUsdRemoval(vrt::Path("/World/Key"));
}

}  // namespace
