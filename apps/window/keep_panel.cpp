#include "apps/window/keep_panel.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include "apps/window/keep_files.h"

namespace viewer {

KeepRequest drawKeepPanel(const char* panel, KeepFiles& files) {
    ImGui::Begin(panel);
    KeepRequest request = KeepRequest::None;
    if (ImGui::Button("Save (Ctrl+S)")) request = KeepRequest::Save;
    ImGui::SameLine();
    if (ImGui::Button("Export glTF (Ctrl+E)")) request = KeepRequest::Export;
    ImGui::InputText("save as", &files.save);
    ImGui::End();
    return request;
}

}  // namespace viewer
