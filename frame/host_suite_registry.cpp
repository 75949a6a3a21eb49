#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

HostSuiteRegistry& hostSuiteRegistry() {
    static HostSuiteRegistry suites;
    return suites;
}

int fetchHostSuite(PluginHost* host, const char* name, unsigned int version, void** out) {
    if (host == nullptr) return kStatusFailed;
    *out = host->getHostSuite(name, version);
    return *out != nullptr ? kStatusOk : kStatusFailed;
}

namespace {

template <typename Suite>
int fetchInto(PluginHost* host, const char* name, unsigned int version, const Suite*& out) {
    void* suite = nullptr;
    const int status = fetchHostSuite(host, name, version, &suite);
    out = static_cast<const Suite*>(suite);
    return status;
}

}  // namespace

int runSetHostChain(PluginHost*& classHost, PluginHost* host) {
    classHost = host;
    HostSuiteRegistry& suites = hostSuiteRegistry();

    if (const int status = fetchHostSuite(host, "PluginManager", 1, &suites.pluginManager))
        return status;

    // A host without an identifier generator is not refused here.
    fetchInto(host, "OptionIdGeneratorHost", 1, suites.optionIdGenerator);
    suites.optionIdGeneratorHost = host;

    fetchHostSuite(host, "Logging", 1, &suites.logging);
    const int secondLogging = fetchHostSuite(host, "Logging", 1, &suites.loggingAgain);
    if (suites.logging == nullptr || secondLogging != kStatusOk) return kStatusFailed;

    if (const int status = fetchInto(host, "AttributeHost", 5, suites.groupBuilder)) return status;
    return fetchInto(host, "AttributeHost", 5, suites.attributes);
}

void adoptHostOnce(PluginHost*& classHost, PluginHost* host) {
    if (classHost == nullptr) runSetHostChain(classHost, host);
}

}  // namespace Tessera::Sorrel::ViewerAPI
