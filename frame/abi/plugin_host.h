#pragma once
// The record the host hands to every setHost.

#include <cstddef>

namespace Tessera::Sorrel::ViewerAPI {

/// Its first field answers a host table by name and version (null when absent).
struct PluginHost {
    void* (*getHostSuite)(const char* suiteName, unsigned int version);
};
static_assert(offsetof(PluginHost, getHostSuite) == 0);

}  // namespace Tessera::Sorrel::ViewerAPI
