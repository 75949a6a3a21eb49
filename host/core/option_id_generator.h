#pragma once
// "OptionIdGeneratorHost" version 1: a distinct identifier per option name,
// and the name back from an identifier for readable test failures.

#include <cstdint>
#include <map>
#include <string>

#include "host/core/suite_table.h"

namespace sorrel {

class OptionIdGenerator {
public:
    static OptionIdGenerator& instance();
    const SuiteTable& table() const { return table_; }

    std::uint64_t idOf(const std::string& name);
    /// The name of an identifier, or "#<id>" when unknown.
    std::string nameOf(std::uint64_t id) const;

private:
    OptionIdGenerator();
    SuiteTable table_;
    std::map<std::string, std::uint64_t> ids_;
    std::map<std::uint64_t, std::string> names_;
};

}  // namespace sorrel
