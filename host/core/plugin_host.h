#pragma once
// The host record handed to the plugin's setHost, answering its function
// tables by name and version; tests can make it refuse any one table.

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/core/suite_table.h"

namespace sorrel {

/// What setHost receives: the first field answers a table by name and version.
struct HostRecord {
    void* (*getHostSuite)(const char* name, unsigned int version);
};

class PluginHost {
public:
    static PluginHost& instance();

    HostRecord* record() { return &record_; }

    /// Makes `name` at `version` answerable.
    void provide(const std::string& name, unsigned int version, const SuiteTable& table);
    /// Makes the host answer null for a table (until allowed again).
    void refuse(const std::string& name) { refused_.insert(name); }
    void allow(const std::string& name) { refused_.erase(name); }
    void allowAll() { refused_.clear(); }

    /// Every table request in order, as "name version", for tests.
    const std::vector<std::string>& requests() const { return requests_; }
    void clearRequests() { requests_.clear(); }

    void* suite(const char* name, unsigned int version);

private:
    PluginHost();

    HostRecord record_;
    std::map<std::pair<std::string, unsigned int>, const SuiteTable*> tables_;
    std::set<std::string> refused_;
    std::vector<std::string> requests_;
};

/// "OptionIdGeneratorHost" version 1: a distinct identifier per name, and the
/// name back from an identifier for readable test failures.
class OptionIdGenerator {
public:
    static OptionIdGenerator& instance();
    const SuiteTable& table() const { return table_; }

    std::uint64_t idOf(const std::string& name);
    /// The name of an identifier, or "#<id>" when unknown.
    std::string nameOf(std::uint64_t id) const;
    /// How many identifiers were asked for, repeated names included.

private:
    OptionIdGenerator();
    SuiteTable table_;
    std::map<std::string, std::uint64_t> ids_;
    std::map<std::uint64_t, std::string> names_;
};

}  // namespace sorrel
