// What the window's mouse input becomes, case by case, without a window.
#include "apps/window/input_routing.h"

#include <gtest/gtest.h>

#include "host/core/names.h"

namespace {

using namespace viewer;
using sorrel::names::kAltModifier;
using sorrel::names::kControlModifier;
using sorrel::names::kLeftButton;
using sorrel::names::kMiddleButton;
using sorrel::names::kRightButton;
using sorrel::names::kShiftModifier;

constexpr InputState kIdleInViewport{Gesture::None, true, true};
constexpr InputState kIdleOverPanel{Gesture::None, false, false};

struct PressCase {
    const char* what;
    InputState state;
    int button;
    int modifiers;
    bool handleFound;
    bool asksForHandle;
    PressRoute route;
};

TEST(InputRouting, APressStartsTheGestureItsButtonKeysAndPlaceAskFor) {
    const PressCase cases[] = {
        {"plain left press on nothing",
         kIdleInViewport,
         kLeftButton,
         0,
         false,
         true,
         {Gesture::Plugin, true}},
        {"plain left press on a handle",
         kIdleInViewport,
         kLeftButton,
         0,
         true,
         true,
         {Gesture::Select, false}},
        {"Shift left press on a handle creates a package",
         kIdleInViewport,
         kLeftButton,
         kShiftModifier,
         true,
         false,
         {Gesture::Plugin, true}},
        {"Control left press goes to the layers",
         kIdleInViewport,
         kLeftButton,
         kControlModifier,
         false,
         false,
         {Gesture::Plugin, true}},
        {"right press goes to the layers",
         kIdleInViewport,
         kRightButton,
         0,
         true,
         false,
         {Gesture::Plugin, true}},
        {"Alt left orbits",
         kIdleInViewport,
         kLeftButton,
         kAltModifier,
         true,
         false,
         {Gesture::Orbit, false}},
        {"Alt middle pans",
         kIdleInViewport,
         kMiddleButton,
         kAltModifier,
         false,
         false,
         {Gesture::Pan, false}},
        {"Alt right dollies",
         kIdleInViewport,
         kRightButton,
         kAltModifier,
         false,
         false,
         {Gesture::Dolly, false}},
        {"Alt Shift left still orbits",
         kIdleInViewport,
         kLeftButton,
         kAltModifier | kShiftModifier,
         false,
         false,
         {Gesture::Orbit, false}},
        {"a press over the panel is the panel's",
         kIdleOverPanel,
         kLeftButton,
         0,
         false,
         false,
         {Gesture::Panel, false}},
        {"a second button in a drag goes to the layers",
         {Gesture::Plugin, true, true},
         kRightButton,
         0,
         false,
         false,
         {Gesture::Plugin, true}},
        {"a second button while orbiting changes nothing",
         {Gesture::Orbit, true, true},
         kLeftButton,
         0,
         true,
         false,
         {Gesture::Orbit, false}},
        {"a second press after a selection starts no placement",
         {Gesture::Select, true, true},
         kLeftButton,
         0,
         false,
         false,
         {Gesture::Select, false}},
        {"a press outside during a drag still reaches the layers",
         {Gesture::Plugin, false, true},
         kLeftButton,
         0,
         false,
         false,
         {Gesture::Plugin, true}},
    };
    for (const PressCase& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(pressAsksForHandle(c.state, c.button, c.modifiers), c.asksForHandle);
        const PressRoute route = routePress(c.state, c.button, c.modifiers, c.handleFound);
        EXPECT_EQ(route.gesture, c.route.gesture);
        EXPECT_EQ(route.toPlugin, c.route.toPlugin);
    }
}

TEST(InputRouting, MovesFollowTheGestureAndTheViewportsEdge) {
    const struct {
        const char* what;
        InputState state;
        MoveAction action;
    } cases[] = {
        {"hover inside", {Gesture::None, true, false}, MoveAction::SendMove},
        {"hover leaving the viewport", {Gesture::None, false, true}, MoveAction::SendLeave},
        {"hover over the panel, already out", {Gesture::None, false, false}, MoveAction::Nothing},
        {"drag inside", {Gesture::Plugin, true, true}, MoveAction::SendMove},
        {"drag past the edge stays with the layers",
         {Gesture::Plugin, false, true},
         MoveAction::SendMove},
        {"orbit", {Gesture::Orbit, true, true}, MoveAction::Orbit},
        {"pan", {Gesture::Pan, false, true}, MoveAction::Pan},
        {"dolly", {Gesture::Dolly, true, true}, MoveAction::Dolly},
        {"after selecting a light", {Gesture::Select, true, true}, MoveAction::Nothing},
        {"dragging in the panel", {Gesture::Panel, true, true}, MoveAction::Nothing},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(routeMove(c.state), c.action);
    }
}

TEST(InputRouting, ReleasesAndTheWheelGoWhereTheGestureSays) {
    for (const Gesture gesture : {Gesture::None, Gesture::Panel, Gesture::Orbit, Gesture::Pan,
                                  Gesture::Dolly, Gesture::Select, Gesture::Plugin}) {
        SCOPED_TRACE(static_cast<int>(gesture));
        EXPECT_EQ(releaseGoesToPlugin({gesture, true, true}), gesture == Gesture::Plugin);
        EXPECT_EQ(wheelDollies({gesture, true, true}), gesture == Gesture::None);
        EXPECT_FALSE(wheelDollies({gesture, false, false}));
        EXPECT_EQ(isCameraGesture(gesture), gesture == Gesture::Orbit || gesture == Gesture::Pan ||
                                                gesture == Gesture::Dolly);
    }
}

}  // namespace
