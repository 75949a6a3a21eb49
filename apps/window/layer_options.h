#pragma once
// The options of the plugin's layers as the window's host set them last. The
// panel and the mode keys edit a copy; each option that then differs reaches
// the placement layer as the host sets options (which hands it on to the
// handles layer).

#include <string>
#include <utility>
#include <vector>

#include "apps/scene/scene_description.h"

namespace viewer {

struct LayerOptions {
    // What the layers hold before any option is set.
    bool enabled = false;           // "Enabled"
    std::string mode;               // "Mode", a label of kPlacementModes
    double defaultDistance = 5.0;   // "DefaultDistance", world units
    double manipulatorScale = 1.0;  // "Manipulator.Scale"
    std::string packageClassName;   // "PackageClassName"
};

/// An option by its name, with the value the layer takes.
using NamedOption = std::pair<std::string, OptionValue>;

/// The layers' options after `options` (a scene's) were set.
LayerOptions layerOptionsAfter(const std::vector<NamedOption>& options);

/// Every option the panel edits, with its value now, as the layer takes it.
std::vector<NamedOption> allOptions(const LayerOptions& options);

/// Each option whose value differs between the two, as the layer takes it.
std::vector<NamedOption> optionChanges(const LayerOptions& before, const LayerOptions& after);

}  // namespace viewer
