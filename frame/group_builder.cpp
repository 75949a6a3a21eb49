#include "frame/group_builder.h"

#include "frame/host_suite_registry.h"

namespace Tessera::Sorrel::ViewerAPI {

namespace {
constexpr std::uint8_t kBuilderSetFlag = 1;
constexpr std::uint8_t kBuildMode = 0;
}  // namespace

GroupBuilder::~GroupBuilder() {
    if (builder_ != nullptr) hostSuiteRegistry().groupBuilder->releaseBuilder(builder_);
}

GroupBuilder& GroupBuilder::set(std::string_view name, const Attribute& value) {
    const AttributeHostSuite& host = *hostSuiteRegistry().groupBuilder;
    if (builder_ == nullptr) builder_ = host.createBuilder();
    host.builderSet(builder_, name.data(), static_cast<std::int32_t>(name.size()), value.handle(),
                    kBuilderSetFlag);
    return *this;
}

GroupAttribute GroupBuilder::build() {
    if (builder_ == nullptr) return GroupAttribute::createEmpty();
    const AttributeHostSuite& host = *hostSuiteRegistry().groupBuilder;
    GroupAttribute group(Attribute::adopt(host.builderBuild(builder_, kBuildMode)));
    host.releaseBuilder(builder_);
    builder_ = nullptr;
    return group;
}

}  // namespace Tessera::Sorrel::ViewerAPI
