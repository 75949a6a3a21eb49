#include "host/viewer/manipulator.h"

#include "host/core/suite_table.h"

namespace sorrel {

namespace {

void handleSetOption(void* pluginHandle, std::uint64_t id, void* givenOver) {
    auto* record = static_cast<HostObjectRecord*>(pluginHandle);
    static_cast<ManipulatorHandle*>(record->object)
        ->setOption(id, AttrRef(static_cast<AttrHandle>(givenOver)));
}

const SuiteTable& handleSuite() {
    static const SuiteTable table = [] {
        SuiteTable t("ManipulatorHandlePlugin");
        t.set(5, &handleSetOption);
        return t;
    }();
    return table;
}

const SuiteTable& manipulatorSuite() {
    static const SuiteTable table("ManipulatorPlugin");
    return table;
}

}  // namespace

void* const* ManipulatorHandle::suite() { return handleSuite().data(); }

ObjectTriple ManipulatorHandle::triple() {
    record_.object = this;
    return {this, &record_, suite()};
}

ObjectTriple Manipulator::triple() {
    record_.object = this;
    return {this, &record_, manipulatorSuite().data()};
}

}  // namespace sorrel
