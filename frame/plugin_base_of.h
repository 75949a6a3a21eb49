#pragma once
// The base of every class of one viewer object kind, whether the object lives
// in this plugin or is only wrapped here: the kind's name and version, its one
// static host pointer, and the binding of an object to its host table.

#include <cstdint>

#include "frame/abi/plugin_host.h"
#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

template <typename Kind>
class PluginBaseOf {
public:
    using HostSuite = typename Kind::HostSuite;
    static constexpr const char* apiName = Kind::apiName;
    static constexpr std::uint32_t apiVersion = Kind::apiVersion;
    static constexpr const char* kHostSuiteName = Kind::hostSuiteName;
    static constexpr unsigned int kHostSuiteVersion = Kind::hostSuiteVersion;

    /// Shared by every class of the kind; null until the kind's first wrapper
    /// (or setHost) sets it.
    inline static PluginHost* pluginHost = nullptr;

    /// A row's setHost: stores the host and fetches the shared tables.
    static int setHost(PluginHost* host) { return runSetHostChain(pluginHost, host); }

    virtual ~PluginBaseOf() = default;

    void* hostHandle() const { return hostHandle_; }

protected:
    /// Binds a new object to its host handle and fetches the kind's host table.
    void bind(void* hostHandle) {
        hostHandle_ = hostHandle;
        hostSuite_ = fetchObjectSuite<HostSuite>(pluginHost, kHostSuiteName, kHostSuiteVersion);
    }

    /// Calls the function at `entry` of the kind's host table. Without the
    /// table, which a host may refuse, the object answers `otherwise`, as an
    /// object the host knows nothing of.
    template <typename Result, typename Entry, typename... Args>
    Result askHost(Entry HostSuite::*entry, Result otherwise, Args... args) const {
        return hostSuite_ != nullptr ? (hostSuite_->*entry)(hostHandle_, args...) : otherwise;
    }

    const HostSuite* hostSuite_ = nullptr;
    void* hostHandle_ = nullptr;
};

}  // namespace Tessera::Sorrel::ViewerAPI
