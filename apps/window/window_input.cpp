#include "apps/window/window_input.h"

#include <GLFW/glfw3.h>

#include <array>

#include "apps/scene/placement_modes.h"
#include "host/core/names.h"
#include "host/viewer/mouse_event.h"

namespace viewer {

namespace names = sorrel::names;

namespace {

/// The keys after the ten digits, in mode order.
constexpr std::array<int, 2> kKeysAfterDigits = {GLFW_KEY_MINUS, GLFW_KEY_EQUAL};
constexpr std::array<const char*, kPlacementModes.size()> kModeKeyNames = {
    "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "-", "="};
constexpr std::size_t kDigits = 10;
static_assert(kDigits + kKeysAfterDigits.size() == kPlacementModes.size(), "a key for every mode");

}  // namespace

int hostButton(int glfwButton) {
    switch (glfwButton) {
        case GLFW_MOUSE_BUTTON_LEFT:
            return names::kLeftButton;
        case GLFW_MOUSE_BUTTON_RIGHT:
            return names::kRightButton;
        case GLFW_MOUSE_BUTTON_MIDDLE:
            return names::kMiddleButton;
        default:
            return names::kNoButton;
    }
}

int hostModifiers(int glfwMods) {
    int modifiers = 0;
    if ((glfwMods & GLFW_MOD_SHIFT) != 0) modifiers |= names::kShiftModifier;
    if ((glfwMods & GLFW_MOD_CONTROL) != 0) modifiers |= names::kControlModifier;
    if ((glfwMods & GLFW_MOD_ALT) != 0) modifiers |= names::kAltModifier;
    return modifiers;
}

std::optional<std::size_t> modeOfKey(int glfwKey) {
    if (glfwKey >= GLFW_KEY_0 && glfwKey <= GLFW_KEY_9)
        return static_cast<std::size_t>(glfwKey - GLFW_KEY_0);
    if (glfwKey >= GLFW_KEY_KP_0 && glfwKey <= GLFW_KEY_KP_9)
        return static_cast<std::size_t>(glfwKey - GLFW_KEY_KP_0);
    for (std::size_t i = 0; i < kKeysAfterDigits.size(); ++i)
        if (glfwKey == kKeysAfterDigits[i]) return kDigits + i;
    return std::nullopt;
}

const char* keyOfMode(std::size_t index) {
    return index < kModeKeyNames.size() ? kModeKeyNames[index] : "";
}

}  // namespace viewer
