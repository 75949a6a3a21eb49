// Objects of another library among the viewer's: a layer and a component
// whose objects are plain bytes, beside the plugin's layers. The plugin must
// pass them over without reading their objects.

#include "host/viewer/foreign_objects.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "host/core/names.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;

namespace {

constexpr const char* kHandlesName = "BeamwrightCOIHandlesLayer";
constexpr const char* kComponentName = "BeamwrightLayerVDC";
constexpr const char* kForeignName = "OtherLibraryLayer";
constexpr std::int32_t kSize = 64;  // pixels

class ForeignObjects : public testing_support::PluginContractTest {
protected:
    /// Moves the pointer once over a viewport that lists a foreign layer before
    /// the handles layer; every layer's pick answers a location. True when the
    /// layers asked were exactly `expected` and the hover changed once.
    bool hoverAsks(const std::vector<std::string>& expected) {
        ViewerDelegate delegate;
        Viewport viewport(delegate, kSize, kSize);
        viewport.addPluginLayer(kForeignName, foreignLayerSuite());
        LayerObject& handles = viewport.addPluginLayer(kHandlesName, suiteOf(kHandlesName));
        std::vector<std::string> asked;
        viewport.setPickHandler([&asked](const std::string& name, std::int32_t, std::int32_t,
                                         std::int32_t, std::int32_t, bool, float* depth) {
            asked.push_back(name);
            *depth = 0.5f;
            return groupAttr({{"1", groupAttr({{"location", stringAttr("/root/a")}})}});
        });
        handles.setOption(sorrel::names::kEnabled, intAttr(1));
        handles.event(sorrel::mouseEvent(sorrel::names::kMouseMove, 3, 4));
        return asked == expected && viewport.dirtyCount() == 1;
    }
};

TEST_F(ForeignObjects, HoverPassesAForeignLayerOverOnHandlesOnlyAndAsksItOtherwise) {
    // The flag is read once per process, at the first hover search, so this
    // case runs in a process of its own before this process searches.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY", "1", 1);
            std::_Exit(hoverAsks({kHandlesName}) ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "")
        << "on handles only, the foreign layer is recognised as not this one, untouched";
    EXPECT_TRUE(hoverAsks({kForeignName, kHandlesName})) << "every layer is asked through the host";
}

TEST_F(ForeignObjects, AForeignComponentUnderThePluginsNameIsNotCast) {
    setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 1);
    const GLContext gl(kSize, kSize);
    ViewerDelegate delegate;
    delegate.addComponent(kComponentName, foreignComponentSuite());
    Viewport viewport(delegate, kSize, kSize);
    LayerObject& handles = viewport.addPluginLayer(kHandlesName, suiteOf(kHandlesName));
    handles.setup();
    handles.setOption(sorrel::names::kEnabled, intAttr(1));
    handles.draw();
    handles.pickerDraw(0, 0, kSize, kSize, AttrRef());
    handles.cleanup();
    // Reaching here is the test: a cast of the foreign object crashes, and a
    // write to it aborts when the host destroys it.
}

}  // namespace
