#include "apps/scene/placement_modes.h"

#include <algorithm>
#include <cctype>

namespace viewer {

std::string modeTitle(const std::string& label) { return label.empty() ? "None" : label; }

std::string modeSlug(const std::string& label) {
    std::string slug;
    for (const char c : modeTitle(label)) {
        if (std::isalnum(static_cast<unsigned char>(c)))
            slug += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        else if (!slug.empty() && slug.back() != '-')
            slug += '-';
    }
    return slug;
}

bool isModeLabel(const std::string& text) {
    return std::any_of(kPlacementModes.begin(), kPlacementModes.end(),
                       [&text](const PlacementModeLabel& mode) { return text == mode.label; });
}

bool modeMovesLight(const std::string& label) {
    return std::any_of(kPlacementModes.begin(), kPlacementModes.end(),
                       [&label](const PlacementModeLabel& mode) {
                           return label == mode.label && mode.movesLight;
                       });
}

}  // namespace viewer
