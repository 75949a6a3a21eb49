#pragma once
// An OpenGL context without a display: Mesa's surfaceless EGL platform, a GL
// 4.5 compatibility profile, and a pbuffer surface with colour and depth.
// GLEW's entry points are loaded, so the plugin's GL calls work under it.

#include "host/viewer/gl_surface.h"
#include "host/viewer/rgba_image.h"

namespace sorrel {

class GLContext : public GLSurface {
public:
    /// Makes a context with a `width` x `height` pixel surface (RGBA8, 24-bit
    /// depth, no multisampling) and makes it current. Throws
    /// std::runtime_error naming the step that failed.
    GLContext(int width, int height);
    ~GLContext() override;
    GLContext(const GLContext&) = delete;
    GLContext& operator=(const GLContext&) = delete;

    void makeCurrent() const override;
    int width() const { return width_; }
    int height() const { return height_; }

    /// The colour buffer of the current read framebuffer over the surface's size.
    RgbaImage readPixels() const;

private:
    // EGL's handles are pointers; egl.h stays out of this header because its
    // platform header would drag in X11's macros.
    using EglHandle = void*;

    void create();
    void destroy();

    int width_;
    int height_;
    EglHandle display_ = nullptr;
    EglHandle context_ = nullptr;
    EglHandle surface_ = nullptr;
};

}  // namespace sorrel
