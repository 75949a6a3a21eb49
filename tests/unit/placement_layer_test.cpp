// BeamwrightLayer against recording siblings: options, the mouse event table,
// the snapping request and reply, and package commands.

#include "placement/placement_layer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "frame/plugin_object_handle.h"
#include "frame/viewport_layer_suite.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "tests/support/recording_layers.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;
using sorrel::MouseButtons;
using sorrel::names::kControlModifier;
using sorrel::names::kShiftModifier;
using testing_support::RecordingLayer;
using testing_support::RecordingManipulator;

namespace {

// Where every event of these tests points, pixels.
constexpr int kPointerX = 10;
constexpr int kPointerY = 20;

AttrRef mouse(const char* type, const MouseButtons& state) {
    return sorrel::mouseEvent(type, kPointerX, kPointerY, state);
}

AttrRef reply(std::vector<float> point, std::vector<float> normal) {
    return sorrel::groupAttr({{"point", sorrel::floatsAttr(std::move(point))},
                              {"normal", sorrel::floatsAttr(std::move(normal))}});
}

class PlacementLayer : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        viewport = std::make_unique<sorrel::Viewport>(delegate, 640, 480);
        viewport->camera().origin[1] = 10.0;
        layer =
            &viewport->addPluginLayer("BeamwrightLayer", reinterpret_cast<void* const*>(&suite));
        selection = addRecordingLayer("SelectionLayer");
        snapping = addRecordingLayer("SnappingLayer");
        handles = addRecordingLayer("BeamwrightCOIHandlesLayer");
        auto recording = std::make_unique<RecordingManipulator>(2);
        manipulator = recording.get();
        viewport->addManipulator(std::move(recording));
        snapping->answers.emplace_back("SnappingLayer.PickOnDemand", reply({1, 0, 2}, {0, 2, 0}));
        delegate.defineMethod("CreateLightPackage", [this](const AttrRef& group) {
            packages.push_back(group);
            return sorrel::stringAttr("ignored");
        });
    }
    void TearDown() override {
        packages.clear();
        delegate.removeComponents();
        delegate.defineMethod("CreateLightPackage", {});
        viewport.reset();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    RecordingLayer* addRecordingLayer(const std::string& name) {
        return static_cast<RecordingLayer*>(
            &viewport->addHostLayer(std::make_unique<RecordingLayer>(name)));
    }
    BeamwrightLayer& beamwright() {
        return static_cast<BeamwrightLayer&>(
            pluginObject<ViewportLayer>(static_cast<PluginObjectHandle*>(layer->handle())));
    }
    void enableIn(const char* mode) {
        layer->setOption("Enabled", sorrel::intAttr(1));
        layer->setOption("Mode", sorrel::stringAttr(mode));
    }
    std::size_t sent(const std::string& option, std::size_t handle = 0) const {
        return manipulator->handles[handle].valuesOf(option).size();
    }
    AttrRef lastLightData(std::size_t handle = 0) const {
        const auto values = manipulator->handles[handle].valuesOf("LightData");
        return values.empty() ? AttrRef() : values.back();
    }
    bool flagOption(const char* name) const { return layer->getOption(name).intValue() == 1; }

    const ViewportLayerPluginSuite suite =
        buildViewportLayerSuite(&ViewportLayer::create<BeamwrightLayer>);
    sorrel::ViewerDelegate delegate;
    std::unique_ptr<sorrel::Viewport> viewport;
    sorrel::LayerObject* layer = nullptr;
    RecordingLayer* selection = nullptr;
    RecordingLayer* snapping = nullptr;
    RecordingLayer* handles = nullptr;
    RecordingManipulator* manipulator = nullptr;
    std::vector<AttrRef> packages;
};

TEST_F(PlacementLayer, EveryLabelSelectsItsModeAndOnlyItsFlagsAndAChangeMarksTheViewport) {
    const char* const labels[] = {"Edit Light Materials",
                                  "Fixed Rotation",
                                  "Normal",
                                  "Specular",
                                  "Reflection",
                                  "Shadow",
                                  "Face - Center",
                                  "Face - Center - Oriented to Normal",
                                  "Object Surface",
                                  "Object Surface - Oriented to Normal",
                                  "Object - Center"};
    for (const char* flag : {"PositionLocked", "FixedRotation", "HandleAtOrigin", "ShadowHandles"})
        EXPECT_FALSE(flagOption(flag)) << flag;
    int value = 1;
    for (const char* label : labels) {
        layer->setOption("Mode", sorrel::stringAttr(label));
        layer->setOption("Mode", sorrel::stringAttr(label));
        EXPECT_EQ(viewport->dirtyCount(), static_cast<std::uint64_t>(value))
            << label << ": the same mode twice marks once";
        EXPECT_EQ(static_cast<int>(beamwright().placementMode()), value) << label;
        EXPECT_EQ(flagOption("PositionLocked"), value == 1) << label;
        EXPECT_EQ(flagOption("FixedRotation"), value == 2) << label;
        EXPECT_EQ(flagOption("ShadowHandles"), value == 6) << label;
        EXPECT_EQ(flagOption("HandleAtOrigin"), value >= 7) << label << ": on the snapped point";
        ++value;
    }
    layer->setOption("Mode", sorrel::stringAttr("object - Center"));
    EXPECT_EQ(beamwright().placementMode(), BeamwrightLayer::PlacementMode::ModeNone)
        << "labels match exactly";
    EXPECT_FALSE(flagOption("HandleAtOrigin"));
    EXPECT_FALSE(layer->getOption("Mode")) << "set-only keys read back as null";
}

TEST_F(PlacementLayer, EnabledReachesTheSelectionLayerFirstAndTheHandlesLayerUnchanged) {
    layer->setOption("Enabled", sorrel::intAttr(1));
    layer->setOption("Enabled", sorrel::intAttr(7));
    EXPECT_EQ(viewport->dirtyCount(), 1u);
    const auto modes = selection->valuesOf("BeamwrightSelectionMode");
    ASSERT_EQ(modes.size(), 2u);
    EXPECT_EQ(modes[1].intValue(), 1);
    const auto forwarded = handles->valuesOf("Enabled");
    ASSERT_EQ(forwarded.size(), 2u);
    EXPECT_EQ(forwarded[1].intValue(), 7) << "the handles layer gets the very attribute";

    layer->setOption("Enabled", sorrel::stringAttr("yes"));
    EXPECT_FALSE(beamwright().isEnabled()) << "a wrongly typed value switches the layer off";
    EXPECT_EQ(selection->valuesOf("BeamwrightSelectionMode").back().intValue(), 0);
    layer->setOption("SomethingElse", sorrel::intAttr(3));
    EXPECT_EQ(handles->valuesOf("SomethingElse").size(), 1u);
    EXPECT_EQ(handles->received.back().first, "SomethingElse");
}

TEST_F(PlacementLayer, MouseEventsSendModifiersPlacementsAndPackagesByTheTable) {
    struct Row {
        const char* type;
        int button, buttons, modifiers;
        bool modifiersSent, lightDataSent, package, result;
    };
    const Row rows[] = {
        {"MouseButtonPress", 1, 1, kShiftModifier, true, false, true, true},
        {"MouseButtonPress", 1, 1, 0, true, true, false, false},
        {"MouseButtonPress", 3, 1, 0, true, true, false, false},
        {"MouseButtonPress", 3, 4, 0, true, false, false, false},
        {"MouseMove", 0, 1, 0, true, true, false, false},
        {"MouseMove", 1, 0, 0, true, true, false, false},
        {"MouseMove", 0, 0, 0, true, false, false, false},
        {"MouseMove", 0, 1, kShiftModifier, true, false, false, false},
        {"MouseButtonPress", 1, 1, kControlModifier, true, false, false, false},
        {"MouseButtonPress", 1, 1, kShiftModifier | kControlModifier, true, false, false, false},
        {"MouseButtonRelease", 1, 0, 0, false, false, false, false},
        {"KeyPress", 1, 1, kShiftModifier, false, false, false, false},
    };
    enableIn("Normal");
    for (const Row& row : rows) {
        for (auto& handle : manipulator->handles) handle.received.clear();
        packages.clear();
        const std::string where = std::string(row.type) + " button " + std::to_string(row.button) +
                                  " buttons " + std::to_string(row.buttons) + " modifiers " +
                                  std::to_string(row.modifiers);
        EXPECT_EQ(layer->event(mouse(row.type, {row.button, row.buttons, row.modifiers})),
                  row.result)
            << where;
        for (std::size_t h = 0; h < 2; ++h) {
            EXPECT_EQ(sent("CurrentModifiers", h), row.modifiersSent ? 1u : 0u) << where;
            EXPECT_EQ(sent("LightData", h), row.lightDataSent ? 1u : 0u) << where;
        }
        EXPECT_EQ(packages.size(), row.package ? 1u : 0u) << where;
    }
}

TEST_F(PlacementLayer, DisabledLayerOrMissingDataSendsNothing) {
    EXPECT_FALSE(layer->event(mouse("MouseButtonPress", {1, 1, kShiftModifier})));
    enableIn("Normal");
    EXPECT_FALSE(layer->event(sorrel::groupAttr({{"type", sorrel::stringAttr("MouseMove")}})));
    EXPECT_TRUE(manipulator->handles[0].received.empty());
    EXPECT_TRUE(packages.empty());
    EXPECT_EQ(snapping->received.size(), 0u);
}

TEST_F(PlacementLayer, LeftDragSendsOnePlacementToEveryHandle) {
    enableIn("Normal");
    layer->setOption("DefaultDistance", sorrel::doubleAttr(4.0));
    layer->event(mouse("MouseMove", {0, 1, 0}));
    const AttrRef first = lastLightData(0);
    ASSERT_TRUE(first);
    EXPECT_EQ(first.get(), lastLightData(1).get()) << "the very same group on each handle";
    // Normal: the light stands on the unit normal, `distance` from the point.
    EXPECT_EQ(first.child("position").doubleValue(0), 1.0);
    EXPECT_EQ(first.child("position").doubleValue(1), 4.0);
    EXPECT_EQ(first.child("direction").doubleValue(1), -1.0);
    EXPECT_EQ(first.child("distance").doubleValue(), 4.0);
    EXPECT_EQ(first.child("strictPosition").intValue(), 0);

    const auto requests = snapping->valuesOf("SnappingLayer.PreparePickOnDemand");
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].describe(), "{x: int(10), y: int(20)}");

    // Nothing under the cursor: the handles hear a null "LightData".
    snapping->answers.clear();
    layer->event(mouse("MouseMove", {0, 1, 0}));
    EXPECT_EQ(sent("LightData"), 2u);
    EXPECT_FALSE(lastLightData());
}

TEST_F(PlacementLayer, RequestsAndRepliesFollowTheMode) {
    struct Case {
        const char* mode;
        const char* strategy;
        bool strict, fixed, readsCamera;
    };
    const Case cases[] = {
        {"Face - Center", "Face", true, true, false},
        {"Face - Center - Oriented to Normal", "FaceNormal", true, false, false},
        {"Object Surface", "Surface", true, true, false},
        {"Object Surface - Oriented to Normal", "SurfaceNormal", true, false, false},
        {"Object - Center", "ObjectCentre", true, true, false},
        {"Specular", nullptr, false, false, true},
        {"Reflection", nullptr, false, false, true},
        {"Shadow", nullptr, false, false, false},
    };
    layer->setOption("Enabled", sorrel::intAttr(1));
    for (const Case& c : cases) {
        layer->setOption("Mode", sorrel::stringAttr(c.mode));
        snapping->received.clear();
        sorrel::PluginHost::instance().clearRequests();
        layer->event(mouse("MouseButtonPress", {1, 1, 0}));
        const auto& tables = sorrel::PluginHost::instance().requests();
        EXPECT_EQ(std::count(tables.begin(), tables.end(), "ViewportCameraHost 2"),
                  c.readsCamera ? 1 : 0)
            << c.mode << ": only the aiming modes that mirror the eye read the camera";
        const auto requests = snapping->valuesOf("SnappingLayer.PreparePickOnDemand");
        ASSERT_EQ(requests.size(), 1u) << c.mode;
        const AttrRef strategy = requests[0].child("StrategyType");
        EXPECT_EQ(strategy ? strategy.stringValue() : "", c.strategy ? c.strategy : "") << c.mode;
        const AttrRef data = lastLightData();
        ASSERT_TRUE(data) << c.mode;
        EXPECT_EQ(data.child("strictPosition").intValue(), c.strict) << c.mode;
        EXPECT_EQ(data.child("orientationFixed").intValue(), c.fixed) << c.mode;
        if (c.strict) {
            EXPECT_EQ(data.child("position").doubleValue(2), 2.0) << c.mode;
        }
    }

    // Malformed replies give no placement.
    layer->setOption("Mode", sorrel::stringAttr("Normal"));
    const AttrRef malformed[] = {
        reply({1, 0, 2}, {0, 1, 0, 0}),
        sorrel::groupAttr(
            {{"point", sorrel::doublesAttr({1, 0, 2})}, {"normal", sorrel::floatsAttr({0, 1, 0})}}),
        sorrel::groupAttr({{"point", sorrel::floatsAttr({1, 0, 2})}}),
        sorrel::stringAttr("not a group"),
    };
    for (const AttrRef& answer : malformed) {
        snapping->answers = {{"SnappingLayer.PickOnDemand", answer}};
        layer->event(mouse("MouseMove", {0, 1, 0}));
        EXPECT_FALSE(lastLightData()) << answer.describe();
    }
}

TEST_F(PlacementLayer, ShiftPressCreatesAPackageAimedAlongThePlacement) {
    enableIn("Normal");
    layer->setOption("MarquetteNodeName", sorrel::stringAttr("rig"));
    layer->setOption("DefaultShadowFallDistance", sorrel::doubleAttr(2.5));
    snapping->answers = {{"SnappingLayer.PickOnDemand", reply({0, 0, 0}, {0, 1, 0})}};
    EXPECT_TRUE(layer->event(mouse("MouseButtonPress", {1, 1, kShiftModifier})));
    ASSERT_EQ(packages.size(), 1u);
    const AttrRef& package = packages[0];
    EXPECT_EQ(package.describe().substr(0, 78),
              "{PackageClassName: string(), MarquetteNodeName: string(rig), Position: double(");
    const double expected[][3] = {{0, 5, 0}, {90, 0, -180}};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(package.child("Position").doubleValue(i), expected[0][i]);
        EXPECT_EQ(package.child("Rotation").doubleValue(i), expected[1][i]) << "degrees";
    }
    EXPECT_EQ(package.child("CenterOfInterest").doubleValue(), 5.0);
    EXPECT_EQ(package.child("ShadowFallDistance").doubleValue(), 2.5);
    EXPECT_EQ(delegate.methodCalls(), std::vector<std::string>{"CreateLightPackage"});
    EXPECT_EQ(sent("LightData"), 0u);

    // Nothing under the cursor creates nothing.
    snapping->answers.clear();
    EXPECT_FALSE(layer->event(mouse("MouseButtonPress", {1, 1, kShiftModifier})));
    EXPECT_EQ(packages.size(), 1u);
}

TEST_F(PlacementLayer, CloneMarkerOnlyAtTheStartTakesDistancesFromTheSelection) {
    delegate.scene().set(
        "/root/world/pkg",
        sorrel::groupAttr(
            {{"geometry", sorrel::groupAttr({{"centerOfInterest", sorrel::doubleAttr(12.5)},
                                             {"shadowFallDistance", sorrel::doubleAttr(7.5)}})}}));
    delegate.defineMethod("FindPackageLocationPathForCurrentSelection",
                          [](const AttrRef&) { return sorrel::stringAttr("/root/world/pkg"); });
    enableIn("Normal");
    struct Case {
        const char* className;
        bool clone;
    };
    const Case cases[] = {{"Beamwright.ClonePackage", true},
                          {"Beamwright.ClonePackage.Spot", true},
                          {"Prefix.Beamwright.ClonePackage", false},
                          {"Beamwright.ClonePackageBeamwright.ClonePackage", false},
                          {"", false}};
    for (const Case& c : cases) {
        layer->setOption("PackageClassName", sorrel::stringAttr(c.className));
        packages.clear();
        const std::size_t callsBefore = delegate.methodCalls().size();
        layer->event(mouse("MouseButtonPress", {1, 1, kShiftModifier}));
        ASSERT_EQ(packages.size(), 1u) << c.className;
        EXPECT_EQ(delegate.methodCalls().size() - callsBefore, c.clone ? 2u : 1u) << c.className;
        EXPECT_EQ(packages[0].child("PackageClassName").stringValue(), c.className);
        EXPECT_EQ(packages[0].child("CenterOfInterest").doubleValue(), c.clone ? 12.5 : 5.0);
        EXPECT_EQ(packages[0].child("ShadowFallDistance").doubleValue(), c.clone ? 7.5 : 5.0);
        EXPECT_EQ(packages[0].child("Position").doubleValue(1), c.clone ? 12.5 : 5.0);
    }
}

}  // namespace
