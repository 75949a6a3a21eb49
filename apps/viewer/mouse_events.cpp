#include "apps/viewer/mouse_events.h"

namespace viewer {

using sorrel::intAttr;

sorrel::AttrRef mouseEvent(const char* type, int x, int y, int button, int buttons, int modifiers) {
    return sorrel::groupAttr({{"type", sorrel::stringAttr(type)},
                              {"data", sorrel::groupAttr({{"x", intAttr(x)},
                                                          {"y", intAttr(y)},
                                                          {"button", intAttr(button)},
                                                          {"buttons", intAttr(buttons)},
                                                          {"modifiers", intAttr(modifiers)}})}});
}

sorrel::AttrRef leftPress(int x, int y, int modifiers) {
    return mouseEvent("MouseButtonPress", x, y, kLeftButton, kLeftButtonHeld, modifiers);
}

sorrel::AttrRef leftDrag(int x, int y) {
    return mouseEvent("MouseMove", x, y, kNoButton, kLeftButtonHeld, 0);
}

sorrel::AttrRef leftRelease(int x, int y) {
    return mouseEvent("MouseButtonRelease", x, y, kLeftButton, 0, 0);
}

sorrel::AttrRef hover(int x, int y) { return mouseEvent("MouseMove", x, y, kNoButton, 0, 0); }

}  // namespace viewer
