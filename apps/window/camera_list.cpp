#include "apps/window/camera_list.h"

#include <imgui.h>

namespace viewer {

namespace {
constexpr const char* kNoCamera = "(the view as moved)";
}  // namespace

std::optional<std::size_t> drawCameraList(const char* panel,
                                          const std::vector<NamedCamera>& cameras,
                                          std::optional<std::size_t> current) {
    if (cameras.empty()) return std::nullopt;
    std::optional<std::size_t> chosen;
    // Begin on a window of this frame adds to it, below what it holds.
    ImGui::Begin(panel);
    ImGui::Separator();
    const char* const shown =
        current && *current < cameras.size() ? cameras[*current].name.c_str() : kNoCamera;
    if (ImGui::BeginCombo("Camera", shown)) {
        for (std::size_t i = 0; i < cameras.size(); ++i) {
            const std::string row = cameras[i].name + "##camera" + std::to_string(i);
            if (ImGui::Selectable(row.c_str(), current == i)) chosen = i;
        }
        ImGui::EndCombo();
    }
    ImGui::End();
    return chosen;
}

}  // namespace viewer
