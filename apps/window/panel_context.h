#pragma once
// Dear ImGui set up on a GLFW window with its GLFW and OpenGL 3 backends:
// one frame of the panel at a time, drawn over whatever the window holds.
// The window's own input callbacks, installed before, are still called first.

struct GLFWwindow;

namespace viewer {

class PanelContext {
public:
    /// The window's GL context must be current.
    explicit PanelContext(GLFWwindow* window);
    ~PanelContext();
    PanelContext(const PanelContext&) = delete;
    PanelContext& operator=(const PanelContext&) = delete;

    /// Starts a frame: ImGui calls may follow.
    void newFrame() const;
    /// Draws the frame's widgets into the current framebuffer.
    void render() const;
    /// Whether a text field has the keyboard, so keys are not shortcuts.
    bool typing() const;
};

}  // namespace viewer
