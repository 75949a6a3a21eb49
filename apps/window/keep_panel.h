#pragma once
// Keeping what was placed, in the window's panel: the file a save writes
// (typed over, if a person wants another), and buttons that save (as Ctrl+S
// does) and export to glTF (as Ctrl+E does).

namespace viewer {

struct KeepFiles;

/// The panel's lines that the part takes.
constexpr float kKeepPanelLines = 2.0f;

/// What a person asked of the part this frame.
enum class KeepRequest { None, Save, Export };

/// Adds the part to the panel (the ImGui window named `panel`) for this
/// frame; `files` are edited in place.
KeepRequest drawKeepPanel(const char* panel, KeepFiles& files);

}  // namespace viewer
