#pragma once
// The triple the host hands out for each viewer object, and the common
// construction of the wrappers that stand for such objects.

#include "frame/host_api.h"
#include "frame/host_suites.h"

namespace Tessera::Sorrel::ViewerAPI {

/// Host handle, plugin handle and entry table of one viewer object.
struct ObjectTriple {
    void* hostHandle = nullptr;
    void* pluginHandle = nullptr;
    const void* pluginSuite = nullptr;

    /// A lookup found an object only when all three values are set.
    bool complete() const {
        return hostHandle != nullptr && pluginHandle != nullptr && pluginSuite != nullptr;
    }
};

/// A wrapper over a viewer object of the host. `PluginBase` names the class's
/// static host pointer and its host table; `HostSuite` types that table.
/// A wrapper owns nothing of what it stands for.
template <typename PluginBase, typename HostSuite>
class ObjectWrapper : public PluginBase {
public:
    ObjectWrapper(PluginHost* creatorHost, const ObjectTriple& triple)
        : hostHandle_(triple.hostHandle),
          pluginHandle_(triple.pluginHandle),
          pluginSuite_(triple.pluginSuite) {
        adoptHostOnce(PluginBase::pluginHost, creatorHost);
        hostSuite_ = fetchObjectSuite<HostSuite>(PluginBase::pluginHost, PluginBase::kHostSuiteName,
                                                 PluginBase::kHostSuiteVersion);
    }

    void* hostHandle() const { return hostHandle_; }
    void* pluginHandle() const { return pluginHandle_; }
    const void* pluginSuite() const { return pluginSuite_; }

protected:
    const HostSuite* hostSuite_ = nullptr;
    void* hostHandle_;
    void* pluginHandle_;
    const void* pluginSuite_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
