#pragma once
// Mouse events as the host hands them to viewport layers: a group of "type"
// and "data", the data holding "x" and "y" (pixels from the top left corner),
// "button" (the one that changed), "buttons" (bits of those held) and
// "modifiers" (bits of the keys held).

#include "host/core/attribute_ref.h"

namespace viewer {

/// Values of "button"; each is also its bit in "buttons".
constexpr int kNoButton = 0;
constexpr int kLeftButton = 1;
constexpr int kRightButton = 2;
constexpr int kMiddleButton = 4;
/// The bit of the left button in "buttons".
constexpr int kLeftButtonHeld = kLeftButton;
/// Bits of "modifiers".
constexpr int kShiftModifier = 0x02000000;
constexpr int kControlModifier = 0x04000000;
constexpr int kAltModifier = 0x08000000;

sorrel::AttrRef mouseEvent(const char* type, int x, int y, int button, int buttons, int modifiers);

/// A left press, with the modifier bits held.
sorrel::AttrRef leftPress(int x, int y, int modifiers = 0);
/// A move with the left button held.
sorrel::AttrRef leftDrag(int x, int y);
sorrel::AttrRef leftRelease(int x, int y);
/// A move with no button held.
sorrel::AttrRef hover(int x, int y);

}  // namespace viewer
