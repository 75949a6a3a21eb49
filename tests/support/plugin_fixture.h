#pragma once
// Contract tests: Beamwright.so loaded once into the stand-in host, every row
// given the host before each test.

#include <memory>
#include <string>

#include "host/core/plugin_library.h"
#include "host/viewer/viewer_tables.h"
#include "tests/support/reference_balance.h"

namespace testing_support {

inline const sorrel::PluginLibrary& plugin() {
    static const sorrel::PluginLibrary library(BEAMWRIGHT_PLUGIN_PATH);
    return library;
}

class PluginContractTest : public ReferenceBalanceTest {
protected:
    void SetUp() override {
        sorrel::PluginHost::instance().allowAll();
        for (const auto& row : plugin().getPlugins())
            ASSERT_EQ(row.setHost(sorrel::viewerHostRecord()), 0) << row.name;
        sorrel::PluginHost::instance().clearRequests();
        ReferenceBalanceTest::SetUp();
    }
    void TearDown() override {
        ReferenceBalanceTest::TearDown();
        sorrel::PluginHost::instance().allowAll();
    }

    static void* const* suiteOf(const std::string& name) { return plugin().row(name).getSuite(); }
};

}  // namespace testing_support
