#include "apps/window/window_viewer.h"

#include <GL/glew.h>
// GLEW's header comes first: it declares GL itself.
#include <GLFW/glfw3.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "apps/scene/atomic_file.h"
#include "apps/scene/placement_modes.h"
#include "apps/scene/scene_framing.h"
#include "apps/viewer/light_poses.h"
#include "apps/viewer/picture_file.h"
#include "apps/viewer/scene_setup.h"
#include "apps/viewer/viewer_session.h"
#include "apps/window/glfw_window.h"
#include "apps/window/keep_panel.h"
#include "apps/window/layer_options.h"
#include "apps/window/orbit_camera.h"
#include "apps/window/panel_context.h"
#include "apps/window/recovery_offer.h"
#include "apps/window/viewer_panel.h"
#include "apps/window/window_input.h"
#include "apps/window/window_layout.h"
#include "apps/window/window_report.h"
#include "host/core/attribute_reading.h"
#include "host/core/names.h"
#include "host/core/plugin_objects.h"
#include "host/siblings/light_orientation.h"
#include "host/viewer/mouse_event.h"
#include "host/viewer/picking.h"
#include "host/viewer/scene_light.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"

namespace viewer {

namespace names = sorrel::names;

namespace {

/// Frames drawn after input, so that the panel settles (ImGui answers a
/// click or a hover on the frame after it).
constexpr int kSettleFrames = 3;
/// Dolly steps for each pixel of a drag with Alt and the right button.
constexpr double kDollyStepsPerPixel = 0.02;
constexpr double kMillisecondsPerSecond = 1000.0;
constexpr std::uint8_t kOpaque = 255;

std::set<std::string> usdLightPaths(const SceneDescription& scene) {
    std::set<std::string> paths;
    for (const LightDescription& light : scene.usdLights) paths.insert(light.path);
    return paths;
}

/// The light a picked handle stands for.
std::optional<std::string> locationOf(const sorrel::PickHit& hit) {
    return sorrel::readString(hit.attribute.child(names::kPickedLocation));
}

std::string numbered(const std::string& folder, int number) {
    char name[32];
    std::snprintf(name, sizeof name, "/window-%02d.png", number);
    return folder + name;
}

}  // namespace

WindowViewer::WindowViewer(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                           WindowSettings settings, std::FILE* report)
    : window_(scene.camera.width + kPanelWidth, scene.camera.height,
              std::string(kWindowTitle) + " - " + scene.file),
      session_(scene, plugin, window_),
      history_(session_.stage().delegate()),
      keepFiles_(keepFilesFor(scene.file)),
      report_(report),
      settings_(std::move(settings)),
      usdLights_(usdLightPaths(scene)),
      options_(layerOptionsAfter(scene.options)) {
    if (settings_.saveFile) keepFiles_.save = *settings_.saveFile;
    if (settings_.exportFile) keepFiles_.gltf = *settings_.exportFile;
    const CameraDescription& camera = scene.camera;
    camera_ = orbitCameraLookingAt(camera.eye, camera.target, camera.fovDegrees);
    for (std::size_t i = 0; i < scene.cameras.size() && !cameraIndex_; ++i)
        if (sorrel::length(scene.cameras[i].camera.eye - camera.eye) == 0.0) cameraIndex_ = i;
    applyCamera();
    session_.picking().observePasses(
        [this](const sorrel::PickPass& pass) { observePickingPass(pass); });
    installCallbacks();
    // After the window's callbacks: ImGui's call them before its own.
    panel_ = std::make_unique<PanelContext>(window_.handle());
}

WindowViewer::~WindowViewer() {
    window_.makeCurrent();
    panel_.reset();
}

WindowViewer::Ending WindowViewer::run() {
    drawFrame();
    report_.ready(viewport().width, viewport().height);
    GLFWwindow* const window = window_.handle();
    while (glfwWindowShouldClose(window) == GLFW_FALSE) {
        if (framesToDraw_ > 0)
            glfwPollEvents();
        else if (autosavePending_)
            glfwWaitEventsTimeout(kAutosaveSeconds);
        else
            glfwWaitEvents();
        autosaveIfDue();
        if (framesToDraw_ > 0) {
            drawFrame();
            --framesToDraw_;
        }
    }
    if (recoverWanted_) return Ending::Recover;
    // A clean quit keeps nothing for recovery; what was not saved is let go.
    if (!settings_.recoveryFile.empty()) std::remove(settings_.recoveryFile.c_str());
    report_.quit();
    return Ending::Quit;
}

sorrel::Viewport& WindowViewer::viewport() { return session_.viewport(); }

sorrel::Scene& WindowViewer::scene() { return session_.stage().scene(); }

WindowViewer& WindowViewer::of(GLFWwindow* window) {
    return *static_cast<WindowViewer*>(glfwGetWindowUserPointer(window));
}

void WindowViewer::installCallbacks() {
    GLFWwindow* const window = window_.handle();
    glfwSetWindowUserPointer(window, this);
    glfwSetCursorPosCallback(window,
                             [](GLFWwindow* w, double x, double y) { of(w).pointerMoved(x, y); });
    glfwSetMouseButtonCallback(window, [](GLFWwindow* w, int button, int action, int mods) {
        of(w).buttonChanged(button, action, mods);
    });
    glfwSetScrollCallback(window, [](GLFWwindow* w, double, double y) { of(w).wheelTurned(y); });
    glfwSetKeyCallback(window, [](GLFWwindow* w, int key, int, int action, int mods) {
        of(w).keyPressed(key, action, mods);
    });
    glfwSetCursorEnterCallback(window, [](GLFWwindow* w, int entered) {
        if (entered == GLFW_FALSE) of(w).pointerLeft();
    });
    glfwSetFramebufferSizeCallback(
        window, [](GLFWwindow* w, int width, int height) { of(w).resized(width, height); });
    glfwSetWindowRefreshCallback(window, [](GLFWwindow* w) { of(w).wake(); });
}

void WindowViewer::wake() { framesToDraw_ = kSettleFrames; }

Pixel WindowViewer::pointerPixel() const {
    return {static_cast<int>(std::floor(pointerX_)), static_cast<int>(std::floor(pointerY_))};
}

InputState WindowViewer::inputState() {
    return {gesture_, inViewport(pointerPixel()), pointerInside_};
}

bool WindowViewer::inViewport(const Pixel& pixel) {
    return pixel[0] >= 0 && pixel[1] >= 0 && pixel[0] < viewport().width &&
           pixel[1] < viewport().height;
}

/// The modifier keys held now; GLFW tells them with buttons and keys only.
int WindowViewer::modifiersHeld() const {
    GLFWwindow* const window = window_.handle();
    const auto held = [window](int left, int right) {
        return glfwGetKey(window, left) == GLFW_PRESS || glfwGetKey(window, right) == GLFW_PRESS;
    };
    int mods = 0;
    if (held(GLFW_KEY_LEFT_SHIFT, GLFW_KEY_RIGHT_SHIFT)) mods |= GLFW_MOD_SHIFT;
    if (held(GLFW_KEY_LEFT_CONTROL, GLFW_KEY_RIGHT_CONTROL)) mods |= GLFW_MOD_CONTROL;
    if (held(GLFW_KEY_LEFT_ALT, GLFW_KEY_RIGHT_ALT)) mods |= GLFW_MOD_ALT;
    return hostModifiers(mods);
}

void WindowViewer::pointerMoved(double x, double y) {
    const double dx = x - pointerX_;
    const double dy = y - pointerY_;
    pointerX_ = x;
    pointerY_ = y;
    wake();
    switch (routeMove(inputState())) {
        case MoveAction::Orbit:
            return moveCamera(orbited(camera_, dx, dy));
        case MoveAction::Pan:
            return moveCamera(panned(camera_, dx, dy, viewport().height));
        case MoveAction::Dolly:
            return moveCamera(dollied(camera_, (dx - dy) * kDollyStepsPerPixel));
        case MoveAction::SendMove:
            sendToPlugin(names::kMouseMove, pointerPixel(), names::kNoButton, modifiersHeld());
            if (gesture_ == Gesture::None) pointerInside_ = true;
            return;
        case MoveAction::SendLeave:
            return pointerLeft();
        case MoveAction::Nothing:
            return;
    }
}

void WindowViewer::pointerLeft() {
    wake();
    if (!pointerInside_) return;
    pointerInside_ = false;
    sendToPlugin(names::kLeave, pointerPixel(), names::kNoButton, 0);
}

void WindowViewer::buttonChanged(int glfwButton, int action, int glfwMods) {
    const int button = hostButton(glfwButton);
    if (button == names::kNoButton) return;
    wake();
    const Pixel pixel = pointerPixel();
    const int modifiers = hostModifiers(glfwMods);
    const InputState state = inputState();
    if (action == GLFW_PRESS) {
        buttons_ |= button;
        std::optional<std::string> handle;
        if (pressAsksForHandle(state, button, modifiers)) handle = unselectedHandleAt(pixel);
        const PressRoute route = routePress(state, button, modifiers, handle.has_value());
        gesture_ = route.gesture;
        if (handle && route.gesture == Gesture::Select) {
            select(*handle);
            lightList_.scrollToSelected = true;
        }
        if (route.gesture == Gesture::Plugin && state.gesture == Gesture::None) {
            // One press, with its drag, is one step of the history.
            history_.begin();
            gestureLabel_.clear();
            gestureButton_ = button;
            gestureModifiers_ = modifiers;
            gestureHit_ = false;
        }
        if (route.toPlugin) sendToPlugin(names::kMouseButtonPress, pixel, button, modifiers);
    } else if (action == GLFW_RELEASE) {
        buttons_ &= ~button;
        if (releaseGoesToPlugin(state))
            sendToPlugin(names::kMouseButtonRelease, pixel, button, modifiers);
        if (buttons_ == 0) {
            if (isCameraGesture(gesture_)) report_.camera(eyeOf(camera_), camera_.target);
            if (gesture_ == Gesture::Plugin) endPluginGesture();
            gesture_ = Gesture::None;
        }
    }
}

void WindowViewer::wheelTurned(double steps) {
    wake();
    if (wheelDollies(inputState())) {
        moveCamera(dollied(camera_, steps));
        report_.camera(eyeOf(camera_), camera_.target);
    }
}

void WindowViewer::keyPressed(int key, int action, int glfwMods) {
    wake();
    if ((action != GLFW_PRESS && action != GLFW_REPEAT) || panel_->typing()) return;
    const bool control = (glfwMods & GLFW_MOD_CONTROL) != 0;
    const bool shift = (glfwMods & GLFW_MOD_SHIFT) != 0;
    if (control && key == GLFW_KEY_Z) return shift ? redo() : undo();
    if (control && key == GLFW_KEY_Y) return redo();
    if (control && key == GLFW_KEY_S) return save();
    if (control && key == GLFW_KEY_E) return exportScene();
    if (action != GLFW_PRESS) return;
    if (const std::optional<std::size_t> mode = modeOfKey(key)) {
        LayerOptions chosen = options_;
        chosen.mode = kPlacementModes[*mode].label;
        setOptions(chosen);
    } else if (key == GLFW_KEY_F) {
        // F frames the whole scene, Shift+F the lights and where they aim.
        moveCamera(framed(camera_, framingPoints(/* meshes = */ !shift),
                          static_cast<double>(viewport().width) / viewport().height));
        report_.camera(eyeOf(camera_), camera_.target);
    } else if (key == GLFW_KEY_F12) {
        screenshotWanted_ = true;
    } else if (key == GLFW_KEY_ESCAPE) {
        glfwSetWindowShouldClose(window_.handle(), GLFW_TRUE);
    }
}

void WindowViewer::resized(int width, int height) {
    wake();
    if (width <= 0 || height <= 0) return;  // minimised
    sorrel::Viewport& view = viewport();
    view.width = std::max(width - kPanelWidth, 1);
    view.height = height;
    applyCamera();
    view.forEachPluginLayer(
        [&view](sorrel::LayerObject& layer) { layer.resize(view.width, view.height); });
    report_.viewport(view.width, view.height);
}

void WindowViewer::sendToPlugin(const std::string& type, const Pixel& pixel, int button,
                                int modifiers) {
    // A plain move places nothing, so only other events compare the lights' poses.
    const bool mayPlace = type != names::kMouseMove || buttons_ != 0;
    const bool followsPointer = type == names::kMouseMove || type == names::kLeave;
    sorrel::SnappingLayer& snapping = session_.stage().snappingLayer();
    snapping.forgetAnswer();
    const LightPoses before = mayPlace ? lightPoses(scene()) : LightPoses();
    handlesPick_.reset();

    session_.sendEvent(
        sorrel::mouseEvent(type.c_str(), pixel[0], pixel[1], {button, buttons_, modifiers}));

    if (snapping.lastAnswer()) gestureHit_ = true;
    if (followsPointer) setHovered(handlesPick_.value_or(""));
    if (!mayPlace) return;
    const LightPoses after = lightPoses(scene());
    for (const std::string& path : movedLights(before, after)) {
        changed();
        report_.placed(path, pixel, snapping.lastAnswer(), after.at(path));
        if (gestureLabel_.empty()) gestureLabel_ = "place " + path;
    }
    for (const std::string& path : newLights(before, after)) {
        changed();
        report_.package(path);
        gestureLabel_ = "package " + path;
    }
}

/// Times the handles layer's passes; and of a pass the handles layer
/// asked for alone, as it does to find the light under the pointer,
/// keeps the light it found.
void WindowViewer::observePickingPass(const sorrel::PickPass& pass) {
    const sorrel::LayerObject* const handles = &session_.handlesLayer();
    if (std::find(pass.layers.begin(), pass.layers.end(), handles) == pass.layers.end()) return;
    pickMilliseconds_ = pass.seconds * kMillisecondsPerSecond;
    if (pass.layers.size() != 1) return;
    std::string found;
    for (const sorrel::PickHit& hit : pass.hits)
        if (const auto location = locationOf(hit)) found = *location;
    handlesPick_ = found;
}

void WindowViewer::setHovered(const std::string& path) {
    if (path == hovered_) return;
    hovered_ = path;
    report_.hovered(path);
}

/// Selects the light whose handle lies under `pixel`, nearest first;
/// false when none does. A selected light shows the manipulator's marker
/// instead of its handle, so a press there goes on to the placement.
std::optional<std::string> WindowViewer::unselectedHandleAt(const Pixel& pixel) {
    std::optional<std::string> nearest;
    float nearestDepth = 0.0f;
    for (const sorrel::PickHit& hit : session_.picking().pickAll({pixel[0], pixel[1]})) {
        const auto location = locationOf(hit);
        if (!location || isSelected(*location) || (nearest && hit.depth >= nearestDepth)) continue;
        nearest = *location;
        nearestDepth = hit.depth;
    }
    return nearest;
}

bool WindowViewer::isSelected(const std::string& path) {
    if (std::count(usdSelection_.begin(), usdSelection_.end(), path) != 0) return true;
    const sorrel::Location* const location = scene().find(path);
    return location != nullptr && location->selected;
}

/// Makes `path` the one selected light: a location, or a USD prim's light.
void WindowViewer::select(const std::string& path) {
    const bool usd = usdLights_.count(path) != 0;
    session_.stage().select(usd ? std::vector<std::string>{} : std::vector<std::string>{path});
    usdSelection_ = usd ? std::vector<std::string>{path} : std::vector<std::string>{};
    session_.stage().delegate().sendUsdSelection(usdSelection_);
    report_.selected(path);
}

/// Sets each option that differs from what the layers hold, as the host does.
void WindowViewer::setOptions(const LayerOptions& wanted) {
    const std::vector<NamedOption> changes = optionChanges(options_, wanted);
    setLayerOptions(session_.placementLayer(), changes);
    for (const auto& [name, value] : changes) report_.option(name, value);
    options_ = wanted;
}

void WindowViewer::moveCamera(const OrbitCamera& camera) {
    camera_ = camera;
    applyCamera();
}

void WindowViewer::showCamera(std::size_t index) {
    const CameraDescription& camera = session_.scene().cameras.at(index).camera;
    moveCamera(orbitCameraLookingAt(camera.eye, camera.target, camera.fovDegrees));
    cameraIndex_ = index;
    report_.cameraNamed(session_.scene().cameras.at(index).name);
    report_.camera(eyeOf(camera_), camera_.target);
}

void WindowViewer::applyCamera() {
    const sorrel::Vec3 eye = eyeOf(camera_);
    const double eyeXyz[3] = {eye.x, eye.y, eye.z};
    const double targetXyz[3] = {camera_.target.x, camera_.target.y, camera_.target.z};
    const CameraDescription& depth = session_.scene().camera;
    viewport().lookAt(eyeXyz, targetXyz, camera_.fovDegrees, depth.nearPlane, depth.farPlane);
}

std::vector<sorrel::Vec3> WindowViewer::framingPoints(bool meshes) {
    std::vector<sorrel::Vec3> points;
    for (const sorrel::SceneLight& light : session_.lights()) {
        points.push_back(light.position);
        points.push_back(light.position + light.direction * light.centerOfInterest);
    }
    if (meshes || points.empty()) {
        const SceneBounds bounds = sceneBounds(session_.scene().meshes);
        for (int corner = 0; corner < 8; ++corner)
            points.push_back({(corner & 1) != 0 ? bounds.max.x : bounds.min.x,
                              (corner & 2) != 0 ? bounds.max.y : bounds.min.y,
                              (corner & 4) != 0 ? bounds.max.z : bounds.min.z});
    }
    return points;
}

PanelInfo WindowViewer::panelInfo() {
    PanelInfo info;
    for (const sorrel::SceneLight& light : session_.lights()) {
        info.lights.push_back(
            {light.path, isSelected(light.path), usdLights_.count(light.path) != 0});
    }
    info.hovered = hovered_;
    info.drawMilliseconds = drawMilliseconds_;
    info.pickMilliseconds = pickMilliseconds_;
    info.history = history_.labels();
    info.historyDone = history_.done();
    info.status = status_;
    for (const NamedCamera& camera : session_.scene().cameras) info.cameras.push_back(camera.name);
    info.camera = cameraIndex_;
    return info;
}

void WindowViewer::drawFrame() {
    window_.makeCurrent();
    const auto [width, height] = window_.framebufferSize();
    panel_->newFrame();
    LayerOptions edited = options_;
    const PanelArea area{static_cast<float>(viewport().width),
                         static_cast<float>(width - viewport().width), static_cast<float>(height)};
    const PanelChoice chosen = drawViewerPanel(edited, lightList_, panelInfo(), area);
    setOptions(edited);
    if (chosen.light) select(*chosen.light);
    if (chosen.camera) showCamera(*chosen.camera);
    editSelectedLight();
    if (settings_.recoveryOffered && !recoverWanted_ &&
        drawRecoveryOffer(kPanelName, settings_.recoveryFile)) {
        recoverWanted_ = true;
        glfwSetWindowShouldClose(window_.handle(), GLFW_TRUE);
    }
    const KeepRequest request = drawKeepPanel(kPanelName, keepFiles_);
    if (request == KeepRequest::Save) save();
    if (request == KeepRequest::Export) exportScene();

    const sorrel::LayerObject* const handles = &session_.handlesLayer();
    session_.drawFrame([this, handles](const sorrel::LayerObject& layer, double seconds) {
        if (&layer == handles) drawMilliseconds_ = seconds * kMillisecondsPerSecond;
    });
    glViewport(0, 0, width, height);
    panel_->render();
    if (screenshotWanted_) saveScreenshot(width, height);
    glfwSwapBuffers(window_.handle());
}

void WindowViewer::saveScreenshot(int width, int height) {
    screenshotWanted_ = false;
    const std::string file = numbered(settings_.shotsFolder, ++screenshots_);
    sorrel::RgbaImage picture = sorrel::readColourBuffer(width, height);
    // A window shows no transparency, whatever its alpha channel holds.
    for (std::size_t i = sorrel::RgbaImage::kChannels - 1; i < picture.pixels.size();
         i += sorrel::RgbaImage::kChannels)
        picture.pixels[i] = kOpaque;
    try {
        writePicture(file, picture);
        report_.screenshot(file);
    } catch (const FileWriteError& error) {
        std::fprintf(stderr, "beamwright-viewer: %s\n", error.what());
    }
}

WindowViewer::Ending runWindow(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                               const WindowSettings& settings, std::FILE* report) {
    return WindowViewer(scene, plugin, settings, report).run();
}

}  // namespace viewer
