#include "host/core/option_id_generator.h"

namespace sorrel {

namespace {

// Identifiers are spread out so that a mixed-up identifier never looks right.
constexpr std::uint64_t kFirstOptionId = 0x5EED000000000101ull;
constexpr std::uint64_t kOptionIdStride = 0x10001ull;
int generatorToken = 0;

void* getGeneratorFn() { return &generatorToken; }
std::uint64_t generateIdFn(void*, const char* name) {
    return OptionIdGenerator::instance().idOf(name);
}

}  // namespace

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
