#include "apps/window/camera_list.h"

#include <imgui.h>

namespace viewer {

namespace {
constexpr const char* kNoCamera = "(the view as moved)";
}  // namespace

std::optional<std::size_t> drawCameraList(const std::vector<std::string>& cameras,
                                          std::optional<std::size_t> current) {
    if (cameras.empty()) return std::nullopt;
    std::optional<std::size_t> chosen;
    const char* const shown =
        current && *current < cameras.size() ? cameras[*current].c_str() : kNoCamera;
    if (ImGui::BeginCombo("Camera", shown)) {
        for (std::size_t i = 0; i < cameras.size(); ++i) {
            const std::string row = cameras[i] + "##camera" + std::to_string(i);
            if (ImGui::Selectable(row.c_str(), current == i)) chosen = i;
        }
        ImGui::EndCombo();
    }
    ImGui::Separator();
    return chosen;
}

}  // namespace viewer
