#include "apps/window/panel_context.h"

#include <backends/imgui_impl_glfw.h>
#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

#include <stdexcept>

namespace viewer {

namespace {

/// Tighter rows than ImGui's own, so the panel fits beside a small viewport.
const ImVec2 kItemSpacing{6.0f, 2.0f};
const ImVec2 kFramePadding{4.0f, 1.0f};

}  // namespace

PanelContext::PanelContext(GLFWwindow* window) {
    IMGUI_CHECKVERSION();
    ImGui::CreateContext();
    ImGuiIO& io = ImGui::GetIO();
    // The panel is laid out anew each run: no imgui.ini in the working folder.
    io.IniFilename = nullptr;
    ImGui::StyleColorsDark();
    ImGuiStyle& style = ImGui::GetStyle();
    style.ItemSpacing = kItemSpacing;
    style.FramePadding = kFramePadding;
    style.WindowRounding = 0.0f;
    if (!ImGui_ImplGlfw_InitForOpenGL(window, /* install_callbacks = */ true)) {
        ImGui::DestroyContext();
        throw std::runtime_error("the panel's GLFW backend did not start");
    }
    if (!ImGui_ImplOpenGL3_Init(/* glsl_version = */ nullptr)) {
        ImGui_ImplGlfw_Shutdown();
        ImGui::DestroyContext();
        throw std::runtime_error("the panel's OpenGL backend did not start");
    }
}

PanelContext::~PanelContext() {
    ImGui_ImplOpenGL3_Shutdown();
    ImGui_ImplGlfw_Shutdown();
    ImGui::DestroyContext();
}

void PanelContext::newFrame() const {
    ImGui_ImplOpenGL3_NewFrame();
    ImGui_ImplGlfw_NewFrame();
    ImGui::NewFrame();
}

void PanelContext::render() const {
    ImGui::Render();
    ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
}

bool PanelContext::typing() const { return ImGui::GetIO().WantTextInput; }

}  // namespace viewer
