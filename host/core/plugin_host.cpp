#include "host/core/plugin_host.h"

#include "host/core/attribute_host_table.h"
#include "host/viewer/viewer_tables.h"

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

// Identifiers are spread out so that a mixed-up identifier never looks right.
constexpr std::uint64_t kFirstOptionId = 0x5EED000000000101ull;
constexpr std::uint64_t kOptionIdStride = 0x10001ull;
int generatorToken = 0;

void* getGeneratorFn() { return &generatorToken; }
std::uint64_t generateIdFn(void*, const char* name) {
    return OptionIdGenerator::instance().idOf(name);
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
    provideViewerTables(*this);
}

void PluginHost::provide(const std::string& name, unsigned int version, const SuiteTable& table) {
    tables_[{name, version}] = &table;
}

void* PluginHost::suite(const char* name, unsigned int version) {
    requests_.push_back(std::string(name) + " " + std::to_string(version));
    if (refused_.count(name) != 0) return nullptr;
    const auto found = tables_.find({name, version});
    return found != tables_.end() ? const_cast<void**>(found->second->data()) : nullptr;
}

OptionIdGenerator& OptionIdGenerator::instance() {
    static OptionIdGenerator* generator = new OptionIdGenerator;
    return *generator;
}

OptionIdGenerator::OptionIdGenerator() : table_("OptionIdGeneratorHost") {
    table_.set(0, &getGeneratorFn).set(1, &generateIdFn);
}

std::uint64_t OptionIdGenerator::idOf(const std::string& name) {
    const auto found = ids_.find(name);
    if (found != ids_.end()) return found->second;
    const std::uint64_t id = kFirstOptionId + kOptionIdStride * ids_.size();
    ids_.emplace(name, id);
    names_.emplace(id, name);
    return id;
}

std::string OptionIdGenerator::nameOf(std::uint64_t id) const {
    const auto found = names_.find(id);
    return found != names_.end() ? found->second : "#" + std::to_string(id);
}

}  // namespace sorrel
