#pragma once
// Mouse events as the host sends them to a layer.

#include "host/core/attribute_ref.h"

namespace testing_support {

constexpr int kLeftButton = 1;
constexpr int kShift = 0x02000000;
constexpr int kControl = 0x04000000;

/// The button that changed, the buttons held and the modifier keys of an event.
struct MouseButtons {
    int button = 0;
    int buttons = 0;
    int modifiers = 0;
};

/// An event of `type` ("MouseMove", "MouseButtonPress", ...) at pixel (x, y), y from the top.
inline sorrel::AttrRef mouseEvent(const char* type, int x, int y, const MouseButtons& state = {}) {
    return sorrel::groupAttr(
        {{"type", sorrel::stringAttr(type)},
         {"data", sorrel::groupAttr({{"x", sorrel::intAttr(x)},
                                     {"y", sorrel::intAttr(y)},
                                     {"button", sorrel::intAttr(state.button)},
                                     {"buttons", sorrel::intAttr(state.buttons)},
                                     {"modifiers", sorrel::intAttr(state.modifiers)}})}});
}

}  // namespace testing_support
