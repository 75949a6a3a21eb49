#pragma once
// Unit tests of BeamwrightLayerVDC: the component made by the host's viewer
// delegate, and its light list read by location path.

#include <string>
#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "host/core/names.h"
#include "host/viewer/viewer_delegate.h"
#include "scene/light_component.h"
#include "tests/support/unit_host.h"

namespace testing_support {

using Paths = std::vector<std::string>;

/// The location path that a record stands for.
inline std::string pathOf(const LightLocationData& light) {
    using Tessera::Sorrel::ViewerAPI::StringAttribute;
    return light.pickerObject.getChild<StringAttribute>("location").getValue();
}

class LightComponentTest : public UnitTest {
protected:
    void SetUp() override {
        using namespace Tessera::Sorrel::ViewerAPI;
        UnitTest::SetUp();
        ViewerDelegateComponentPluginBase::setHost(hostRecord());
        const sorrel::ComponentObject& object = delegate.addComponent(
            sorrel::names::kLightComponent, reinterpret_cast<void* const*>(&suite));
        component = dynamic_cast<BeamwrightLayerVDC*>(static_cast<ViewerDelegateComponent*>(
            pluginInstanceOf(static_cast<const PluginObjectHandle*>(object.handle()))));
        ASSERT_NE(component, nullptr);
    }
    void TearDown() override {
        delegate.removeComponents();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    Paths lightPaths() const {
        Paths paths;
        for (const LightLocationData* light : component->getLights())
            paths.push_back(pathOf(*light));
        return paths;
    }
    const LightLocationData* lightAt(const std::string& path) const {
        for (const LightLocationData* light : component->getLights())
            if (pathOf(*light) == path) return light;
        return nullptr;
    }

    const Tessera::Sorrel::ViewerAPI::ViewerDelegateComponentPluginSuite suite =
        Tessera::Sorrel::ViewerAPI::buildViewerDelegateComponentSuite(
            &Tessera::Sorrel::ViewerAPI::ViewerDelegateComponent::create<BeamwrightLayerVDC>);
    sorrel::ViewerDelegate delegate;
    BeamwrightLayerVDC* component = nullptr;
};

}  // namespace testing_support
