#pragma once
// Groups of attributes built child by child through the host's builder.

#include <cstdint>
#include <string_view>

#include "frame/abi/boundary_types.h"
#include "frame/attribute.h"
#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

/// Builds a group child by child; the host's builder is made on the first child.
/// Inline: every new location builds its picking identity through it.
class GroupBuilder {
public:
    GroupBuilder() = default;
    GroupBuilder(const GroupBuilder&) = delete;
    GroupBuilder& operator=(const GroupBuilder&) = delete;
    ~GroupBuilder() {
        if (builder_ != nullptr) host().releaseBuilder(builder_);
    }

    /// The builder takes a reference of its own; the caller keeps `value`.
    GroupBuilder& set(std::string_view name, const Attribute& value) {
        const AttributeHostSuite& suite = host();
        if (builder_ == nullptr) builder_ = suite.createBuilder();
        suite.builderSet(builder_, name.data(), static_cast<std::int32_t>(name.size()),
                         value.handle(), kSetFlag);
        return *this;
    }

    /// The built group, or the empty group when nothing was set.
    GroupAttribute build() {
        if (builder_ == nullptr) return GroupAttribute::createEmpty();
        const AttributeHostSuite& suite = host();
        GroupAttribute group(Attribute::adopt(suite.builderBuild(builder_, kBuildMode)));
        suite.releaseBuilder(builder_);
        builder_ = nullptr;
        return group;
    }

private:
    static constexpr std::uint8_t kSetFlag = 1;
    static constexpr std::uint8_t kBuildMode = 0;

    static const AttributeHostSuite& host() { return *hostSuiteRegistry().groupBuilder; }

    GroupBuilderHandle builder_ = nullptr;
};

}  // namespace Tessera::Sorrel::ViewerAPI
