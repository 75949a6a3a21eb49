#pragma once
// Unit tests: the plugin's code linked statically, attached to the stand-in host.

#include "frame/viewport_layer_plugin_base.h"
#include "host/viewer/viewer_tables.h"
#include "tests/support/reference_balance.h"

namespace testing_support {

inline Tessera::Sorrel::ViewerAPI::PluginHost* hostRecord() {
    return reinterpret_cast<Tessera::Sorrel::ViewerAPI::PluginHost*>(sorrel::viewerHostRecord());
}

/// Runs the layer kind's setHost once, which fills the shared attribute tables.
inline void attachHost() {
    sorrel::PluginHost::instance().allowAll();
    Tessera::Sorrel::ViewerAPI::ViewportLayerPluginBase::setHost(hostRecord());
}

class UnitTest : public ReferenceBalanceTest {
protected:
    void SetUp() override {
        attachHost();
        ReferenceBalanceTest::SetUp();
    }
};

}  // namespace testing_support
