#include "host/viewer/mouse_event.h"

namespace sorrel {

using namespace names;

AttrRef mouseEvent(const char* type, int x, int y, const MouseButtons& state) {
    return groupAttr({{kEventType, stringAttr(type)},
                      {kEventData, groupAttr({{kEventX, intAttr(x)},
                                              {kEventY, intAttr(y)},
                                              {kEventButton, intAttr(state.button)},
                                              {kEventButtons, intAttr(state.buttons)},
                                              {kEventModifiers, intAttr(state.modifiers)}})}});
}

AttrRef leftPress(int x, int y, int modifiers) {
    return mouseEvent(kMouseButtonPress, x, y, {kLeftButton, kLeftButton, modifiers});
}

AttrRef leftDrag(int x, int y) { return mouseEvent(kMouseMove, x, y, {kNoButton, kLeftButton}); }

AttrRef leftRelease(int x, int y) { return mouseEvent(kMouseButtonRelease, x, y, {kLeftButton}); }

AttrRef hover(int x, int y) { return mouseEvent(kMouseMove, x, y); }

}  // namespace sorrel
