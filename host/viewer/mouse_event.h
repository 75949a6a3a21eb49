#pragma once
// Mouse events as the host hands them to viewport layers: a group of "type"
// and "data", the data holding "x" and "y" (pixels from the top left corner),
// "button" (the one that changed), "buttons" (bits of those held) and
// "modifiers" (bits of the keys held). Names and bits: host/core/names.h.

#include "host/core/attribute_ref.h"
#include "host/core/names.h"

namespace sorrel {

/// The button that changed, the buttons held and the modifier keys of an event.
struct MouseButtons {
    int button = names::kNoButton;
    int buttons = 0;
    int modifiers = 0;
};

/// An event of `type` (names::kMouseMove, ...) at pixel (x, y), y from the top.
AttrRef mouseEvent(const char* type, int x, int y, const MouseButtons& state = {});

/// A left press, with the modifier bits held.
AttrRef leftPress(int x, int y, int modifiers = 0);
/// A move with the left button held.
AttrRef leftDrag(int x, int y);
AttrRef leftRelease(int x, int y);
/// A move with no button held.
AttrRef hover(int x, int y);

}  // namespace sorrel
