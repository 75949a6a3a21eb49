#pragma once
// Where the host draws: a GL context with the surface it draws on, headless
// or a window. The picking machinery makes it current before each pass.

#include "host/viewer/rgba_image.h"

namespace sorrel {

class GLSurface {
public:
    virtual ~GLSurface() = default;
    virtual void makeCurrent() const = 0;
};

/// The colour buffer of the current read framebuffer, `width` x `height`
/// pixels from its lower left corner, as a picture with rows from the top.
RgbaImage readColourBuffer(int width, int height);

}  // namespace sorrel
