#pragma once
// The triple the host hands out for each viewer object, and the two ways of
// asking the host for one and wrapping it.

#include <memory>

#include "frame/abi/plugin_host.h"

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

/// Asks a host function with three outs; the wrapper only when all three are set.
template <typename Wrapper, typename Lookup, typename... Args>
std::shared_ptr<Wrapper> lookUp(PluginHost* creatorHost, Lookup lookup, void* hostHandle,
                                Args... args) {
    ObjectTriple triple;
    lookup(hostHandle, args..., &triple.hostHandle, &triple.pluginHandle, &triple.pluginSuite);
    if (!triple.complete()) return {};
    return std::make_shared<Wrapper>(creatorHost, triple);
}

/// Asks a host function with three outs and wraps whatever it answered.
template <typename Wrapper, typename Ask>
std::shared_ptr<Wrapper> askAndWrap(PluginHost* creatorHost, Ask ask, void* hostHandle) {
    ObjectTriple triple;
    ask(hostHandle, &triple.hostHandle, &triple.pluginHandle, &triple.pluginSuite);
    return std::make_shared<Wrapper>(creatorHost, triple);
}

}  // namespace Tessera::Sorrel::ViewerAPI
