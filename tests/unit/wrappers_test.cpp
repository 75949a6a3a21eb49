// How the plugin's objects reach the viewer's objects: viewport, camera,
// sibling layers, manipulators, viewer delegate and components. The layers'
// own tests carry options, sizes, matrices and commands through these wrappers;
// here are the camera and the lookups, found or not.

#include "frame/wrappers.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "frame/viewer_delegate_component.h"
#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "host/viewer/manipulator.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "tests/support/near.h"
#include "tests/support/quiet_layer.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using testing_support::near;

namespace {

constexpr std::int32_t kWidth = 640;
constexpr std::int32_t kHeight = 480;

class ProbeComponent : public ViewerDelegateComponent {
public:
    void setup() override {}
    void cleanup() override {}
    bool locationEvent(const LocationEvent&, bool) override { return true; }
    void locationsSelected(const std::vector<std::string>&) override {}
};

/// Three handles; handle i reports its triple with value i missing.
class BrokenManipulator : public sorrel::Manipulator {
    struct Handle : sorrel::ManipulatorHandle {
        int missing = 0;
        void setOption(std::uint64_t, sorrel::AttrRef) override {}
        sorrel::ObjectTriple triple() override {
            sorrel::ObjectTriple triple = ManipulatorHandle::triple();
            if (missing == 0) triple.hostHandle = nullptr;
            if (missing == 1) triple.pluginHandle = nullptr;
            if (missing == 2) triple.suite = nullptr;
            return triple;
        }
    };

public:
    BrokenManipulator() : Manipulator("Broken") {
        for (int i = 0; i < 3; ++i) handles[i].missing = i;
    }
    std::uint32_t numberOfHandles() const override { return 3; }
    sorrel::ManipulatorHandle* handle(std::uint32_t i) override { return &handles[i]; }
    Handle handles[3];
};

class Wrappers : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        ViewerDelegateComponentPluginBase::setHost(testing_support::hostRecord());
        viewport.addPluginLayer("Probe", reinterpret_cast<void* const*>(&layerSuite));
        delegate.addComponent("ProbeComponent", reinterpret_cast<void* const*>(&componentSuite));
        viewport.addManipulator(std::make_unique<BrokenManipulator>());
        viewportWrapper = probe().getViewport();
    }
    void TearDown() override {
        viewportWrapper.reset();
        viewport.removeLayers();
        delegate.removeComponents();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    ViewportLayer& probe() {
        return pluginObject<ViewportLayer>(
            static_cast<PluginObjectHandle*>(viewport.pluginLayer("Probe")->handle()));
    }

    const ViewportLayerPluginSuite layerSuite =
        buildViewportLayerSuite(&ViewportLayer::create<testing_support::QuietLayer>);
    const ViewerDelegateComponentPluginSuite componentSuite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<ProbeComponent>);
    sorrel::ViewerDelegate delegate;
    sorrel::Viewport viewport{delegate, kWidth, kHeight};
    std::shared_ptr<ViewportWrapper> viewportWrapper;
};

TEST_F(Wrappers, CameraComesFromTheHostOrRaisesTheUpgradeMessage) {
    viewport.camera().origin[0] = 1.0;
    viewport.camera().origin[2] = -3.0;
    EXPECT_TRUE(near(viewportWrapper->getActiveCamera()->getOrigin(), {1.0, 0.0, -3.0}, 0.0));

    sorrel::PluginHost::instance().refuse("ViewportCameraHost");
    try {
        viewportWrapper->getActiveCamera();
        ADD_FAILURE() << "expected an exception";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "This ViewportCamera plugin requires version 2 of the host API. A more recent "
                     "version of Sorrel is probably required by this plugin.");
    }
    sorrel::PluginHost::instance().allowAll();
}

TEST_F(Wrappers, AViewportWrappedWithoutItsHostTableHasNoSizeAndNoMatrices) {
    const ObjectTriple same{viewportWrapper->hostHandle(), viewportWrapper->pluginHandle(),
                            viewportWrapper->pluginSuite()};
    sorrel::PluginHost::instance().refuse("ViewportHost");
    const ViewportWrapper unknown(testing_support::hostRecord(), same);
    sorrel::PluginHost::instance().allowAll();
    EXPECT_EQ(unknown.getWidth(), 0);
    EXPECT_EQ(unknown.getHeight(), 0);
    EXPECT_EQ(unknown.getViewMatrix(), nullptr);
    EXPECT_EQ(unknown.getProjectionMatrix(), nullptr);
    EXPECT_EQ(unknown.getViewMatrix44(), lqm::Mat4<double>());
    EXPECT_EQ(unknown.getProjectionMatrix44(), lqm::Mat4<double>());
    EXPECT_EQ(viewportWrapper->getWidth(), kWidth) << "the wrapper made with the table still asks";
}

TEST_F(Wrappers, LookupsFindWhatTheHostNamesAndNothingWithoutAllThreeValues) {
    EXPECT_EQ(viewportWrapper->getNumberOfLayers(), 1u);
    EXPECT_FALSE(viewportWrapper->getLayer("NoSuchLayer"));
    EXPECT_FALSE(viewportWrapper->getLayer(1u));
    EXPECT_EQ(viewportWrapper->getLayer("Probe")->getPluginInstance(), &probe());
    EXPECT_EQ(viewportWrapper->getLayer(0u)->getPluginInstance(), &probe());

    EXPECT_FALSE(viewportWrapper->getManipulator("Other"));
    const auto manipulator = viewportWrapper->getManipulator("Broken");
    ASSERT_TRUE(manipulator);
    // One lookup serves every kind of object: any one missing value finds nothing.
    for (std::uint32_t missing = 0; missing < 3; ++missing)
        EXPECT_FALSE(manipulator->getHandle(missing)) << "value " << missing << " missing";

    const auto delegateWrapper = viewportWrapper->getViewerDelegate();
    EXPECT_FALSE(delegateWrapper->getComponent("Nothing"));
    const auto component = delegateWrapper->getComponent("ProbeComponent");
    ASSERT_TRUE(component);
    auto* instance = static_cast<ViewerDelegateComponent*>(component->getPluginInstance());
    EXPECT_NE(dynamic_cast<ProbeComponent*>(instance), nullptr);
    EXPECT_EQ(instance->getViewerDelegate()->hostHandle(), &delegate);

    // A location that is missing or has no group reads as the fallbacks.
    delegate.scene().set("/root/a", sorrel::stringAttr("not a group"));
    EXPECT_EQ(delegateWrapper->getWorldTransform("/missing"), lqm::Mat4<double>());
    EXPECT_FALSE(delegateWrapper->getLocationAttributes("/root/a").isValid());
}

}  // namespace
