#include "apps/window/viewer_panel.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>
#include <string>

#include "apps/scene/placement_modes.h"
#include "apps/window/camera_list.h"
#include "apps/window/keep_panel.h"
#include "apps/window/light_editor.h"
#include "apps/window/window_input.h"
#include "host/core/names.h"

namespace viewer {

namespace {

constexpr ImGuiWindowFlags kPanelFlags = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                         ImGuiWindowFlags_NoCollapse |
                                         ImGuiWindowFlags_NoSavedSettings;
/// What the layers accept, as the handles layer clamps it.
constexpr double kMinManipulatorScale = 0.01;
constexpr double kMaxManipulatorScale = 10.0;
/// World units; the layer takes any positive distance.
constexpr double kMinDistance = 0.1;
constexpr double kMaxDistance = 100.0;
constexpr float kDistanceDragSpeed = 0.05f;
/// Lines the history shows at once, opened.
constexpr float kHistoryLines = 5.0f;
/// Lines below the light list: the hovered light, what the latest action
/// did, the history's heading (closed), the pass times, and the parts added
/// after: the selected light's heading (closed) and saving. An opened heading
/// makes the panel scroll.
constexpr float kLinesBelowLights = 4.0f + kLightEditorLines + kKeepPanelLines;
constexpr const char* kLongestOptionName = sorrel::names::kPackageClassName;
const ImVec4 kDimmed{0.6f, 0.6f, 0.6f, 1.0f};

/// A mode as the list shows it: the key that chooses it, then its label.
std::string modeRow(std::size_t index) {
    const std::string label = kPlacementModes[index].label;
    return std::string(keyOfMode(index)) + "  " + (label.empty() ? "\"\" (none)" : label);
}

/// The modes in one drop-down line, each with its key, labels as the layer takes them.
void modeList(LayerOptions& options) {
    std::string current = options.mode;
    for (std::size_t i = 0; i < kPlacementModes.size(); ++i)
        if (options.mode == kPlacementModes[i].label) current = modeRow(i);
    if (!ImGui::BeginCombo(sorrel::names::kMode, current.c_str())) return;
    for (std::size_t i = 0; i < kPlacementModes.size(); ++i) {
        const std::string label = kPlacementModes[i].label;
        if (ImGui::Selectable(modeRow(i).c_str(), options.mode == label)) options.mode = label;
    }
    ImGui::EndCombo();
}

void optionFields(LayerOptions& options) {
    // The fields leave room for the longest option name beside them.
    ImGui::PushItemWidth(
        -(ImGui::CalcTextSize(kLongestOptionName).x + ImGui::GetStyle().ItemInnerSpacing.x));
    ImGui::Checkbox(sorrel::names::kEnabled, &options.enabled);
    ImGui::DragScalar(sorrel::names::kDefaultDistance, ImGuiDataType_Double,
                      &options.defaultDistance, kDistanceDragSpeed, &kMinDistance, &kMaxDistance,
                      "%.2f", ImGuiSliderFlags_AlwaysClamp);
    ImGui::SliderScalar(sorrel::names::kManipulatorScale, ImGuiDataType_Double,
                        &options.manipulatorScale, &kMinManipulatorScale, &kMaxManipulatorScale,
                        "%.2f", ImGuiSliderFlags_Logarithmic | ImGuiSliderFlags_AlwaysClamp);
    ImGui::InputText(sorrel::names::kPackageClassName, &options.packageClassName);
    ImGui::PopItemWidth();
}

std::optional<std::string> lightList(const std::vector<PanelLight>& lights, LightListState& list) {
    std::optional<std::string> clicked;
    std::size_t shown = 0;
    for (const PanelLight& light : lights) shown += passesFilter(light.path, list.filter) ? 1 : 0;
    ImGui::Text("Lights (%zu of %zu), click to select", shown, lights.size());
    ImGui::InputTextWithHint("##filter", "filter by path", &list.filter);
    // The list takes what the lines below it leave of the panel's height.
    const float below = ImGui::GetTextLineHeightWithSpacing() * kLinesBelowLights +
                        ImGui::GetStyle().ItemSpacing.y * 2.0f;
    ImGui::BeginChild("lights", ImVec2(0.0f, -below), /* border = */ true);
    for (const PanelLight& light : lights) {
        if (!passesFilter(light.path, list.filter)) continue;
        if (light.usd) ImGui::PushStyleColor(ImGuiCol_Text, kDimmed);
        const std::string row = light.path + (light.usd ? "  (USD)" : "");
        if (ImGui::Selectable(row.c_str(), light.selected)) clicked = light.path;
        if (light.selected && list.scrollToSelected) ImGui::SetScrollHereY();
        if (light.usd) ImGui::PopStyleColor();
    }
    list.scrollToSelected = false;
    ImGui::EndChild();
    return clicked;
}

void historyList(const PanelInfo& info) {
    const std::string heading = "History (" + std::to_string(info.historyDone) + " of " +
                                std::to_string(info.history.size()) +
                                "), Ctrl+Z, Ctrl+Shift+Z###history";
    if (!ImGui::CollapsingHeader(heading.c_str())) return;
    ImGui::BeginChild("history",
                      ImVec2(0.0f, ImGui::GetTextLineHeightWithSpacing() * kHistoryLines),
                      /* border = */ true);
    for (std::size_t i = 0; i < info.history.size(); ++i) {
        // Steps undone, which a redo would make again, are dimmed.
        const bool undone = i >= info.historyDone;
        if (undone) ImGui::PushStyleColor(ImGuiCol_Text, kDimmed);
        ImGui::TextUnformatted(info.history[i].c_str());
        if (undone) ImGui::PopStyleColor();
    }
    // The latest step stays in sight.
    if (ImGui::GetScrollY() >= ImGui::GetScrollMaxY()) ImGui::SetScrollHereY(1.0f);
    ImGui::EndChild();
}

/// The handles layer's latest passes, on one line.
void passTimes(const std::optional<double>& draw, const std::optional<double>& pick) {
    const auto text = [](const std::optional<double>& milliseconds) {
        char number[32] = "-";
        if (milliseconds) std::snprintf(number, sizeof number, "%.3f ms", *milliseconds);
        return std::string(number);
    };
    ImGui::Text("Handles passes: draw %s, picking %s", text(draw).c_str(), text(pick).c_str());
}

}  // namespace

bool passesFilter(const std::string& path, const std::string& filter) {
    const auto lower = [](unsigned char c) { return std::tolower(c); };
    std::string folded;
    std::transform(path.begin(), path.end(), std::back_inserter(folded), lower);
    std::string wanted;
    std::transform(filter.begin(), filter.end(), std::back_inserter(wanted), lower);
    return folded.find(wanted) != std::string::npos;
}

PanelChoice drawViewerPanel(LayerOptions& options, LightListState& list, const PanelInfo& info,
                            const PanelArea& area) {
    ImGui::SetNextWindowPos(ImVec2(area.x, 0.0f));
    ImGui::SetNextWindowSize(ImVec2(area.width, area.height));
    ImGui::Begin(kPanelName, nullptr, kPanelFlags);
    PanelChoice choice;
    choice.camera = drawCameraList(info.cameras, info.camera);
    modeList(options);
    ImGui::Separator();
    optionFields(options);
    ImGui::Separator();
    choice.light = lightList(info.lights, list);
    ImGui::Text("Hovered: %s", info.hovered.empty() ? "none" : info.hovered.c_str());
    ImGui::TextUnformatted(info.status.empty() ? " " : info.status.c_str());
    historyList(info);
    passTimes(info.drawMilliseconds, info.pickMilliseconds);
    ImGui::End();
    return choice;
}

}  // namespace viewer
