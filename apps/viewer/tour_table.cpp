#include "apps/viewer/tour_table.h"

#include "apps/scene/placement_modes.h"
#include "apps/viewer/number_text.h"

namespace viewer {

namespace {
constexpr const char* kRowFormat = "  %-2s %-35s %-11s %-22s %-22s %-22s %-22s %s\n";
constexpr const char* kNothing = "-";

/// The flags the placement layer answered the manipulator, in short.
std::string flagText(const sorrel::ManipulatorFlags& flags) {
    std::string text;
    const auto add = [&text](bool on, const char* word) {
        if (on) text += (text.empty() ? "" : ", ") + std::string(word);
    };
    add(flags.positionLocked, "locked");
    add(flags.fixedRotation, "fixed rotation");
    add(flags.handleAtOrigin, "handle at origin");
    add(flags.shadowHandles, "shadow handles");
    return text.empty() ? kNothing : text;
}
}  // namespace

void printModeTable(std::FILE* out, const TourReport& report) {
    std::fprintf(out, "Placing %s in each mode:\n", report.light.c_str());
    std::fprintf(out, kRowFormat, "#", "mode", "pixel", "picked point", "normal", "light at",
                 "aiming", "manipulator");
    for (std::size_t i = 0; i < report.modes.size(); ++i) {
        const ModeStep& step = report.modes[i];
        const std::string number = std::to_string(i + 1);
        const std::string pixel =
            "(" + std::to_string(step.pixel[0]) + ", " + std::to_string(step.pixel[1]) + ")";
        const std::string point = step.point ? fixedTriple(*step.point) : kNothing;
        const std::string normal = step.normal ? fixedTriple(*step.normal) : kNothing;
        const std::string position = step.moved ? fixedTriple(step.position) : "unchanged";
        const std::string aim = step.moved ? fixedTriple(step.aim) : "unchanged";
        std::fprintf(out, kRowFormat, number.c_str(), modeTitle(step.label).c_str(), pixel.c_str(),
                     point.c_str(), normal.c_str(), position.c_str(), aim.c_str(),
                     flagText(step.flags).c_str());
    }
    std::fprintf(out, "Hovered the handle of %s; picking there found %s.\n",
                 report.hoveredLight.c_str(), report.pickedLight.c_str());
    std::fprintf(out, "Shift with a left press created %s.\n", report.packageLight.c_str());
}

}  // namespace viewer
