// BeamwrightCOIHandlesLayer without GL: its options, and the hover search over
// the viewport's layers, whose pick answers the host gives here by layer name.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer_suite.h"
#include "handles/handles_layer.h"
#include "handles/handles_layer_support.h"
#include "host/viewer_delegate.h"
#include "host/viewport.h"
#include "tests/support/recording_layers.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;
using testing_support::RecordingLayer;

namespace {

constexpr const char* kHandlesName = "BeamwrightCOIHandlesLayer";
constexpr const char* kBelow = "SelectionLayer";  // before the handles layer
constexpr const char* kAbove = "SnappingLayer";   // after it
constexpr int kLeftButton = 1;
constexpr int kShift = 0x02000000;

std::uint64_t hashOf(const char* path) { return hashOfText(path).words[0]; }

AttrRef mouse(const char* type, int buttons = 0, int modifiers = 0) {
    return sorrel::groupAttr(
        {{"type", sorrel::stringAttr(type)},
         {"data", sorrel::groupAttr({{"x", sorrel::intAttr(30)},
                                     {"y", sorrel::intAttr(40)},
                                     {"buttons", sorrel::intAttr(buttons)},
                                     {"modifiers", sorrel::intAttr(modifiers)}})}});
}

/// A picking group entry as a light's picker object reads.
AttrRef at(const char* path) { return sorrel::groupAttr({{"location", sorrel::stringAttr(path)}}); }

AttrRef strings(std::vector<std::string> texts) {
    return AttrRef(sorrel::AttributeModel::instance().makeStrings(std::move(texts)));
}

class HandlesLayerState : public testing_support::UnitTest {
protected:
    /// What the host answers to one layer's pick.
    struct Answer {
        AttrRef group;
        std::optional<float> depth;
    };

    void SetUp() override {
        UnitTest::SetUp();
        viewport = std::make_unique<sorrel::Viewport>(delegate, 640, 480);
        below = addRecordingLayer(kBelow);
        layer = &viewport->addPluginLayer(kHandlesName, reinterpret_cast<void* const*>(&suite));
        above = addRecordingLayer(kAbove);
        viewport->pickHandler = [this](const std::string& name, std::int32_t x, std::int32_t y,
                                       std::int32_t w, std::int32_t h, bool, float* depth) {
            asked.push_back(name);
            EXPECT_EQ(x, 30);
            EXPECT_EQ(y, 40);
            EXPECT_EQ(w * h, 1) << "the search looks at one pixel";
            const auto found = answers.find(name);
            if (found == answers.end()) return AttrRef();
            if (found->second.depth) *depth = *found->second.depth;
            return found->second.group;
        };
    }
    void TearDown() override {
        answers.clear();
        viewport.reset();
        UnitTest::TearDown();
    }

    RecordingLayer* addRecordingLayer(const char* name) {
        return static_cast<RecordingLayer*>(
            &viewport->addHostLayer(std::make_unique<RecordingLayer>(name)));
    }
    BeamwrightCOIHandlesLayer& handles() const {
        return static_cast<BeamwrightCOIHandlesLayer&>(
            pluginObject<ViewportLayer>(static_cast<PluginObjectHandle*>(layer->handle())));
    }
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
    RecordingLayer* below = nullptr;
    RecordingLayer* above = nullptr;
    std::map<std::string, Answer> answers;
    std::vector<std::string> asked;
};

TEST_F(HandlesLayerState, EnabledReadsOnlyIntegersAndTheLayerSaysItIsAUILayer) {
    EXPECT_EQ(layer->getOption("ViewportLayer.IsUILayer").intValue(), 1) << "before setup too";
    layer->draw();  // switched off: returns before any GL call, so no context is needed
    layer->pickerDraw(0, 0, 1, 1, AttrRef());

    layer->setOption("Enabled", sorrel::intAttr(7));
    EXPECT_TRUE(handles().isEnabled());
    EXPECT_FALSE(layer->getOption("Enabled")) << "set-only keys read back as null";
    layer->setOption("Enabled", sorrel::doubleAttr(1.0));
    EXPECT_FALSE(handles().isEnabled()) << "only an integer attribute counts";
    layer->setOption("Enabled", sorrel::intAttr(1));
    layer->setOption("SomethingElse", sorrel::intAttr(0));
    EXPECT_TRUE(handles().isEnabled());
    EXPECT_EQ(viewport->dirtyCount, 0u)
        << "neither Enabled nor an unknown option asks for a redraw";
}

TEST_F(HandlesLayerState, ScaleIsClampedAndRedrawsOnlyWhenItChanges) {
    struct Step {
        AttrRef value;
        double scale;
        std::uint64_t redraws;
    };
    const Step steps[] = {
        {sorrel::doubleAttr(1.0), 1.0, 0},   {sorrel::doubleAttr(2.0), 2.0, 1},
        {sorrel::doubleAttr(2.0), 2.0, 1},   {sorrel::doubleAttr(20.0), 10.0, 2},
        {sorrel::doubleAttr(30.0), 10.0, 2}, {sorrel::doubleAttr(0.001), 0.01, 3},
        {sorrel::doubleAttr(0.01), 0.01, 3}, {sorrel::doubleAttr(10.0), 10.0, 4},
        {sorrel::intAttr(5), 1.0, 5},        {sorrel::doubleAttr(std::nan("")), 10.0, 6},
        {sorrel::doubleAttr(-3.0), 0.01, 7},
    };
    for (const Step& step : steps) {
        layer->setOption("Manipulator.Scale", step.value);
        EXPECT_EQ(handles().getManipulatorScale(), step.scale) << step.value.describe();
        EXPECT_EQ(viewport->dirtyCount, step.redraws) << step.value.describe();
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

    const AttrRef emptying[] = {strings({}), AttrRef(), sorrel::intAttr(1)};
    for (std::size_t i = 0; i < std::size(emptying); ++i) {
        layer->setOption(option, strings({"/root/a"}));
        layer->setOption(option, emptying[i]);
        EXPECT_TRUE(excluded().empty()) << "case " << i;
    }
    EXPECT_EQ(viewport->dirtyCount, 0u);
}

TEST_F(HandlesLayerState, HoverFollowsPlainMovesAndAsksForARedrawOnlyOnChange) {
    layer->setOption("Enabled", sorrel::intAttr(1));
    answer(kBelow, sorrel::groupAttr({{"7", at("/root/a")}}), 0.5f);

    EXPECT_EQ(hoverAfterMove(), hashOf("/root/a"));
    EXPECT_EQ(asked, (std::vector<std::string>{kBelow, kHandlesName, kAbove}))
        << "every layer in order";
    EXPECT_EQ(hoverAfterMove(), hashOf("/root/a"));
    EXPECT_EQ(viewport->dirtyCount, 1u) << "the same light twice redraws once";

    answer(kBelow, sorrel::groupAttr({{"7", at("/root/b")}}), 0.5f);
    EXPECT_EQ(hoverAfterMove(), hashOf("/root/b"));
    EXPECT_EQ(viewport->dirtyCount, 2u);

    // A press does not end a hover; a move with a button or a modifier does, unsearched.
    asked.clear();
    EXPECT_FALSE(layer->event(mouse("MouseButtonPress", kLeftButton)));
    EXPECT_EQ(handles().getHoveredLocation(), hashOf("/root/b"));
    EXPECT_FALSE(layer->event(mouse("MouseMove", kLeftButton)));
    EXPECT_EQ(handles().getHoveredLocation(), 0u);
    hoverAfterMove();
    EXPECT_FALSE(layer->event(mouse("MouseMove", 0, kShift)));
    EXPECT_EQ(handles().getHoveredLocation(), 0u);
    EXPECT_EQ(asked.size(), 3u) << "only the plain move searched";
    EXPECT_EQ(viewport->dirtyCount, 5u);

    hoverAfterMove();
    EXPECT_FALSE(layer->event(mouse("Leave")));
    EXPECT_FALSE(layer->event(mouse("Leave")));
    EXPECT_EQ(handles().getHoveredLocation(), 0u);
    EXPECT_EQ(viewport->dirtyCount, 7u) << "a second Leave changes nothing";

    // Events that match no kind, or carry no data, change nothing.
    hoverAfterMove();
    const std::uint64_t redraws = viewport->dirtyCount;
    layer->event(
        sorrel::groupAttr({{"type", sorrel::intAttr(1)}, {"data", sorrel::groupAttr({})}}));
    layer->event(sorrel::groupAttr({{"type", sorrel::stringAttr("Leave")}}));
    EXPECT_EQ(handles().getHoveredLocation(), hashOf("/root/b"));

    // Switched off, the hover is kept as it was.
    answers.clear();
    layer->setOption("Enabled", sorrel::intAttr(0));
    EXPECT_EQ(hoverAfterMove(), hashOf("/root/b"));
    layer->setOption("Enabled", sorrel::intAttr(1));
    EXPECT_EQ(hoverAfterMove(), 0u);
    EXPECT_EQ(hoverAfterMove(), 0u);
    EXPECT_EQ(viewport->dirtyCount, redraws + 1);
}

TEST_F(HandlesLayerState, NearestHitWinsAndAUILayerBeatsEveryRealDepth) {
    layer->setOption("Enabled", sorrel::intAttr(1));
    const auto a = [] { return sorrel::groupAttr({{"1", at("/root/a")}}); };
    const auto b = [] { return sorrel::groupAttr({{"1", at("/root/b")}}); };
    const std::uint64_t hashA = hashOf("/root/a");
    const std::uint64_t hashB = hashOf("/root/b");
    const std::optional<float> noDepth;

    answer(kBelow, a(), 0.5f);
    answer(kAbove, b(), 0.5f);
    EXPECT_EQ(hoverAfterMove(), hashB) << "equal depths: the later layer";
    answer(kAbove, b(), 0.75f);
    EXPECT_EQ(hoverAfterMove(), hashA) << "the further hit is passed over";
    answer(kBelow, a(), noDepth);
    EXPECT_EQ(hoverAfterMove(), hashB) << "a hit without a depth is passed over";
    answer(kAbove, b(), 1.5f);
    EXPECT_EQ(hoverAfterMove(), 0u) << "beyond the far plane";

    answer(kBelow, a(), 0.1f);
    answer(kAbove, b(), 0.9f);
    above->answers.emplace_back("ViewportLayer.IsUILayer", sorrel::intAttr(1));
    EXPECT_EQ(hoverAfterMove(), hashB) << "a UI layer beats a nearer real depth";
    answer(kAbove, b(), noDepth);
    EXPECT_EQ(hoverAfterMove(), hashB) << "also without a depth";
    above->answers.back().second = sorrel::stringAttr("1");
    EXPECT_EQ(hoverAfterMove(), hashA) << "only an integer says UI layer";

    // Within one map the highest key with a location wins.
    answers.clear();
    answer(kBelow,
           sorrel::groupAttr({{"3", at("/root/a")},
                              {"9", at("/root/b")},
                              {"12", sorrel::intAttr(4)},
                              {"15", sorrel::groupAttr({{"name", sorrel::stringAttr("x")}})}}),
           0.5f);
    EXPECT_EQ(hoverAfterMove(), hashB);
    // A nearer hit that holds no location keeps what a further layer found.
    answer(kAbove,
           sorrel::groupAttr({{"2", sorrel::groupAttr({{"location", sorrel::intAttr(1)}})}}), 0.2f);
    EXPECT_EQ(hoverAfterMove(), hashB);
}

// Each flag is read once per process, so each case runs in a process of its own.
TEST_F(HandlesLayerState, HoverFlagsCountOnlyForTheExactTextOne) {
    using Tessera::Sorrel::ViewerUtils::environmentFlagIsSet;
    EXPECT_TRUE(environmentFlagIsSet("1"));
    for (const char* off : {"1 ", "11", "0", "", "true"})
        EXPECT_FALSE(environmentFlagIsSet(off)) << off;
    EXPECT_FALSE(environmentFlagIsSet(nullptr));

    GTEST_FLAG_SET(death_test_style, "threadsafe");
    layer->setOption("Enabled", sorrel::intAttr(1));
    answer(kBelow, sorrel::groupAttr({{"1", at("/root/a")}}), 0.5f);
    answer(kHandlesName, sorrel::groupAttr({{"1", at("/root/b")}}), 0.5f);
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
