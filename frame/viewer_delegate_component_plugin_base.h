#pragma once
// What a viewer delegate component is on both sides of the boundary.

#include <cstdint>
#include <memory>

#include "frame/host_api.h"

namespace Tessera::Sorrel::ViewerAPI {

class ViewerDelegateWrapper;

/// "ViewerDelegateComponentHost" version 2, at the one position the frame calls.
struct ViewerDelegateComponentHostSuite {
    void (*getViewerDelegate)(void* componentHostHandle, void** delegateHostHandle,
                              void** pluginHandle, const void** suite);  // 0
};

class ViewerDelegateComponentPluginBase {
public:
    static constexpr const char* apiName = "ViewerDelegateComponentPlugin";
    static constexpr std::uint32_t apiVersion = 2;
    static constexpr const char* kHostSuiteName = "ViewerDelegateComponentHost";
    static constexpr unsigned int kHostSuiteVersion = 2;

    static PluginHost* pluginHost;
    static int setHost(PluginHost* host);

    virtual ~ViewerDelegateComponentPluginBase();

    /// The component's viewer delegate, made on the first call and kept.
    std::shared_ptr<ViewerDelegateWrapper> getViewerDelegate();

    void* hostHandle() const { return hostHandle_; }

protected:
    void bind(void* hostHandle);

    const ViewerDelegateComponentHostSuite* hostSuite_ = nullptr;
    void* hostHandle_ = nullptr;
    std::shared_ptr<ViewerDelegateWrapper> viewerDelegate_;
};

}  // namespace Tessera::Sorrel::ViewerAPI
