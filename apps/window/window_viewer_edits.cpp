// The window's edits and what keeps them: the history's steps and why a
// press placed nothing, the selected light's numbers, the recovery file
// after every change, saving and exporting.

#include <GLFW/glfw3.h>

#include <cstdio>
#include <filesystem>

#include "apps/scene/atomic_file.h"
#include "apps/scene/placement_modes.h"
#include "apps/window/window_viewer.h"
#include "host/core/names.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"

namespace viewer {

namespace names = sorrel::names;

void WindowViewer::changed() {
    if (settings_.recoveryFile.empty()) return;
    autosavePending_ = true;
    autosaveIfDue();
}

void WindowViewer::autosaveIfDue() {
    const auto now = std::chrono::steady_clock::now();
    if (!autosavePending_ || now - lastAutosave_ < std::chrono::duration<double>(kAutosaveSeconds))
        return;
    autosavePending_ = false;
    lastAutosave_ = now;
    try {
        makeFolders(std::filesystem::path(settings_.recoveryFile).parent_path().string());
        saveAsItStands(settings_.recoveryFile, session_.scene(), scene(), viewNow());
        report_.autosaved(settings_.recoveryFile);
    } catch (const FileWriteError& error) {
        std::fprintf(stderr, "beamwright-viewer: %s\n", error.what());
        status_ = error.what();
    }
}

/// Hands one mouse event to the plugin's layers and reports what it did
/// to the lights and to the hover.
void WindowViewer::endPluginGesture() {
    if (history_.end(gestureLabel_)) {
        status_.clear();
        changed();
    } else if (gestureButton_ == names::kLeftButton) {
        const std::string why = whyNothingPlaced(gestureModifiers_);
        status_ = "nothing placed: " + why;
        report_.nothingPlaced(why);
    }
}

std::string WindowViewer::whyNothingPlaced(int modifiers) {
    if (!options_.enabled) return "the placement layer is disabled";
    const bool package = (modifiers & names::kShiftModifier) != 0;
    if (!package && options_.mode.empty()) return "no placement mode is chosen";
    if (!gestureHit_) return "nothing under the pointer";
    if (package) return "no package was created";
    const bool anySelected = !usdSelection_.empty() || !sorrel::selectedPaths(scene()).empty();
    if (!anySelected) return "no light is selected";
    if (!modeMovesLight(options_.mode))
        return "\"" + options_.mode + "\" keeps the lights where they stand";
    return "the lights already stand there";
}

void WindowViewer::undo() {
    if (gesture_ != Gesture::None) return;
    if (const std::optional<std::string> step = history_.undo()) {
        changed();
        report_.undo(*step);
        status_ = "undid " + *step;
    } else {
        status_ = "nothing to undo";
    }
}

void WindowViewer::redo() {
    if (gesture_ != Gesture::None) return;
    if (const std::optional<std::string> step = history_.redo()) {
        changed();
        report_.redo(*step);
        status_ = "redid " + *step;
    } else {
        status_ = "nothing to redo";
    }
}

std::string WindowViewer::editableLight() {
    const std::vector<std::string> selected = sorrel::selectedPaths(scene());
    if (selected.size() != 1 || !usdSelection_.empty()) return "";
    const sorrel::Location* const location = scene().find(selected.front());
    return location != nullptr && sorrel::hasType(*location, names::kLightType) ? selected.front()
                                                                                : "";
}

void WindowViewer::applyNumbers(const std::string& path, const LightNumbers& numbers) {
    const std::optional<sorrel::Matrix> turned = sorrel::orientationAlong(numbers.aim);
    sorrel::Location* const location = scene().find(path);
    if (!turned || location == nullptr) return;
    sorrel::Matrix world = *turned;
    sorrel::setMatrixRow(world, sorrel::kTranslationRow, numbers.position);
    // World = local x parent's world, row vectors: the local is what is left.
    const std::optional<sorrel::Matrix> parent = scene().worldTransform(sorrel::parentOf(path));
    const std::optional<sorrel::Matrix> fromParent =
        parent ? sorrel::invertMatrix(*parent) : sorrel::kIdentity;
    if (!fromParent) return;
    sorrel::AttrRef attributes = location->attributes;
    attributes = sorrel::withChild(attributes, names::kGeometryCenterOfInterest,
                                   sorrel::doubleAttr(numbers.centerOfInterest));
    attributes =
        sorrel::withChild(attributes, "geometry.intensity", sorrel::doubleAttr(numbers.intensity));
    attributes =
        sorrel::withChild(attributes, "geometry.coneAngle", sorrel::doubleAttr(numbers.coneAngle));
    scene().set(path, attributes, sorrel::multiplyMatrices(world, *fromParent));
    session_.stage().delegate().sendTransformChange(path, /* attributesChanged = */ true);
}

void WindowViewer::editSelectedLight() {
    const std::string path = editableLight();
    LightNumbers numbers;
    for (const sorrel::SceneLight& light : session_.lights()) {
        if (light.path != path) continue;
        numbers = {light.position, light.direction, light.centerOfInterest,
                   light.properties.intensity, light.properties.coneAngle};
    }
    const LightEditorEvents events = drawLightEditor(kPanelName, path, numbers);
    if (events.changed) {
        // The first change of an edit begins its step; letting go ends it.
        if (!history_.editing()) history_.begin();
        applyNumbers(path, numbers);
        changed();
    }
    if (events.finished && history_.editing() && gesture_ == Gesture::None)
        history_.end("edit " + path);
}

ViewNow WindowViewer::viewNow() {
    ViewNow view;
    view.camera = session_.scene().camera;
    view.camera.eye = eyeOf(camera_);
    view.camera.target = camera_.target;
    view.camera.fovDegrees = camera_.fovDegrees;
    view.selection = sorrel::selectedPaths(scene());
    view.selection.insert(view.selection.end(), usdSelection_.begin(), usdSelection_.end());
    view.options = allOptions(options_);
    return view;
}

void WindowViewer::save() {
    try {
        saveAsItStands(keepFiles_.save, session_.scene(), scene(), viewNow());
        report_.saved(keepFiles_.save);
        // Saved: nothing left to recover.
        autosavePending_ = false;
        if (!settings_.recoveryFile.empty()) std::remove(settings_.recoveryFile.c_str());
        status_ = "saved " + keepFiles_.save;
    } catch (const FileWriteError& error) {
        std::fprintf(stderr, "beamwright-viewer: %s\n", error.what());
        status_ = error.what();
    }
}

void WindowViewer::exportScene() {
    try {
        exportAsItStands(keepFiles_.gltf, session_.scene(), scene());
        report_.exported(keepFiles_.gltf);
        status_ = "exported " + keepFiles_.gltf;
    } catch (const FileWriteError& error) {
        std::fprintf(stderr, "beamwright-viewer: %s\n", error.what());
        status_ = error.what();
    }
}

}  // namespace viewer
