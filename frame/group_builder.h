#pragma once
// Groups of attributes built child by child through the host's builder.

#include <string_view>

#include "frame/abi/boundary_types.h"
#include "frame/attribute.h"

namespace Tessera::Sorrel::ViewerAPI {

/// Builds a group child by child; the host's builder is made on the first child.
class GroupBuilder {
public:
    GroupBuilder() = default;
    GroupBuilder(const GroupBuilder&) = delete;
    GroupBuilder& operator=(const GroupBuilder&) = delete;
    ~GroupBuilder();

    /// The builder takes a reference of its own; the caller keeps `value`.
    GroupBuilder& set(std::string_view name, const Attribute& value);
    /// The built group, or the empty group when nothing was set.
    GroupAttribute build();

private:
    GroupBuilderHandle builder_ = nullptr;
};

}  // namespace Tessera::Sorrel::ViewerAPI
