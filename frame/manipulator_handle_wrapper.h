#pragma once
// A handle of a manipulator as the plugin sees it: it takes options.

#include "frame/attribute.h"
#include "frame/object_wrapper.h"
#include "frame/plugin_kinds.h"

namespace Tessera::Sorrel::ViewerAPI {

class ManipulatorHandleWrapper : public ObjectWrapper<ManipulatorHandlePluginBase> {
public:
    using ObjectWrapper::ObjectWrapper;

    /// Hands the option to the handle's own entry table; the value is lent.
    void setOption(OptionId id, Attribute value) const;
};

}  // namespace Tessera::Sorrel::ViewerAPI
