#include "host/core/plugin_host.h"

#include "host/core/attribute_host_table.h"
#include "host/core/option_id_generator.h"

namespace sorrel {

namespace {

void* getHostSuiteFn(const char* name, unsigned int version) {
    return PluginHost::instance().suite(name, version);
}

// The plugin fetches these and calls nothing in them: every position traps.
const SuiteTable& pluginManagerTable() {
    static const SuiteTable table("PluginManager");
    return table;
}
const SuiteTable& loggingTable() {
    static const SuiteTable table("Logging");
    return table;
}

}  // namespace

PluginHost& PluginHost::instance() {
    static PluginHost* host = new PluginHost;
    return *host;
}

PluginHost::PluginHost() : record_{&getHostSuiteFn} {
    provide("PluginManager", 1, pluginManagerTable());
    provide("Logging", 1, loggingTable());
    provide("OptionIdGeneratorHost", 1, OptionIdGenerator::instance().table());
    provide("AttributeHost", 5, attributeHostTable());
}

void PluginHost::provide(const std::string& name, unsigned int version, const SuiteTable& table) {
    tables_[{name, version}] = &table;
}

void* PluginHost::suite(const char* name, unsigned int version) {
    if (requests_.size() < kRequestsKept)
        requests_.push_back(std::string(name) + " " + std::to_string(version));
    if (refused_.count(name) != 0) return nullptr;
    const auto found = tables_.find({name, version});
    return found != tables_.end() ? const_cast<void**>(found->second->data()) : nullptr;
}

}  // namespace sorrel
