#pragma once
// The host record handed to the plugin's setHost, answering its function
// tables by name and version; tests can make it refuse any one table.
//
// From the start it answers the tables of the core: "PluginManager" and
// "Logging" (every position traps), "OptionIdGeneratorHost" and
// "AttributeHost". The viewer adds the tables of its objects (see
// viewerHostRecord()).

#include <cstddef>
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

    /// Table requests in order, as "name version", for tests: the first
    /// kRequestsKept since the last clearRequests(), so that a long session
    /// does not grow the list without end.
    const std::vector<std::string>& requests() const { return requests_; }
    static constexpr std::size_t kRequestsKept = 1024;
    void clearRequests() { requests_.clear(); }

    void* suite(const char* name, unsigned int version);

private:
    PluginHost();

    HostRecord record_;
    std::map<std::pair<std::string, unsigned int>, const SuiteTable*> tables_;
    std::set<std::string> refused_;
    std::vector<std::string> requests_;
};

}  // namespace sorrel
