// How the plugin's objects reach the viewer's objects: viewport, camera,
// sibling layers, manipulators, viewer delegate and components.

#include <gtest/gtest.h>

#include <stdexcept>

#include "frame/viewer_delegate_component_suite.h"
#include "frame/viewport_layer_suite.h"
#include "frame/option_id.h"
#include "frame/wrappers.h"
#include "frame/viewer_delegate_component.h"
#include "frame/viewport_layer.h"
#include "host/viewer_delegate.h"
#include "host/viewport.h"
#include "host/plugin_host.h"
#include "tests/support/quiet_layer.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;

namespace {

class ProbeLayer : public testing_support::QuietLayer {
public:
    void setOption(OptionId id, Attribute value) override {
        lastId = id;
        last = std::move(value);
    }
    Attribute getOption(OptionId) override { return last; }
    OptionId lastId = 0;
    Attribute last;
};

class ProbeComponent : public ViewerDelegateComponent {
public:
    void setup() override {}
    void cleanup() override {}
    bool locationEvent(const LocationEvent&, bool) override { return true; }
    void locationsSelected(const std::vector<std::string>&) override {}
};

class RecordingHandle : public sorrel::ManipulatorHandle {
public:
    void setOption(std::uint64_t id, sorrel::AttrRef value) override {
        lastId = id;
        last = std::move(value);
    }
    std::uint64_t lastId = 0;
    sorrel::AttrRef last;
};

/// Reports its triple with one of the three values missing.
class IncompleteHandle : public RecordingHandle {
public:
    explicit IncompleteHandle(int missing) : missing_(missing) {}
    sorrel::ObjectTriple triple() override {
        sorrel::ObjectTriple triple = RecordingHandle::triple();
        (missing_ == 0 ? triple.hostHandle : missing_ == 1 ? triple.pluginHandle
                                                           : const_cast<void*&>(triple.suite)) = nullptr;
        return triple;
    }

private:
    int missing_;
};

class TwoHandleManipulator : public sorrel::Manipulator {
public:
    TwoHandleManipulator() : Manipulator("GLBeamwrightManipulator") {}
    std::uint32_t numberOfHandles() const override { return 2; }
    sorrel::ManipulatorHandle* handle(std::uint32_t i) override { return i < 2 ? &handles[i] : nullptr; }
    RecordingHandle handles[2];
};

class Wrappers : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        ViewerDelegateComponentPluginBase::setHost(testing_support::hostRecord());
        viewport.addPluginLayer("ProbeLayer", reinterpret_cast<void* const*>(&layerSuite));
        delegate.addComponent("ProbeComponent", reinterpret_cast<void* const*>(&componentSuite));
        auto manipulator = std::make_unique<TwoHandleManipulator>();
        manipulatorPtr = manipulator.get();
        viewport.addManipulator(std::move(manipulator));
    }
    void TearDown() override {
        viewport.removeLayers();
        delegate.removeComponents();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    ProbeLayer& probe() {
        auto* handle = static_cast<PluginObjectHandle*>(viewport.pluginLayer("ProbeLayer")->handle());
        return static_cast<ProbeLayer&>(pluginObject<ViewportLayer>(handle));
    }

    const ViewportLayerPluginSuite layerSuite = buildViewportLayerSuite(&ViewportLayer::create<ProbeLayer>);
    const ViewerDelegateComponentPluginSuite componentSuite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<ProbeComponent>);
    sorrel::ViewerDelegate delegate;
    sorrel::Viewport viewport{delegate, 640, 480};
    TwoHandleManipulator* manipulatorPtr = nullptr;
};

TEST_F(Wrappers, LayerReachesItsViewportOnceAndTheViewportItsDelegateOnce) {
    ProbeLayer& layer = probe();
    const auto viewportWrapper = layer.getViewport();
    EXPECT_EQ(layer.getViewport(), viewportWrapper) << "one viewport wrapper per layer";
    EXPECT_EQ(viewportWrapper->hostHandle(), &viewport);
    EXPECT_EQ(viewportWrapper->getWidth(), 640);
    EXPECT_EQ(viewportWrapper->getHeight(), 480);
    viewportWrapper->setDirty(true);
    EXPECT_EQ(viewport.dirtyCount, 1u);
    EXPECT_EQ(viewportWrapper->getViewerDelegate(), viewportWrapper->getViewerDelegate());
    EXPECT_EQ(viewportWrapper->getViewerDelegate()->hostHandle(), &delegate);

    viewport.view[12] = 7.0;
    EXPECT_EQ(viewportWrapper->getViewMatrix44()[3][0], 7.0);
    EXPECT_EQ(viewportWrapper->getViewMatrix(), viewport.view.data());
    EXPECT_EQ(viewportWrapper->getProjectionMatrix(), viewport.projection.data());

    viewport.camera().origin[0] = 1.0;
    viewport.camera().origin[2] = -3.0;
    const Vec3d origin = viewportWrapper->getActiveCamera()->getOrigin();
    EXPECT_EQ(origin.x, 1.0);
    EXPECT_EQ(origin.z, -3.0);
}

TEST_F(Wrappers, LayersAreFoundByNameAndIndexAndTheirOptionsPassThrough) {
    const auto viewportWrapper = probe().getViewport();
    EXPECT_EQ(viewportWrapper->getNumberOfLayers(), 1u);
    EXPECT_FALSE(viewportWrapper->getLayer("NoSuchLayer"));
    EXPECT_FALSE(viewportWrapper->getLayer(1u));
    const auto byName = viewportWrapper->getLayer("ProbeLayer");
    const auto byIndex = viewportWrapper->getLayer(0u);
    ASSERT_TRUE(byName && byIndex);
    EXPECT_NE(byName, byIndex) << "lookups are not cached";
    EXPECT_EQ(byName->getPluginInstance(), &probe());
    EXPECT_NE(dynamic_cast<ProbeLayer*>(static_cast<ViewportLayer*>(byName->getPluginInstance())), nullptr);

    byName->setOption("Enabled", IntAttribute::create(1));
    EXPECT_EQ(probe().lastId, getOptionId("Enabled"));
    EXPECT_EQ(IntAttribute(byIndex->getOption(probe().lastId)).getValue(), 1);
}

TEST_F(Wrappers, ManipulatorLookupsMakeNewWrappersAndHandlesTakeOptions) {
    const auto viewportWrapper = probe().getViewport();
    EXPECT_FALSE(viewportWrapper->getManipulator("Other"));
    const auto first = viewportWrapper->getManipulator("GLBeamwrightManipulator");
    const auto second = viewportWrapper->getManipulator("GLBeamwrightManipulator");
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    ASSERT_EQ(first->getNumberOfHandles(), 2u);
    EXPECT_FALSE(first->getHandle(2));
    first->getHandle(1)->setOption(42, IntAttribute::create(5));
    EXPECT_EQ(manipulatorPtr->handles[1].lastId, 42u);
    EXPECT_EQ(manipulatorPtr->handles[1].last.intValue(), 5);
    manipulatorPtr->handles[1].last = sorrel::AttrRef();
}

TEST_F(Wrappers, LookupWithAnyOneOfThreeValuesMissingFindsNothing) {
    class Broken : public sorrel::Manipulator {
    public:
        Broken() : Manipulator("Broken") {}
        std::uint32_t numberOfHandles() const override { return 3; }
        sorrel::ManipulatorHandle* handle(std::uint32_t i) override { return &handles[i]; }
        IncompleteHandle handles[3] = {IncompleteHandle(0), IncompleteHandle(1), IncompleteHandle(2)};
    };
    viewport.addManipulator(std::make_unique<Broken>());
    const auto manipulator = probe().getViewport()->getManipulator("Broken");
    ASSERT_TRUE(manipulator);
    for (std::uint32_t missing = 0; missing < 3; ++missing)
        EXPECT_FALSE(manipulator->getHandle(missing)) << "value " << missing << " missing";
}

TEST_F(Wrappers, ViewerDelegateAnswersLocationsCommandsAndComponents) {
    const auto delegateWrapper = probe().getViewport()->getViewerDelegate();
    delegate.scene().set("/root", sorrel::groupAttr({}), sorrel::translationMatrix(1, 0, 0));
    delegate.scene().set("/root/a", sorrel::stringAttr("not a group"), sorrel::translationMatrix(0, 2, 0));
    const lqm::Mat4<double> world = delegateWrapper->getWorldTransform("/root/a");
    EXPECT_EQ(world[3][0], 1.0);
    EXPECT_EQ(world[3][1], 2.0);
    EXPECT_EQ(delegateWrapper->getWorldTransform("/missing"), lqm::Mat4<double>());
    EXPECT_TRUE(delegateWrapper->getLocationAttributes("/root").isValid());
    EXPECT_FALSE(delegateWrapper->getLocationAttributes("/root/a").isValid());

    delegate.defineMethod("Echo", [](const sorrel::AttrRef& argument) { return argument; });
    const Attribute echoed = delegateWrapper->callMethod("Echo", StringAttribute::create("hi"));
    EXPECT_EQ(StringAttribute(echoed).getValue(), "hi");
    EXPECT_FALSE(delegateWrapper->callMethod("Missing", Attribute()).isValid());

    EXPECT_FALSE(delegateWrapper->getComponent("Nothing"));
    const auto component = delegateWrapper->getComponent("ProbeComponent");
    ASSERT_TRUE(component);
    auto* instance = static_cast<ViewerDelegateComponent*>(component->getPluginInstance());
    EXPECT_NE(dynamic_cast<ProbeComponent*>(instance), nullptr);
    EXPECT_EQ(instance->getViewerDelegate()->hostHandle(), &delegate);
}

TEST_F(Wrappers, CameraWithoutItsHostTableRaisesTheUpgradeMessage) {
    const auto viewportWrapper = probe().getViewport();
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

}  // namespace
