#include "host/core/plugin_library.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace sorrel {

namespace {

template <typename T>
T fieldAt(const void* base, std::size_t offset) {
    T value;
    std::memcpy(&value, static_cast<const char*>(base) + offset, sizeof(T));
    return value;
}

template <typename T>
void putAt(void* base, std::size_t offset, T value) {
    std::memcpy(static_cast<char*>(base) + offset, &value, sizeof(T));
}

[[noreturn]] void failLoad(const char* what) {
    std::fprintf(stderr, "plugin library: %s\n", what);
    std::abort();
}

}  // namespace

PluginRowView readPluginRow(const void* address) {
    PluginRowView row;
    row.address = address;
    row.name = fieldAt<const char*>(address, 0);
    row.apiName = fieldAt<const char*>(address, 8);
    row.apiVersion = fieldAt<std::uint32_t>(address, 16);
    row.pluginVersionMajor = fieldAt<std::uint32_t>(address, 20);
    row.pluginVersionMinor = fieldAt<std::uint32_t>(address, 24);
    row.setHost = fieldAt<int (*)(void*)>(address, 32);
    row.getSuite = fieldAt<void* const* (*)()>(address, 40);
    row.flush = fieldAt<void (*)()>(address, 48);
    return row;
}

PluginLibrary::PluginLibrary(const std::string& path) {
    library_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library_ == nullptr) failLoad(dlerror());
    getPlugins_ = reinterpret_cast<const void* (*)(unsigned int*)>(dlsym(library_, "getPlugins"));
    registerPlugin_ = reinterpret_cast<void (*)(const void*)>(dlsym(library_, "registerPlugin"));
    if (getPlugins_ == nullptr || registerPlugin_ == nullptr) failLoad("entry points missing");
}

// The library stays loaded: objects and statics of the plugin may outlive us.
PluginLibrary::~PluginLibrary() = default;

std::vector<PluginRowView> PluginLibrary::getPlugins(unsigned int* rawCount) const {
    unsigned int count = 0;
    const void* first = getPlugins_(&count);
    if (rawCount != nullptr) *rawCount = count;
    std::vector<PluginRowView> rows;
    for (unsigned int i = 0; i < count; ++i)
        rows.push_back(readPluginRow(static_cast<const char*>(first) + i * kPluginRowSize));
    return rows;
}

void PluginLibrary::registerPlugin(const PluginRowView& row) const {
    alignas(8) unsigned char raw[kPluginRowSize] = {};
    putAt(raw, 0, row.name.c_str());
    putAt(raw, 8, row.apiName.c_str());
    putAt(raw, 16, row.apiVersion);
    putAt(raw, 20, row.pluginVersionMajor);
    putAt(raw, 24, row.pluginVersionMinor);
    putAt(raw, 32, row.setHost);
    putAt(raw, 40, row.getSuite);
    putAt(raw, 48, row.flush);
    registerPlugin_(raw);
}

PluginRowView PluginLibrary::row(const std::string& name) const {
    for (const PluginRowView& row : getPlugins())
        if (row.name == name) return row;
    failLoad(("no plugin row named " + name).c_str());
}

}  // namespace sorrel
