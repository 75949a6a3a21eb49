// USD location events and USD selection reach BeamwrightLayerVDC in Beamwright.so
// with the host's own paths and prims, lent for the call: the component reads
// them in place, answers false, and takes no attribute reference for them.

#include <gtest/gtest.h>

#include "host/matrix.h"
#include "host/viewer_delegate.h"
#include "tests/support/plugin_fixture.h"
#include "vrt/stage.h"

using namespace sorrel;

namespace {

class UsdLightsContract : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        delegate.addComponent("BeamwrightLayerVDC", suiteOf("BeamwrightLayerVDC"));
    }
    void TearDown() override {
        delegate.removeComponents();
        PluginContractTest::TearDown();
    }

    bool send(const vrt::Prim& prim, std::uint32_t flags) {
        return delegate.component("BeamwrightLayerVDC")
            ->usdLocationEvent(/* time = */ 0.0, &prim.getPath(), &prim, flags);
    }

    ViewerDelegate delegate;
    vrt::Stage stage;
};

TEST_F(UsdLightsContract, EventsAndSelectionsReadTheLentPrimsAndHoldNoReference) {
    const std::int64_t idle = AttributeModel::instance().liveReferences();
    vrt::Prim key = stage.definePrim(vrt::Path("/World/Rig/Key"));
    key.applyApi(vrt::Token("SorrelUsdLightAPI"));
    key.setAttr(vrt::Token("centerOfInterest"), vrt::Value(4.0));
    key.setLocalTransformation(lqm::Mat4<double>(translationMatrix(0, 2, 0)));
    const vrt::Prim rig = stage.definePrim(vrt::Path("/World/Rig"));

    EXPECT_FALSE(send(key, UsdFlags::kPrimAdded));
    EXPECT_FALSE(send(rig, UsdFlags::kPrimChanged | UsdFlags::kExcluded));
    EXPECT_FALSE(send(key, /* flags = */ 0));
    delegate.sendUsdSelection({"/World/Rig/Key", "/World/Missing"});
    delegate.sendUsdSelection({});
    delegate.sendUsdRemoval(vrt::Path("/World/Nowhere"));
    EXPECT_EQ(AttributeModel::instance().liveReferences(), idle)
        << "records are made when a layer asks for the list, not by events";

    delegate.sendUsdRemoval(vrt::Path("/World/Rig"));
    EXPECT_FALSE(send(key, UsdFlags::kPrimAdded));
    delegate.removeComponents();
    EXPECT_EQ(AttributeModel::instance().liveReferences(), idle);
}

}  // namespace
