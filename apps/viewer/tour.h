#pragma once
// The tour: the plugin at work on a scene, step by step, each step checked
// and pictured. For each of the twelve placement modes it resets the light,
// sets the mode, presses (for "Normal" also drags) at a pixel on an object and
// writes NN-<mode>.png; then it hovers a handle (its connector line shows),
// pictures the picking pass false-coloured, and creates a package with Shift
// and a left press.

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"
#include "host/siblings/manipulator_flags.h"
#include "host/viewer/rgba_image.h"

namespace sorrel {
class GLContext;
}

namespace viewer {

class ViewerSession;

/// A step that did not do what it should, with a one-line reason.
class TourFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct TourPicture {
    std::string file;  // path of the PNG written
    sorrel::RgbaImage image;
    std::string title;    // such as "04 Normal"
    std::string caption;  // what happened, one short line
};

/// What one placement mode did to the light.
struct ModeStep {
    std::string label;
    Pixel pixel{};  // where the press (or the drag) ended
    /// What the snapping layer answered the plugin, if it was asked.
    std::optional<Vec3> point;
    std::optional<Vec3> normal;
    Vec3 position;  // the light's, world space, after the step
    Vec3 aim;       // unit, world space
    bool moved = false;
    /// What the placement layer answered the manipulator in this mode.
    sorrel::ManipulatorFlags flags;
};

struct TourReport {
    std::string light;  // the light the modes place
    std::vector<ModeStep> modes;
    std::vector<TourPicture> pictures;
    std::string hoveredLight;
    std::string pickedLight;
    std::string packageLight;
};

/// Fails unless the handle shader files lie where the handles layer reads
/// them, below $SORREL_ROOT.
void checkHandleShaders();

/// Runs the tour on `session` (drawn with `context`), writing its pictures
/// into `folder`, which must exist. Throws TourFailure at the first step that fails.
TourReport runTour(ViewerSession& session, const sorrel::GLContext& context,
                   const std::string& folder);

}  // namespace viewer
