#pragma once
// The viewer in a window: the scene lit in a viewport on the left, the
// plugin's layers over it, a panel on the right. The window is another
// front-end of a viewer session, as the tour is.
//
// Input reaches the plugin as the host hands it on: mouse presses, moves and
// releases, with the buttons and modifier keys held, become event groups for
// the plugin's layers in the viewport's order. A plain left press on a
// light's handle picks it through the picking pass and selects the light
// instead. Alt with the left, middle or right button orbits, pans or dollies
// the camera, as does the wheel; F frames the lights and where they aim; the
// number keys choose placement modes; F12 writes a picture of the window;
// Escape closes it. What each input becomes is decided in input_routing.h;
// what the window does is reported line by line (window_report.h).

#include <chrono>
#include <cstdio>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "apps/scene/scene_description.h"
#include "apps/viewer/scene_as_it_stands.h"
#include "apps/viewer/viewer_session.h"
#include "apps/window/glfw_window.h"
#include "apps/window/input_routing.h"
#include "apps/window/keep_files.h"
#include "apps/window/layer_options.h"
#include "apps/window/light_editor.h"
#include "apps/window/orbit_camera.h"
#include "apps/window/viewer_panel.h"
#include "apps/window/window_report.h"
#include "host/viewer/edit_history.h"

struct GLFWwindow;

namespace sorrel {
class PluginLibrary;
struct PickPass;
}  // namespace sorrel

namespace viewer {

class PanelContext;

struct WindowSettings {
    /// Where F12 writes its pictures, window-01.png and on.
    std::string shotsFolder = ".";
    /// Where Ctrl+S saves and Ctrl+E exports, where not where keepFilesFor says.
    std::optional<std::string> saveFile;
    std::optional<std::string> exportFile;
    /// Where the scene is kept after every change, for a crash or a kill;
    /// empty for nowhere. A clean quit or save removes it.
    std::string recoveryFile;
    /// A recovery file newer than the scene was found: the panel offers it.
    bool recoveryOffered = false;
};

class WindowViewer {
public:
    /// Opens `scene` in a window with `plugin` loaded, reporting on `report`.
    /// Throws std::runtime_error when no window can open (no display, no GL
    /// 4.5 compatibility context) or the session cannot start.
    WindowViewer(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                 WindowSettings settings, std::FILE* report);
    ~WindowViewer();
    WindowViewer(const WindowViewer&) = delete;
    WindowViewer& operator=(const WindowViewer&) = delete;

    /// How the window closed: as asked, or to open the recovery file instead.
    enum class Ending { Quit, Recover };

    /// Draws and handles input until the window closes.
    Ending run();

private:
    sorrel::Viewport& viewport();
    sorrel::Scene& scene();

    // ---- GLFW's callbacks ----

    static WindowViewer& of(GLFWwindow* window);

    void installCallbacks();

    void wake();

    Pixel pointerPixel() const;

    bool inViewport(const Pixel& pixel);
    /// What the routing of input needs to know now.
    InputState inputState();

    /// The modifier keys held now; GLFW tells them with buttons and keys only.
    int modifiersHeld() const;

    void pointerMoved(double x, double y);

    void pointerLeft();

    void buttonChanged(int glfwButton, int action, int glfwMods);

    void wheelTurned(double steps);

    void keyPressed(int key, int action, int glfwMods);

    void resized(int width, int height);

    // ---- the history ----

    /// Ends the edit of a press handed to the layers: a step of the history
    /// when it moved or made lights, else a word on why nothing was placed.
    void endPluginGesture();
    /// Why a left press with `modifiers` placed nothing, in the user's words.
    std::string whyNothingPlaced(int modifiers);
    void undo();
    void redo();

    // ---- the selected light's numbers ----

    /// The one light location selected, which the panel edits; "" when none
    /// or more than one is selected, or a USD light.
    std::string editableLight();
    /// Moves, aims and sets the light at `path` as `numbers` say, and reports
    /// it to the plugin as the host reports any change.
    void applyNumbers(const std::string& path, const LightNumbers& numbers);
    void editSelectedLight();

    // ---- keeping the scene ----

    /// The view as the window shows it now, for a saved scene.
    ViewNow viewNow();
    void save();
    void exportScene();
    /// The longest the recovery file lags behind a change, seconds: a drag
    /// writes it at most this often.
    static constexpr double kAutosaveSeconds = 0.25;
    /// Notes that the scene changed; the recovery file follows within
    /// kAutosaveSeconds (at once when no change came in that time).
    void changed();
    /// Writes the recovery file when a change waits and its time has come.
    void autosaveIfDue();

    // ---- what input does ----

    /// Hands one mouse event to the plugin's layers and reports what it did
    /// to the lights and to the hover.
    void sendToPlugin(const std::string& type, const Pixel& pixel, int button, int modifiers);

    /// Times the handles layer's passes; and of a pass the handles layer
    /// asked for alone, as it does to find the light under the pointer,
    /// keeps the light it found.
    void observePickingPass(const sorrel::PickPass& pass);

    void setHovered(const std::string& path);

    /// The light whose handle lies under `pixel`, nearest first, of those not
    /// selected: a selected light shows the manipulator's marker instead of
    /// its handle, so a press there goes on to the placement.
    std::optional<std::string> unselectedHandleAt(const Pixel& pixel);

    bool isSelected(const std::string& path);

    /// Makes `path` the one selected light: a location, or a USD prim's light.
    void select(const std::string& path);

    /// Sets each option that differs from what the layers hold, as the host does.
    void setOptions(const LayerOptions& wanted);

    void moveCamera(const OrbitCamera& camera);
    /// Switches the view to the scene's camera `index`.
    void showCamera(std::size_t index);

    void applyCamera();

    /// Every light and the point it aims at; with `meshes`, the corners of
    /// every mesh's box too (and the meshes' alone when there is no light).
    std::vector<sorrel::Vec3> framingPoints(bool meshes);

    // ---- a frame ----

    PanelInfo panelInfo();

    void drawFrame();

    void saveScreenshot(int width, int height);

    // Declared first, destroyed last: everything after it holds GL objects of its context.
    GlfwWindow window_;
    ViewerSession session_;
    std::unique_ptr<PanelContext> panel_;
    sorrel::EditHistory history_;
    /// Where Ctrl+S and Ctrl+E write.
    KeepFiles keepFiles_;
    LightListState lightList_;
    const WindowReport report_;
    const WindowSettings settings_;
    const std::set<std::string> usdLights_;

    OrbitCamera camera_;
    std::optional<std::size_t> cameraIndex_;  // the scene's camera the view last switched to
    LayerOptions options_;
    std::vector<std::string> usdSelection_;

    Gesture gesture_ = Gesture::None;
    int buttons_ = 0;  // bits of the buttons held, as events carry them
    double pointerX_ = 0.0;
    double pointerY_ = 0.0;
    bool pointerInside_ = false;

    /// What the press handed to the layers did so far, for the history:
    /// "place PATH" or "package PATH"; and the press's button and keys.
    std::string gestureLabel_;
    int gestureButton_ = 0;
    int gestureModifiers_ = 0;
    bool gestureHit_ = false;  // the snapping layer found something under the pointer
    /// What the latest action did, for the panel.
    std::string status_;

    std::string hovered_;
    /// What the handles layer's own pick found during the event being handed on.
    std::optional<std::string> handlesPick_;
    std::optional<double> drawMilliseconds_;
    std::optional<double> pickMilliseconds_;

    bool autosavePending_ = false;
    std::chrono::steady_clock::time_point lastAutosave_;
    bool recoverWanted_ = false;

    int framesToDraw_ = 0;
    bool screenshotWanted_ = false;
    int screenshots_ = 0;
};

/// Opens `scene` in a window and runs until it closes (WindowViewer).
WindowViewer::Ending runWindow(const SceneDescription& scene, const sorrel::PluginLibrary& plugin,
                               const WindowSettings& settings, std::FILE* report);

}  // namespace viewer
