#include "apps/window/recovery_offer.h"

#include <imgui.h>

namespace viewer {

bool drawRecoveryOffer(const char* panel, const std::string& recoveryFile) {
    ImGui::Begin(panel);
    ImGui::TextWrapped("Unsaved work from an earlier session: %s", recoveryFile.c_str());
    const bool taken = ImGui::Button("Recover it");
    ImGui::End();
    return taken;
}

}  // namespace viewer
