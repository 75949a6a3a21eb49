#include "apps/window/light_editor.h"

#include <imgui.h>

#include <string>

namespace viewer {

namespace {

constexpr float kDragSpeed = 0.01f;
constexpr double kMinDistance = 1e-3;
constexpr double kMaxDistance = 1e4;
constexpr double kMinCone = 1.0;
constexpr double kMaxCone = 179.0;
constexpr double kMinIntensity = 0.0;
constexpr double kMaxIntensity = 1e4;

/// One field; notes a change and a field let go after one.
void field(bool edited, LightEditorEvents& events) {
    events.changed |= edited;
    events.finished |= ImGui::IsItemDeactivatedAfterEdit();
}

}  // namespace

LightEditorEvents drawLightEditor(const char* panel, const std::string& path,
                                  LightNumbers& numbers) {
    LightEditorEvents events;
    ImGui::Begin(panel);
    const std::string heading =
        "Selected light: " + (path.empty() ? std::string("select one to edit it") : path) +
        "###light";
    if (!ImGui::CollapsingHeader(heading.c_str()) || path.empty()) {
        ImGui::End();
        return events;
    }
    double* const position = &numbers.position.x;
    double* const aim = &numbers.aim.x;
    field(ImGui::DragScalarN("position", ImGuiDataType_Double, position, 3, kDragSpeed), events);
    field(ImGui::DragScalarN("aim", ImGuiDataType_Double, aim, 3, kDragSpeed), events);
    field(ImGui::DragScalar("centre of interest", ImGuiDataType_Double, &numbers.centerOfInterest,
                            kDragSpeed, &kMinDistance, &kMaxDistance, "%.3f",
                            ImGuiSliderFlags_AlwaysClamp),
          events);
    field(ImGui::DragScalar("intensity", ImGuiDataType_Double, &numbers.intensity, kDragSpeed,
                            &kMinIntensity, &kMaxIntensity, "%.3f", ImGuiSliderFlags_AlwaysClamp),
          events);
    field(ImGui::DragScalar("cone, degrees", ImGuiDataType_Double, &numbers.coneAngle, 0.5f,
                            &kMinCone, &kMaxCone, "%.1f", ImGuiSliderFlags_AlwaysClamp),
          events);
    ImGui::End();
    return events;
}

}  // namespace viewer
