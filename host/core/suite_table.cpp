#include "host/core/suite_table.h"

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <utility>
#include <vector>

namespace sorrel {

namespace {

// The traps know their table by a small index into this list of names.
constexpr std::size_t kMaxTables = 32;
std::vector<std::string>& trapTableNames() {
    static std::vector<std::string> names;
    return names;
}

template <std::size_t Table, std::size_t Position>
void trap() {
    failUnexpectedCall(trapTableNames().at(Table).c_str(), Position);
}

template <std::size_t Table, std::size_t... Positions>
std::array<void*, kMaxSuitePositions> trapsOf(std::index_sequence<Positions...>) {
    return {reinterpret_cast<void*>(&trap<Table, Positions>)...};
}

template <std::size_t... Tables>
std::array<void*, kMaxSuitePositions> trapsFor(std::size_t table, std::index_sequence<Tables...>) {
    using Builder = std::array<void*, kMaxSuitePositions> (*)();
    static const Builder builders[] = {
        +[]() { return trapsOf<Tables>(std::make_index_sequence<kMaxSuitePositions>()); }...};
    return builders[table]();
}

std::size_t tableIndexOf(const std::string& name) {
    std::vector<std::string>& names = trapTableNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i] == name) return i;
    if (names.size() == kMaxTables) failUnexpectedCall("too many host tables", names.size());
    names.push_back(name);
    return names.size() - 1;
}

}  // namespace

void failUnexpectedCall(const char* table, std::size_t position) {
    std::fprintf(stderr, "unexpected call to %s position %zu\n", table, position);
    std::fflush(stderr);
    std::abort();
}

SuiteTable::SuiteTable(std::string name) : name_(std::move(name)) {
    slots_ = trapsFor(tableIndexOf(name_), std::make_index_sequence<kMaxTables>());
}

}  // namespace sorrel
