#pragma once
// The plugin table: its row, a binary record shared with the host, and the two
// functions the library exports to hand the rows over.

#include <cstddef>
#include <cstdint>

#include "frame/abi/plugin_host.h"

namespace Tessera::Sorrel::ViewerAPI {

struct PluginRow {
    const char* name;
    const char* apiName;
    std::uint32_t apiVersion;
    std::uint32_t pluginVersionMajor;
    std::uint32_t pluginVersionMinor;
    int (*setHost)(PluginHost* host);
    const void* (*getSuite)();
    void (*flush)();
};
static_assert(sizeof(PluginRow) == 56);
static_assert(offsetof(PluginRow, name) == 0);
static_assert(offsetof(PluginRow, apiName) == 8);
static_assert(offsetof(PluginRow, apiVersion) == 16);
static_assert(offsetof(PluginRow, pluginVersionMajor) == 20);
static_assert(offsetof(PluginRow, pluginVersionMinor) == 24);
static_assert(offsetof(PluginRow, setHost) == 32);
static_assert(offsetof(PluginRow, getSuite) == 40);
static_assert(offsetof(PluginRow, flush) == 48);

}  // namespace Tessera::Sorrel::ViewerAPI

extern "C" {
/// Rebuilds the plugin table and returns its first row (null when empty).
__attribute__((visibility("default"))) const Tessera::Sorrel::ViewerAPI::PluginRow* getPlugins(
    unsigned int* outCount);
/// Appends a copy of a row; it lasts until the next getPlugins.
__attribute__((visibility("default"))) void registerPlugin(
    const Tessera::Sorrel::ViewerAPI::PluginRow* row);
}
