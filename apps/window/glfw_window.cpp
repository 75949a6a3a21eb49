#include "apps/window/glfw_window.h"

#include <GL/glew.h>
// GLEW's header comes first: it declares GL itself.
#include <GLFW/glfw3.h>

#include <stdexcept>

namespace viewer {

namespace {

constexpr int kGLMajorVersion = 4;
constexpr int kGLMinorVersion = 5;

/// GLFW's latest complaint, for the exception that follows it.
std::string lastGlfwError;

void keepGlfwError(int, const char* description) { lastGlfwError = description; }

[[noreturn]] void fail(const std::string& step) {
    throw std::runtime_error(step + ": " +
                             (lastGlfwError.empty() ? "no reason given" : lastGlfwError));
}

}  // namespace

GlfwWindow::GlfwWindow(int width, int height, const std::string& title) {
    glfwSetErrorCallback(keepGlfwError);
    if (glfwInit() != GLFW_TRUE) fail("cannot open a window (run it under X or Xvfb)");
    glfwWindowHint(GLFW_CONTEXT_VERSION_MAJOR, kGLMajorVersion);
    glfwWindowHint(GLFW_CONTEXT_VERSION_MINOR, kGLMinorVersion);
    glfwWindowHint(GLFW_OPENGL_PROFILE, GLFW_OPENGL_COMPAT_PROFILE);
    window_ = glfwCreateWindow(width, height, title.c_str(), nullptr, nullptr);
    if (window_ == nullptr) {
        glfwTerminate();
        fail("no OpenGL 4.5 compatibility context for a window");
    }
    makeCurrent();
    const GLenum glew = glewInit();
    if (glew != GLEW_OK) {
        glfwDestroyWindow(window_);
        glfwTerminate();
        throw std::runtime_error("glewInit failed with " + std::to_string(glew));
    }
}

GlfwWindow::~GlfwWindow() {
    glfwDestroyWindow(window_);
    glfwTerminate();
}

void GlfwWindow::makeCurrent() const { glfwMakeContextCurrent(window_); }

std::array<int, 2> GlfwWindow::framebufferSize() const {
    std::array<int, 2> size{};
    glfwGetFramebufferSize(window_, &size[0], &size[1]);
    return size;
}

}  // namespace viewer
