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

/// Asks the function at `lookup` of a host table with three outs; the wrapper
/// only when all three are set. Without the table nothing is found.
template <typename Wrapper, typename Suite, typename Lookup, typename... Args>
std::shared_ptr<Wrapper> lookUp(PluginHost* creatorHost, const Suite* suite, Lookup Suite::*lookup,
                                void* hostHandle, Args... args) {
    if (suite == nullptr) return {};
    ObjectTriple triple;
    (suite->*lookup)(hostHandle, args..., &triple.hostHandle, &triple.pluginHandle,
                     &triple.pluginSuite);
    if (!triple.complete()) return {};
    return std::make_shared<Wrapper>(creatorHost, triple);
}

/// Asks the function at `ask` of a host table with three outs and wraps
/// whatever it answered; without the table, three nulls.
template <typename Wrapper, typename Suite, typename Ask>
std::shared_ptr<Wrapper> askAndWrap(PluginHost* creatorHost, const Suite* suite, Ask Suite::*ask,
                                    void* hostHandle) {
    ObjectTriple triple;
    if (suite != nullptr)
        (suite->*ask)(hostHandle, &triple.hostHandle, &triple.pluginHandle, &triple.pluginSuite);
    return std::make_shared<Wrapper>(creatorHost, triple);
}

}  // namespace Tessera::Sorrel::ViewerAPI
