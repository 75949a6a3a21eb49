#pragma once
// The registry of host tables: the ones the whole plugin shares, fetched by
// every setHost, and the fetches through which each class reaches its own.

#include "frame/abi/attribute_host_suite.h"
#include "frame/abi/option_id_generator_host_suite.h"
#include "frame/abi/plugin_host.h"

namespace Tessera::Sorrel::ViewerAPI {

struct HostSuiteRegistry {
    void* pluginManager = nullptr;  // fetched, never called
    void* logging = nullptr;        // fetched twice, never called
    void* loggingAgain = nullptr;
    const OptionIdGeneratorHostSuite* optionIdGenerator = nullptr;
    PluginHost* optionIdGeneratorHost = nullptr;  // the host the generator table came from
    const AttributeHostSuite* groupBuilder = nullptr;
    const AttributeHostSuite* attributes = nullptr;
};

/// The process-wide tables; written by every setHost chain. Inline: every
/// call to the host starts here.
inline HostSuiteRegistry& hostSuiteRegistry() {
    static HostSuiteRegistry suites;
    return suites;
}

/// The attribute table; a successful setHost is a precondition of every attribute call.
inline const AttributeHostSuite& attributeHost() { return *hostSuiteRegistry().attributes; }

/// Fetches a table: 0 and the table when the host has it, -1 otherwise (also for a null host).
int fetchHostSuite(PluginHost* host, const char* name, unsigned int version, void** out);

/// The shared part of every setHost: stores the host pointer in `classHost`
/// first, then fetches the shared tables in order; returns the first failure.
int runSetHostChain(PluginHost*& classHost, PluginHost* host);

/// A wrapper's first construction: sets `classHost` only if it is still null,
/// running the chain then; the status is not reported.
void adoptHostOnce(PluginHost*& classHost, PluginHost* host);

/// Fetches a class's own table through its static host pointer; null when absent.
template <typename Suite>
const Suite* fetchObjectSuite(PluginHost* host, const char* name, unsigned int version) {
    void* suite = nullptr;
    fetchHostSuite(host, name, version, &suite);
    return static_cast<const Suite*>(suite);
}

}  // namespace Tessera::Sorrel::ViewerAPI
