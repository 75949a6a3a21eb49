#include "apps/window/window_report.h"

#include <variant>

#include "apps/viewer/number_text.h"

namespace viewer {

namespace {

/// Enough decimals that a script can check where a light went.
constexpr int kDecimals = 3;

struct OptionText {
    std::string operator()(int value) const { return std::to_string(value); }
    std::string operator()(double value) const { return fixed(value, kDecimals); }
    std::string operator()(const std::string& value) const { return "\"" + value + "\""; }
    std::string operator()(const std::vector<std::string>& values) const {
        std::string text;
        for (const std::string& value : values) text += (text.empty() ? "" : " ") + (*this)(value);
        return text;
    }
};

std::string triple(const sorrel::Vec3& v) { return fixedTriple(v, kDecimals); }

}  // namespace

void WindowReport::line(const std::string& text) const {
    std::fprintf(out_, "%s\n", text.c_str());
    std::fflush(out_);
}

void WindowReport::ready(int width, int height) const {
    line("ready " + std::to_string(width) + " " + std::to_string(height));
}

void WindowReport::saved(const std::string& file) const { line("saved " + file); }

void WindowReport::autosaved(const std::string& file) const { line("autosaved " + file); }

void WindowReport::recovered(const std::string& file) const { line("recovered " + file); }

void WindowReport::exported(const std::string& file) const { line("exported " + file); }

void WindowReport::cameraNamed(const std::string& name) const { line("camera " + name); }

void WindowReport::undo(const std::string& step) const { line("undo " + step); }

void WindowReport::redo(const std::string& step) const { line("redo " + step); }

void WindowReport::nothingPlaced(const std::string& why) const { line("nothing placed: " + why); }

void WindowReport::viewport(int width, int height) const {
    line("viewport " + std::to_string(width) + " " + std::to_string(height));
}

void WindowReport::option(const std::string& name, const OptionValue& value) const {
    line("option " + name + " " + std::visit(OptionText{}, value));
}

void WindowReport::placed(const std::string& path, const Pixel& pixel,
                          const std::optional<sorrel::SnappingLayer::Answer>& answer,
                          const LightPose& pose) const {
    const std::string snapped =
        answer ? "point " + triple(answer->point) + " normal " + triple(answer->normal)
               : "point none";
    line("placed " + path + " pixel (" + std::to_string(pixel[0]) + ", " +
         std::to_string(pixel[1]) + ") " + snapped + " position " + triple(pose.position) +
         " aim " + triple(pose.aim));
}

void WindowReport::package(const std::string& path) const { line("package " + path); }

void WindowReport::selected(const std::string& path) const { line("selected " + path); }

void WindowReport::hovered(const std::string& path) const {
    line("hovered " + (path.empty() ? std::string("none") : path));
}

void WindowReport::camera(const sorrel::Vec3& eye, const sorrel::Vec3& target) const {
    line("camera eye " + triple(eye) + " target " + triple(target));
}

void WindowReport::screenshot(const std::string& file) const { line("screenshot " + file); }

void WindowReport::quit() const { line("quit"); }

}  // namespace viewer
