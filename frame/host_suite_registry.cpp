#include "frame/host_suite_registry.h"

#include "frame/frame_names.h"

using namespace Tessera::Sorrel::Names;

namespace Tessera::Sorrel::ViewerAPI {

int fetchHostSuite(PluginHost* host, const char* name, unsigned int version, void** out) {
    if (host == nullptr) return kStatusFailed;
    *out = host->getHostSuite(name, version);
    return *out != nullptr ? kStatusOk : kStatusFailed;
}

namespace {

/// Fetches a shared table into `held`. A table the host refuses leaves what
/// was held: a wrapper's first construction runs the chain without anyone
/// hearing its status, and must not take a working table away from the plugin.
template <typename Suite>
int refetch(PluginHost* host, const char* name, unsigned int version, Suite*& held) {
    void* suite = nullptr;
    const int status = fetchHostSuite(host, name, version, &suite);
    if (suite != nullptr) held = static_cast<Suite*>(suite);
    return status;
}

}  // namespace

int runSetHostChain(PluginHost*& classHost, PluginHost* host) {
    classHost = host;
    HostSuiteRegistry& suites = hostSuiteRegistry();

    if (const int status = refetch(host, kPluginManagerSuite, 1, suites.pluginManager))
        return status;

    // A host without an identifier generator is not refused here.
    refetch(host, kOptionIdGeneratorSuite, 1, suites.optionIdGenerator);
    suites.optionIdGeneratorHost = host;

    const int firstLogging = refetch(host, kLoggingSuite, 1, suites.logging);
    const int secondLogging = refetch(host, kLoggingSuite, 1, suites.loggingAgain);
    if (firstLogging != kStatusOk || secondLogging != kStatusOk) return kStatusFailed;

    if (const int status = refetch(host, kAttributeHostSuite, 5, suites.groupBuilder))
        return status;
    return refetch(host, kAttributeHostSuite, 5, suites.attributes);
}

void adoptHostOnce(PluginHost*& classHost, PluginHost* host) {
    if (classHost == nullptr) runSetHostChain(classHost, host);
}

}  // namespace Tessera::Sorrel::ViewerAPI
