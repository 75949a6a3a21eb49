#include "host/core/group_builders.h"

#include <utility>
#include <vector>

#include "host/core/attribute_model.h"

namespace sorrel {

struct GroupBuilders::Builder {
    std::vector<std::pair<std::string, AttrHandle>> children;
};

namespace {
AttributeModel& model() { return AttributeModel::instance(); }
}  // namespace

GroupBuilders::Builder& GroupBuilders::checked(void* builder) const {
    auto* const known = static_cast<Builder*>(builder);
    if (live_.count(known) == 0) failAttributeHost("unknown or released group builder", nullptr);
    return *known;
}

void* GroupBuilders::create() {
    auto* builder = new Builder;
    live_.insert(builder);
    return builder;
}

void GroupBuilders::release(void* builder) {
    Builder& released = checked(builder);
    // A value set as null holds no reference.
    for (auto& [name, child] : released.children)
        if (child != nullptr) model().release(child);
    live_.erase(&released);
    delete &released;
}

void GroupBuilders::set(void* builder, const std::string& name, AttrHandle value) {
    Builder& target = checked(builder);
    if (value != nullptr) model().retain(value);
    for (auto& entry : target.children) {
        if (entry.first == name) {
            if (entry.second != nullptr) model().release(entry.second);
            entry.second = value;
            return;
        }
    }
    target.children.emplace_back(name, value);
}

AttrHandle GroupBuilders::build(void* builder) {
    const Builder& source = checked(builder);
    std::vector<std::pair<std::string, AttrHandle>> children;
    for (const auto& [name, child] : source.children) {
        if (child == nullptr) continue;
        model().retain(child);
        children.emplace_back(name, child);
    }
    return model().makeGroup(std::move(children));
}

}  // namespace sorrel
