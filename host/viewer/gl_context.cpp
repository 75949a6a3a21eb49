#include "host/viewer/gl_context.h"

#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/glew.h>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace sorrel {

namespace {

constexpr EGLint kColourBits = 8;  // each of red, green, blue, alpha
constexpr EGLint kDepthBits = 24;
constexpr EGLint kGLMajorVersion = 4;
constexpr EGLint kGLMinorVersion = 5;

// Attribute lists read as name, value pairs.
// clang-format off
constexpr EGLint kConfigAttributes[] = {
    EGL_SURFACE_TYPE, EGL_PBUFFER_BIT,
    EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
    EGL_RED_SIZE, kColourBits,
    EGL_GREEN_SIZE, kColourBits,
    EGL_BLUE_SIZE, kColourBits,
    EGL_ALPHA_SIZE, kColourBits,
    EGL_DEPTH_SIZE, kDepthBits,
    // Exact colours for picking: no sample may blend with another.
    EGL_SAMPLE_BUFFERS, 0,
    EGL_NONE};

constexpr EGLint kContextAttributes[] = {
    EGL_CONTEXT_MAJOR_VERSION, kGLMajorVersion,
    EGL_CONTEXT_MINOR_VERSION, kGLMinorVersion,
    EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
    EGL_NONE};
// clang-format on

// glewInit loads every entry point and only then fails to find a GLX display,
// which a context made through EGL does not need.
constexpr GLenum kGlewNoGlxDisplay = 4;

[[noreturn]] void fail(const char* step) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%04X", static_cast<unsigned>(eglGetError()));
    throw std::runtime_error(std::string("GLContext: ") + step + " failed (EGL error " + code +
                             ")");
}

EGLDisplay surfacelessDisplay() {
    const auto getPlatformDisplay = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (getPlatformDisplay == nullptr) fail("eglGetPlatformDisplayEXT lookup");
    const EGLDisplay display =
        getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY) fail("eglGetPlatformDisplayEXT");
    if (eglInitialize(display, nullptr, nullptr) != EGL_TRUE) fail("eglInitialize");
    return display;
}

}  // namespace

GLContext::GLContext(int width, int height) : width_(width), height_(height) {
    try {
        create();
    } catch (...) {
        destroy();
        throw;
    }
}

void GLContext::create() {
    display_ = surfacelessDisplay();
    EGLConfig config = nullptr;
    EGLint configCount = 0;
    if (eglChooseConfig(display_, kConfigAttributes, &config, 1, &configCount) != EGL_TRUE ||
        configCount < 1) {
        fail("eglChooseConfig");
    }
    if (eglBindAPI(EGL_OPENGL_API) != EGL_TRUE) fail("eglBindAPI");

    context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, kContextAttributes);
    if (context_ == EGL_NO_CONTEXT) fail("eglCreateContext");
    const EGLint surfaceAttributes[] = {EGL_WIDTH, width_, EGL_HEIGHT, height_, EGL_NONE};
    surface_ = eglCreatePbufferSurface(display_, config, surfaceAttributes);
    if (surface_ == EGL_NO_SURFACE) fail("eglCreatePbufferSurface");
    makeCurrent();

    const GLenum glew = glewInit();
    if (glew != GLEW_OK && glew != kGlewNoGlxDisplay) {
        throw std::runtime_error("GLContext: glewInit failed with " + std::to_string(glew));
    }
    glViewport(0, 0, width_, height_);
}

GLContext::~GLContext() { destroy(); }

void GLContext::destroy() {
    // The display stays initialised: it is one per process and other contexts
    // may still live on it.
    if (context_ != nullptr && eglGetCurrentContext() == context_) {
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    if (surface_ != nullptr) eglDestroySurface(display_, surface_);
    if (context_ != nullptr) eglDestroyContext(display_, context_);
    surface_ = nullptr;
    context_ = nullptr;
}

void GLContext::makeCurrent() const {
    if (eglMakeCurrent(display_, surface_, surface_, context_) != EGL_TRUE) fail("eglMakeCurrent");
}

RgbaImage GLContext::readPixels() const { return readColourBuffer(width_, height_); }

}  // namespace sorrel
