// BeamwrightCOIHandlesLayer without GL: its options, and the hover search over
// the viewport's layers, whose pick answers the host gives here by layer name.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handles_layer.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "support/environment_flag.h"
#include "tests/support/light_attributes.h"
#include "tests/support/recording_layers.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;
using sorrel::MouseButtons;
using sorrel::names::kLeftButton;
using sorrel::names::kShiftModifier;
using testing_support::RecordingLayer;
using testing_support::strings;

namespace {

constexpr const char* kHandlesName = "BeamwrightCOIHandlesLayer";
constexpr const char* kBelow = "SelectionLayer";  // before the handles layer
constexpr const char* kAbove = "SnappingLayer";   // after it
constexpr std::int32_t kPointerX = 30;
constexpr std::int32_t kPointerY = 40;

std::uint64_t hashOf(const char* path) { return hashOfText(path).words[0]; }

AttrRef mouse(const char* type, const MouseButtons& state = {}) {
    return sorrel::mouseEvent(type, kPointerX, kPointerY, state);
}

/// A picking group entry as a light's picker object reads, and a group of one.
AttrRef at(const char* path) { return sorrel::groupAttr({{"location", sorrel::stringAttr(path)}}); }
AttrRef hit(const char* path) { return sorrel::groupAttr({{"1", at(path)}}); }

class HandlesLayerState : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        viewport = std::make_unique<sorrel::Viewport>(delegate, 640, 480);
        viewport->addHostLayer(std::make_unique<RecordingLayer>(kBelow));
        layer = &viewport->addPluginLayer(kHandlesName, reinterpret_cast<void* const*>(&suite));
        above = static_cast<RecordingLayer*>(
            &viewport->addHostLayer(std::make_unique<RecordingLayer>(kAbove)));
        viewport->setPickHandler([this](const std::string& name, std::int32_t x, std::int32_t y,
                                        std::int32_t w, std::int32_t h, bool, float* depth) {
            asked.push_back(name);
            EXPECT_EQ(x, kPointerX);
            EXPECT_EQ(y, kPointerY);
            EXPECT_EQ(w * h, 1) << "the search looks at one pixel";
            const auto found = answers.find(name);
            if (found == answers.end()) return AttrRef();
            if (found->second.second) *depth = *found->second.second;
            return found->second.first;
        });
    }
    void TearDown() override {
        answers.clear();
        viewport.reset();
        UnitTest::TearDown();
    }

    BeamwrightCOIHandlesLayer& handles() const {
        return static_cast<BeamwrightCOIHandlesLayer&>(
            pluginObject<ViewportLayer>(static_cast<PluginObjectHandle*>(layer->handle())));
    }
    /// What the host answers to one layer's pick, at an optional depth.
    void answer(const char* name, AttrRef group, std::optional<float> depth) {
        answers[name] = {std::move(group), depth};
    }
    /// The hovered hash after a plain move with the current answers.
    std::uint64_t hoverAfterMove() {
        layer->event(mouse("MouseMove"));
        return handles().getHoveredLocation();
    }

    const ViewportLayerPluginSuite suite =
        buildViewportLayerSuite(&ViewportLayer::create<BeamwrightCOIHandlesLayer>);
    sorrel::ViewerDelegate delegate;
    std::unique_ptr<sorrel::Viewport> viewport;
    sorrel::LayerObject* layer = nullptr;
    RecordingLayer* above = nullptr;
    std::map<std::string, std::pair<AttrRef, std::optional<float>>> answers;
    std::vector<std::string> asked;
};

TEST_F(HandlesLayerState, OptionsReadTheirTypesAndOnlyAChangedScaleRedraws) {
    EXPECT_EQ(layer->getOption("ViewportLayer.IsUILayer").intValue(), 1) << "before setup too";
    layer->setOption("Enabled", sorrel::intAttr(7));
    EXPECT_TRUE(handles().isEnabled());
    EXPECT_FALSE(layer->getOption("Enabled")) << "set-only keys read back as null";
    layer->setOption("Enabled", sorrel::doubleAttr(1.0));
    EXPECT_FALSE(handles().isEnabled()) << "only an integer attribute counts";
    layer->setOption("SomethingElse", sorrel::intAttr(1));
    EXPECT_FALSE(handles().isEnabled());
    EXPECT_EQ(viewport->dirtyCount(), 0u) << "neither Enabled nor an unknown option redraws";

    // The scale is clamped to [0.01, 10]; what is no double or no number falls back.
    const std::pair<AttrRef, double> scales[] = {
        {sorrel::doubleAttr(1.0), 1.0},   {sorrel::doubleAttr(2.0), 2.0},
        {sorrel::doubleAttr(2.0), 2.0},   {sorrel::doubleAttr(20.0), 10.0},
        {sorrel::doubleAttr(30.0), 10.0}, {sorrel::doubleAttr(0.001), 0.01},
        {sorrel::intAttr(5), 1.0},        {sorrel::doubleAttr(std::nan("")), 10.0},
        {sorrel::doubleAttr(-3.0), 0.01},
    };
    double previous = handles().getManipulatorScale();
    for (const auto& [value, scale] : scales) {
        const std::uint64_t redraws = viewport->dirtyCount();
        layer->setOption("Manipulator.Scale", value);
        EXPECT_EQ(handles().getManipulatorScale(), scale) << value.describe();
        EXPECT_EQ(viewport->dirtyCount() - redraws, scale != previous ? 1u : 0u)
            << value.describe();
        previous = scale;
    }
}

TEST_F(HandlesLayerState, ExcludedLocationsAreHashedAndReplacedWhole) {
    const auto excluded = [this] { return handles().getExcludedLocations(); };
    using Set = std::unordered_set<std::uint64_t>;
    const char* option = "ViewportLayer.ExcludedLocationsPicking";

    layer->setOption(option, strings({"/root/a", "/root/b", "/root/c", "/root/a"}));
    EXPECT_EQ(excluded(), (Set{hashOf("/root/a"), hashOf("/root/b"), hashOf("/root/c")}));
    layer->setOption(option, strings({"/root/d"}));
    EXPECT_EQ(excluded(), Set{hashOf("/root/d")}) << "a new list replaces the old one";
    for (const AttrRef& emptying : {strings({}), AttrRef(), sorrel::intAttr(1)}) {
        layer->setOption(option, strings({"/root/a"}));
        layer->setOption(option, emptying);
        EXPECT_TRUE(excluded().empty()) << emptying.describe();
    }
    EXPECT_EQ(viewport->dirtyCount(), 0u);
}

TEST_F(HandlesLayerState, HoverFollowsPlainMovesAndAsksForARedrawOnlyOnChange) {
    layer->setOption("Enabled", sorrel::intAttr(1));
    answer(kBelow, hit("/root/a"), 0.5f);
    EXPECT_EQ(hoverAfterMove(), hashOf("/root/a"));
    EXPECT_EQ(asked, (std::vector<std::string>{kBelow, kHandlesName, kAbove}))
        << "every layer in order";

    answer(kBelow, hit("/root/b"), 0.5f);
    const std::uint64_t b = hashOf("/root/b");
    const struct {
        AttrRef event;
        std::uint64_t hover;
        bool redraws;
        bool searches;
    } steps[] = {
        {mouse("MouseMove"), b, true, true},
        {mouse("MouseMove"), b, false, true},
        {mouse("MouseButtonPress", {kLeftButton, kLeftButton}), b, false,
         false},                                                 // a press keeps the hover
        {mouse("MouseMove", {0, kLeftButton}), 0, true, false},  // a drag ends it
        {mouse("MouseMove"), b, true, true},
        {mouse("MouseMove", {0, 0, kShiftModifier}), 0, true,
         false},  // so does a move with a modifier
        {mouse("MouseMove"), b, true, true},
        {mouse("Leave"), 0, true, false},
        {mouse("Leave"), 0, false, false},
        {mouse("MouseMove"), b, true, true},
        // No kind, or no data: nothing changes.
        {sorrel::groupAttr({{"type", sorrel::intAttr(1)}, {"data", sorrel::groupAttr({})}}), b,
         false, false},
        {sorrel::groupAttr({{"type", sorrel::stringAttr("Leave")}}), b, false, false},
    };
    for (std::size_t i = 0; i < std::size(steps); ++i) {
        asked.clear();
        const std::uint64_t redraws = viewport->dirtyCount();
        EXPECT_FALSE(layer->event(steps[i].event)) << "never used up, step " << i;
        EXPECT_EQ(handles().getHoveredLocation(), steps[i].hover) << "step " << i;
        EXPECT_EQ(viewport->dirtyCount() - redraws, steps[i].redraws ? 1u : 0u) << "step " << i;
        EXPECT_EQ(!asked.empty(), steps[i].searches) << "step " << i;
    }

    // Switched off, the hover is kept as it was.
    answers.clear();
    layer->setOption("Enabled", sorrel::intAttr(0));
    EXPECT_EQ(hoverAfterMove(), b);
    layer->setOption("Enabled", sorrel::intAttr(1));
    EXPECT_EQ(hoverAfterMove(), 0u);
}

TEST_F(HandlesLayerState, NearestHitWinsAndAUILayerBeatsEveryRealDepth) {
    layer->setOption("Enabled", sorrel::intAttr(1));
    const std::uint64_t a = hashOf("/root/a");
    const std::uint64_t b = hashOf("/root/b");
    const std::optional<float> noDepth;
    answer(kBelow, hit("/root/a"), 0.5f);
    answer(kAbove, hit("/root/b"), 0.5f);
    EXPECT_EQ(hoverAfterMove(), b) << "equal depths: the later layer";
    answer(kAbove, hit("/root/b"), 0.75f);
    EXPECT_EQ(hoverAfterMove(), a) << "the further hit is passed over";
    answer(kBelow, hit("/root/a"), noDepth);
    EXPECT_EQ(hoverAfterMove(), b) << "a hit without a depth is passed over";
    answer(kAbove, hit("/root/b"), 1.5f);
    EXPECT_EQ(hoverAfterMove(), 0u) << "beyond the far plane";

    answer(kBelow, hit("/root/a"), 0.1f);
    answer(kAbove, hit("/root/b"), 0.9f);
    above->answers.emplace_back("ViewportLayer.IsUILayer", sorrel::intAttr(1));
    EXPECT_EQ(hoverAfterMove(), b) << "a UI layer beats a nearer real depth";
    answer(kAbove, hit("/root/b"), noDepth);
    EXPECT_EQ(hoverAfterMove(), b) << "also without a depth";
    above->answers.back().second = sorrel::stringAttr("1");
    EXPECT_EQ(hoverAfterMove(), a) << "only an integer says UI layer";

    // Within one map the highest key with a location wins; a nearer hit that
    // holds no location keeps what a further layer found.
    answers.clear();
    answer(kBelow,
           sorrel::groupAttr({{"3", at("/root/a")},
                              {"9", at("/root/b")},
                              {"12", sorrel::intAttr(4)},
                              {"15", sorrel::groupAttr({{"name", sorrel::stringAttr("x")}})}}),
           0.5f);
    EXPECT_EQ(hoverAfterMove(), b);
    answer(kAbove,
           sorrel::groupAttr({{"2", sorrel::groupAttr({{"location", sorrel::intAttr(1)}})}}), 0.2f);
    EXPECT_EQ(hoverAfterMove(), b);
}

// Each flag is read once per process, so each case runs in a process of its own.
TEST_F(HandlesLayerState, HoverFlagsCountOnlyForTheExactTextOne) {
    using Tessera::Sorrel::ViewerUtils::environmentFlagIsSet;
    EXPECT_TRUE(environmentFlagIsSet("1"));
    for (const char* off : {"1 ", "11", "0", "", "true", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(environmentFlagIsSet(off)) << (off != nullptr ? off : "unset");

    GTEST_FLAG_SET(death_test_style, "threadsafe");
    layer->setOption("Enabled", sorrel::intAttr(1));
    answer(kBelow, hit("/root/a"), 0.5f);
    answer(kHandlesName, hit("/root/b"), 0.5f);
    // Exits 0 when the expectation holds; _Exit leaves the fixture as it is.
    const auto exitWith = [](bool holds) { std::_Exit(holds ? 0 : 1); };
    EXPECT_EXIT(
        {
            setenv("SORREL_BEAMWRIGHT_DISABLE_HOVER_EFFECT", "1", 1);
            setenv("SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY", "1", 1);
            exitWith(hoverAfterMove() == 0 && asked.empty());
        },
        ::testing::ExitedWithCode(0), "")
        << "hover switched off: no pick at all";
    EXPECT_EXIT(
        {
            setenv("SORREL_BEAMWRIGHT_DISABLE_HOVER_EFFECT", "10", 1);
            setenv("SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY", "1", 1);
            const bool onlyHandles = hoverAfterMove() == hashOf("/root/b") &&
                                     asked == std::vector<std::string>{kHandlesName};
            // Read once: a later change of the environment has no effect.
            setenv("SORREL_BEAMWRIGHT_HOVER_EFFECT_ON_HANDLES_ONLY", "0", 1);
            setenv("SORREL_BEAMWRIGHT_DISABLE_HOVER_EFFECT", "1", 1);
            exitWith(onlyHandles && hoverAfterMove() == hashOf("/root/b") && asked.size() == 2);
        },
        ::testing::ExitedWithCode(0), "")
        << "hover on handles only asks this layer alone";
}

}  // namespace
