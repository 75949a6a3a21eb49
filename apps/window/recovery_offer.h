#pragma once
// The panel's offer to recover: shown when the scene's recovery file is
// newer than the scene, that is, when the window last ended without a save
// or a clean quit.

#include <string>

namespace viewer {

/// Adds the offer to the panel (the ImGui window named `panel`) for this
/// frame; true when a person took it.
bool drawRecoveryOffer(const char* panel, const std::string& recoveryFile);

}  // namespace viewer
