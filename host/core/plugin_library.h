#pragma once
// Loads Beamwright.so and reads its plugin table through the binary contract.

#include <cstdint>
#include <string>
#include <vector>

namespace sorrel {

/// One row of a plugin table, read field by field from its binary layout.
struct PluginRowView {
    std::string name;
    std::string apiName;
    std::uint32_t apiVersion = 0;
    std::uint32_t pluginVersionMajor = 0;
    std::uint32_t pluginVersionMinor = 0;
    int (*setHost)(void* host) = nullptr;
    void* const* (*getSuite)() = nullptr;
    void (*flush)() = nullptr;
    const void* address = nullptr;  // where the row lies in the plugin
};

class PluginLibrary {
public:
    /// dlopen()s the library; aborts with dlerror's text when that fails.
    explicit PluginLibrary(const std::string& path);
    ~PluginLibrary();
    PluginLibrary(const PluginLibrary&) = delete;
    PluginLibrary& operator=(const PluginLibrary&) = delete;

    /// Calls getPlugins and reads every row.
    std::vector<PluginRowView> getPlugins(unsigned int* rawCount = nullptr) const;
    /// Calls registerPlugin with a row laid out as the contract says.
    void registerPlugin(const PluginRowView& row) const;
    /// The row of that name from a fresh getPlugins; aborts when absent.
    PluginRowView row(const std::string& name) const;

private:
    void* library_ = nullptr;
    const void* (*getPlugins_)(unsigned int*) = nullptr;
    void (*registerPlugin_)(const void*) = nullptr;
};

/// Reads a row at an address by the contract's offsets (56 bytes a row).
PluginRowView readPluginRow(const void* address);
constexpr std::size_t kPluginRowSize = 56;

}  // namespace sorrel
