#pragma once
// What the window did, one line each, as it happens: for a person at the
// terminal and for scripts that drive the window. Lines start with a word:
//
//   ready 640 480                       the first frame is up; the viewport's size
//   viewport 800 600                    the viewport was resized, pixels
//   option Mode "Normal"                an option set on the placement layer
//   placed /path pixel (x, y) point (..) normal (..) position (..) aim (..)
//                                       a light moved; point and normal are what
//                                       the snapping layer answered, "none" if not asked
//   package /path                       a light that a package command created
//   selected /path                      a light selected by its handle or the list
//   hovered /path | hovered none        the light whose handle the pointer is on
//   camera NAME                         the view switched to one of the scene's cameras
//   camera eye (..) target (..)         where the camera ended up after a move or F
//   screenshot FILE                     a picture of the window was written
//   autosaved FILE                      the recovery file was written after a change
//   recovered FILE                      the window opened the recovery file
//   saved FILE | exported FILE          the scene as it stands, saved or exported as glTF
//   undo WHAT | redo WHAT               a step of the history undone or made again
//   nothing placed: WHY                 a left press that changed no light, and why
//   quit                                the window is closing

#include <cstdio>
#include <optional>
#include <string>

#include "apps/scene/scene_description.h"
#include "apps/viewer/light_poses.h"
#include "host/siblings/snapping_layer.h"

namespace viewer {

class WindowReport {
public:
    explicit WindowReport(std::FILE* out) : out_(out) {}

    void ready(int width, int height) const;
    void viewport(int width, int height) const;
    void option(const std::string& name, const OptionValue& value) const;
    void placed(const std::string& path, const Pixel& pixel,
                const std::optional<sorrel::SnappingLayer::Answer>& answer,
                const LightPose& pose) const;
    void package(const std::string& path) const;
    void selected(const std::string& path) const;
    void hovered(const std::string& path) const;
    void camera(const sorrel::Vec3& eye, const sorrel::Vec3& target) const;
    void cameraNamed(const std::string& name) const;
    void screenshot(const std::string& file) const;
    void saved(const std::string& file) const;
    void autosaved(const std::string& file) const;
    void recovered(const std::string& file) const;
    void exported(const std::string& file) const;
    void undo(const std::string& step) const;
    void redo(const std::string& step) const;
    void nothingPlaced(const std::string& why) const;
    void quit() const;

private:
    /// Writes one line and flushes it, so a reader sees it at once.
    void line(const std::string& text) const;

    std::FILE* out_;
};

}  // namespace viewer
