#pragma once
// A window on the X display with an OpenGL 4.5 compatibility context (the
// host's shaders and the plugin's fixed-function attribute stack need it),
// made current, with GLEW's entry points loaded for the plugin.

#include <array>
#include <string>

#include "host/viewer/gl_surface.h"

struct GLFWwindow;

namespace viewer {

class GlfwWindow : public sorrel::GLSurface {
public:
    /// Opens a resizable `width` x `height` pixel window. Throws
    /// std::runtime_error with GLFW's reason when there is no display or no
    /// such context.
    GlfwWindow(int width, int height, const std::string& title);
    ~GlfwWindow() override;
    GlfwWindow(const GlfwWindow&) = delete;
    GlfwWindow& operator=(const GlfwWindow&) = delete;

    void makeCurrent() const override;
    GLFWwindow* handle() const { return window_; }
    /// Width and height of the drawable area, pixels.
    std::array<int, 2> framebufferSize() const;

private:
    GLFWwindow* window_ = nullptr;
};

}  // namespace viewer
