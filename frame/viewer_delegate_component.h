#pragma once
// The base of the viewer delegate component implemented in this plugin. The
// virtual operations keep the order of its table of virtual functions.

#include <string>
#include <vector>

#include "frame/attribute.h"
#include "frame/location_event.h"
#include "frame/plugin_object_handle.h"
#include "frame/usd_location_event.h"
#include "frame/viewer_delegate_component_plugin_base.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateComponent : public ViewerDelegateComponentPluginBase {
public:
    ViewerDelegateComponent() = default;
    ~ViewerDelegateComponent() override = default;

    virtual void setup() = 0;
    virtual void cleanup() = 0;
    virtual bool locationEvent(const LocationEvent& event, bool flag) = 0;
    virtual bool usdLocationEvent(const UsdLocationEvent& event, bool flag);
    virtual void locationsSelected(const std::vector<std::string>& locations) = 0;
    virtual void usdLocationsSelected(const std::vector<std::string>& locations);
    virtual bool queryFlag();
    virtual void* reservedQuery();
    virtual void setOption(OptionId id, Attribute value);
    virtual Attribute getOption(OptionId id);
    virtual Attribute attributeQueryA(const std::string& text);
    virtual Attribute attributeQueryB(const std::string& text);

    /// Creates an object of a concrete component for the host (the table's first entry).
    template <typename Concrete>
    static PluginObjectHandle* create(void* hostHandle) {
        auto component = std::make_shared<Concrete>();
        component->bind(hostHandle);
        return makePluginObjectHandle<ViewerDelegateComponent>(std::move(component));
    }
};

}  // namespace Tessera::Sorrel::ViewerAPI
