#pragma once
// The group builders that the plugin makes, fills and builds through the
// "AttributeHost" table. A builder holds a reference to each value set on it
// until it is released.

#include <cstdint>
#include <string>
#include <unordered_set>

#include "host/core/attribute_node.h"

namespace sorrel {

class GroupBuilders {
public:
    void* create();
    /// Drops the builder and the references it holds.
    void release(void* builder);
    /// Sets `name` to `value`, taking a reference of the builder's own and
    /// dropping the one to an earlier value of that name.
    void set(void* builder, const std::string& name, AttrHandle value);
    /// A new group of the values set, null ones left out, in the order their
    /// names were first set.
    AttrHandle build(void* builder);
    /// Builders made and not yet released.
    std::int64_t outstanding() const { return static_cast<std::int64_t>(live_.size()); }

private:
    struct Builder;
    /// Aborts unless `builder` was made here and not yet released.
    Builder& checked(void* builder) const;

    std::unordered_set<const Builder*> live_;
};

}  // namespace sorrel
