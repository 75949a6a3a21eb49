// The viewer's window under a real X server, driven by real input: the
// mouse and keys reach the plugin, and what the window reports matches
// what its pictures show.
//
// Each test starts Xvfb and the viewer on the studio scene, moves, clicks
// and types with xdotool, and reads the viewer's report line by line; F12
// makes the viewer write a picture of its window, which the test reads back.

#include <gtest/gtest.h>
#include <png.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "apps/scene/scene_file.h"
#include "apps/window/window_layout.h"
#include "host/viewer/picking.h"
#include "host/viewer/rgba_image.h"
#include "host/viewer/scene_light.h"
#include "host/viewer/viewer_delegate.h"
#include "host/viewer/viewport.h"
#include "tests/support/temp_folder.h"
#include "tests/window/child_process.h"
#include "tests/window/xvfb_display.h"

using sorrel::Vec3;
using viewer::kPanelWidth;
using viewer::kWindowTitle;
using window_testing::ChildProcess;
using window_testing::XvfbDisplay;

namespace {

constexpr const char* kKeyLight = "/root/world/lgt/key";
constexpr const char* kFillLight = "/root/world/lgt/fill";
/// Long enough for a slow, shared machine; only a hang runs into it.
constexpr std::chrono::seconds kPatience{30};
/// What the studio scene sets.
constexpr double kDefaultDistance = 4.0;
/// World units between the faceted sphere and the round one it stands for.
constexpr double kFacetTolerance = 0.02;
/// Half the side of the square whose median brightness stands for a pixel's.
constexpr int kPatchRadius = 5;
/// Levels of brightness by which the lit spot's side outshines the other.
constexpr double kBrighter = 15.0;
/// Levels by which a pixel of the connector line differs from the picture without it.
constexpr int kLineContrast = 40;

using Pixel = std::array<int, 2>;

std::string pixelText(const Pixel& pixel) {
    return std::to_string(pixel[0]) + " " + std::to_string(pixel[1]);
}

sorrel::RgbaImage readPng(const std::string& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return {};
    image.format = PNG_FORMAT_RGBA;
    sorrel::RgbaImage picture{static_cast<int>(image.width), static_cast<int>(image.height),
                              std::vector<std::uint8_t>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) return {};
    return picture;
}

double luminance(const std::array<std::uint8_t, 4>& rgba) {
    return 0.2126 * rgba[0] + 0.7152 * rgba[1] + 0.0722 * rgba[2];
}

/// The median brightness around a pixel: thin lines drawn over it do not count.
double brightnessAround(const sorrel::RgbaImage& picture, const Pixel& pixel) {
    std::vector<double> levels;
    for (int dy = -kPatchRadius; dy <= kPatchRadius; ++dy)
        for (int dx = -kPatchRadius; dx <= kPatchRadius; ++dx)
            levels.push_back(luminance(picture.at(pixel[0] + dx, pixel[1] + dy)));
    std::nth_element(levels.begin(), levels.begin() + levels.size() / 2, levels.end());
    return levels[levels.size() / 2];
}

/// A "placed" line of the report.
struct Placement {
    std::string light;
    Pixel pixel{};
    Vec3 point;
    Vec3 normal;
    Vec3 position;
};

std::optional<Placement> placementOf(const std::string& line) {
    static const std::regex kPlaced(
        R"(placed (\S+) pixel \((-?\d+), (-?\d+)\) point \((\S+), (\S+), (\S+)\) normal \((\S+), (\S+), (\S+)\) position \((\S+), (\S+), (\S+)\) aim .*)");
    std::smatch parts;
    if (!std::regex_match(line, parts, kPlaced)) return std::nullopt;
    const auto vec = [&parts](int first) {
        return Vec3{std::stod(parts[first]), std::stod(parts[first + 1]),
                    std::stod(parts[first + 2])};
    };
    return Placement{parts[1], {std::stoi(parts[2]), std::stoi(parts[3])}, vec(4), vec(7), vec(10)};
}

/// How many pixels of the viewport (the window left of the panel) differ
/// between two pictures by more than a rounding step of the driver.
int viewportPixelsThatDiffer(const sorrel::RgbaImage& a, const sorrel::RgbaImage& b, int width) {
    constexpr int kStep = 8;
    int differing = 0;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < width; ++x)
            differing += std::abs(luminance(a.at(x, y)) - luminance(b.at(x, y))) > kStep ? 1 : 0;
    return differing;
}

/// The studio scene as the window first shows it, for where things land in pixels.
class StudioView {
public:
    StudioView() : scene_(viewer::loadSceneFile(BEAMWRIGHT_STUDIO_SCENE)) {
        setSize(scene_.camera.width, scene_.camera.height);
    }

    void setSize(int width, int height) {
        viewport_ = std::make_unique<sorrel::Viewport>(delegate_, width, height);
        const viewer::CameraDescription& camera = scene_.camera;
        const double eye[3] = {camera.eye.x, camera.eye.y, camera.eye.z};
        const double target[3] = {camera.target.x, camera.target.y, camera.target.z};
        viewport_->lookAt(eye, target, camera.fovDegrees);
    }

    Pixel pixelOf(const Vec3& world) const {
        const sorrel::PickArea area = sorrel::pixelOfPoint(*viewport_, world);
        return {area.x, area.y};
    }

    const sorrel::Mesh& mesh(const std::string& name) const {
        for (const viewer::MeshDescription& mesh : scene_.meshes)
            if (mesh.name == name) return mesh.mesh;
        throw std::runtime_error("the studio has no mesh " + name);
    }

    /// A light where the scene puts it (the studio's lights have no parent transforms).
    sorrel::SceneLight light(const std::string& path) const {
        for (const viewer::LightDescription& light : scene_.lights) {
            if (light.path != path) continue;
            sorrel::SceneLight placed = sorrel::placedLight(path, light.local);
            placed.centerOfInterest = light.centerOfInterest;
            return placed;
        }
        throw std::runtime_error("the studio has no light " + path);
    }

    int width() const { return viewport_->width; }
    int height() const { return viewport_->height; }

private:
    viewer::SceneDescription scene_;
    sorrel::ViewerDelegate delegate_;
    std::unique_ptr<sorrel::Viewport> viewport_;
};

class ViewerWindow : public ::testing::Test {
protected:
    void SetUp() override {
        try {
            display_ = std::make_unique<XvfbDisplay>(folder_.path() + "/xvfb.log");
        } catch (const std::exception& error) {
            GTEST_SKIP() << "Xvfb cannot start here, so there is no window to test: "
                         << error.what();
        }
        environment_ = {display_->environment(), "XDG_STATE_HOME=" + folder_.path() + "/state"};
        // Under AddressSanitizer, the X and GL driver libraries leave a few
        // allocations behind at exit, reported from a driver module already
        // unloaded, which no suppression can name. The viewer's leak check
        // is off for them; its own reference accounting still sets its exit
        // status, and the window's code is leak-checked in viewer_tests.
        if (const char* sanitizer = std::getenv("ASAN_OPTIONS"))
            environment_.push_back(std::string("ASAN_OPTIONS=") + sanitizer + ":detect_leaks=0");
        startViewer({});
        const std::string ready = linesUntil("ready ").back();
        ASSERT_EQ(ready, "ready " + pixelText({view_.width(), view_.height()}));
        window_ = display_->xdotool({"search", "--sync", "--name", kWindowTitle});
        ASSERT_FALSE(window_.empty());
    }

    void TearDown() override {
        if (!viewer_) return;
        display_->xdotool({"key", "Escape"});
        linesUntil("quit");
        // The viewer exits non-zero when attribute references leaked.
        EXPECT_EQ(viewer_->wait(), 0) << viewerErrors();
    }

    /// Starts the viewer on the studio scene in a window, with `more` arguments.
    void startViewer(const std::vector<std::string>& more) {
        std::vector<std::string> arguments{BEAMWRIGHT_VIEWER_PATH,
                                           BEAMWRIGHT_STUDIO_SCENE,
                                           "--window",
                                           "--shots",
                                           folder_.path(),
                                           "--save",
                                           savedFile(),
                                           "--export",
                                           exportedFile()};
        arguments.insert(arguments.end(), more.begin(), more.end());
        viewer_.reset();
        viewer_ =
            std::make_unique<ChildProcess>(arguments, environment_, folder_.path() + "/viewer.log");
    }

    std::string savedFile() const { return folder_.path() + "/saved.json"; }
    std::string exportedFile() const { return folder_.path() + "/saved.gltf"; }

    std::string viewerErrors() const {
        std::ifstream log(folder_.path() + "/viewer.log");
        std::stringstream text;
        text << log.rdbuf();
        return "viewer's errors:\n" + text.str();
    }

    /// The report's lines up to the first that starts with `prefix`, that one last.
    std::vector<std::string> linesUntil(const std::string& prefix) {
        std::vector<std::string> lines;
        while (const std::optional<std::string> line = viewer_->nextLine(kPatience)) {
            lines.push_back(*line);
            if (line->rfind(prefix, 0) == 0) return lines;
        }
        ADD_FAILURE() << "the viewer never reported \"" << prefix << "...\"; " << viewerErrors();
        lines.emplace_back();
        return lines;
    }

    void xdotool(std::vector<std::string> arguments) { display_->xdotool(arguments); }

    /// Arguments that put the pointer on a pixel of the window.
    std::vector<std::string> moveTo(const Pixel& pixel) const {
        return {"mousemove", "--window", window_, std::to_string(pixel[0]),
                std::to_string(pixel[1])};
    }

    void pointAt(const Pixel& pixel) { xdotool(moveTo(pixel)); }

    void clickAt(const Pixel& pixel) {
        std::vector<std::string> arguments = moveTo(pixel);
        arguments.insert(arguments.end(), {"click", "1"});
        xdotool(arguments);
    }

    /// F12, then the picture of the window it wrote, and the report's lines
    /// that came before it.
    sorrel::RgbaImage screenshot(std::vector<std::string>* before = nullptr) {
        xdotool({"key", "F12"});
        std::vector<std::string> lines = linesUntil("screenshot ");
        const std::string file = lines.back().substr(std::string("screenshot ").size());
        lines.pop_back();
        if (before != nullptr) *before = lines;
        return readPng(file);
    }

    /// The report's "placed" lines up to the first for `pixel`, that one parsed.
    Placement placementAt(const Pixel& pixel) {
        for (;;) {
            const std::string line = linesUntil("placed ").back();
            const std::optional<Placement> placed = placementOf(line);
            if (!placed) {
                ADD_FAILURE() << "no placement reported at " << pixelText(pixel);
                return {};
            }
            if (placed->pixel == pixel) return *placed;
        }
    }

    testing_support::TempFolder folder_;
    StudioView view_;
    std::unique_ptr<XvfbDisplay> display_;
    std::vector<std::string> environment_;
    std::unique_ptr<ChildProcess> viewer_;
    std::string window_;
};

TEST_F(ViewerWindow, ModeKeysReachTheLayerAndANormalClickLandsTheKeyLightWhereItsSpotFollows) {
    const sorrel::Mesh& sphere = view_.mesh("sphere");
    const Vec3 centre = sphere.boundsCentre();
    double radius = 0.0;
    for (const Vec3& point : sphere.points())
        radius =
            std::max(radius, sorrel::length(sorrel::transformPoint(point, sphere.world) - centre));
    const Pixel middle = view_.pixelOf(centre);
    const int radiusPixels = middle[1] - view_.pixelOf(centre + Vec3{0, radius, 0})[1];
    // Two points on the sphere, left and right of its middle, half its radius out.
    const Pixel left{middle[0] - radiusPixels / 2, middle[1]};
    const Pixel right{middle[0] + radiusPixels / 2, middle[1] - radiusPixels / 4};

    // Mode "" places nothing.
    xdotool({"key", "0"});
    EXPECT_EQ(linesUntil("option Mode").back(), "option Mode \"\"");
    clickAt(left);
    std::vector<std::string> before;
    screenshot(&before);
    for (const std::string& line : before) EXPECT_FALSE(placementOf(line)) << line;

    xdotool({"key", "3"});
    EXPECT_EQ(linesUntil("option Mode").back(), "option Mode \"Normal\"");
    clickAt(left);
    const Placement placed = placementAt(left);
    EXPECT_EQ(placed.light, kKeyLight);
    // On the sphere under the pointer, the light out along its normal.
    EXPECT_NEAR(sorrel::length(placed.point - centre), radius, kFacetTolerance);
    const Pixel landed = view_.pixelOf(placed.point);
    EXPECT_LE(std::hypot(landed[0] - left[0], landed[1] - left[1]), 1.0) << pixelText(landed);
    EXPECT_NEAR(sorrel::length(placed.position - (placed.point + placed.normal * kDefaultDistance)),
                0.0, 1e-2);
    const sorrel::RgbaImage litLeft = screenshot();

    // A drag takes the light along.
    std::vector<std::string> drag = moveTo(left);
    drag.insert(drag.end(), {"mousedown", "1"});
    const std::vector<std::string> toRight = moveTo(right);
    drag.insert(drag.end(), toRight.begin(), toRight.end());
    drag.insert(drag.end(), {"mouseup", "1"});
    xdotool(drag);
    EXPECT_EQ(placementAt(right).light, kKeyLight);
    const sorrel::RgbaImage litRight = screenshot();

    ASSERT_EQ(litLeft.width, view_.width() + kPanelWidth);
    ASSERT_EQ(litRight.width, litLeft.width);
    EXPECT_GT(brightnessAround(litLeft, left), brightnessAround(litRight, left) + kBrighter);
    EXPECT_GT(brightnessAround(litRight, right), brightnessAround(litLeft, right) + kBrighter);
}

TEST_F(ViewerWindow, HoveringAHandleShowsItsConnectorLineAndClickingItSelectsItsLight) {
    const sorrel::SceneLight fill = view_.light(kFillLight);
    const Vec3 handle = fill.position + fill.direction * fill.centerOfInterest;
    const Pixel handlePixel = view_.pixelOf(handle);

    pointAt({view_.width() / 2, view_.height() - 1});
    const sorrel::RgbaImage away = screenshot();
    pointAt(handlePixel);
    EXPECT_EQ(linesUntil("hovered ").back(), std::string("hovered ") + kFillLight);
    const sorrel::RgbaImage hovering = screenshot();

    // The line runs from the handle to the light; its middle stretch lies clear of both.
    const Pixel lightPixel = view_.pixelOf(fill.position);
    int onLine = 0;
    int changed = 0;
    for (double t = 0.3; t <= 0.8; t += 0.01) {
        const int x =
            static_cast<int>(std::lround(handlePixel[0] + t * (lightPixel[0] - handlePixel[0])));
        const int y =
            static_cast<int>(std::lround(handlePixel[1] + t * (lightPixel[1] - handlePixel[1])));
        if (x < 1 || y < 1 || x >= view_.width() - 1 || y >= view_.height() - 1) continue;
        ++onLine;
        bool differs = false;
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                differs |= std::abs(luminance(hovering.at(x + dx, y + dy)) -
                                    luminance(away.at(x + dx, y + dy))) > kLineContrast;
        changed += differs ? 1 : 0;
    }
    ASSERT_GT(onLine, 10) << "the line lies outside the view";
    // The line is dashed: a good part of it, not all, is drawn.
    EXPECT_GT(changed, onLine / 3) << changed << " of " << onLine << " points of the line drawn";

    // A click on the handle selects its light through picking, and places nothing.
    clickAt(handlePixel);
    std::vector<std::string> lines = linesUntil("selected ");
    EXPECT_EQ(lines.back(), std::string("selected ") + kFillLight);
    std::vector<std::string> after;
    screenshot(&after);
    lines.insert(lines.end(), after.begin(), after.end());
    for (const std::string& line : lines) EXPECT_FALSE(placementOf(line)) << line;
}

TEST_F(ViewerWindow, AShiftClickAddsALightAndAResizedViewportStillFindsTheHandles) {
    const Pixel floor = view_.pixelOf({3.0, 0.0, 3.5});
    xdotool({"keydown", "shift"});
    clickAt(floor);
    xdotool({"keyup", "shift"});
    const std::string package = linesUntil("package ").back();
    EXPECT_EQ(package.rfind("package /root/world/lgt/", 0), 0u) << package;

    constexpr int kWidth = 900;
    constexpr int kHeight = 600;
    xdotool({"windowsize", window_, std::to_string(kWidth), std::to_string(kHeight)});
    EXPECT_EQ(linesUntil("viewport ").back(),
              "viewport " + pixelText({kWidth - kPanelWidth, kHeight}));
    view_.setSize(kWidth - kPanelWidth, kHeight);
    const sorrel::SceneLight fill = view_.light(kFillLight);
    pointAt(view_.pixelOf(fill.position + fill.direction * fill.centerOfInterest));
    EXPECT_EQ(linesUntil("hovered ").back(), std::string("hovered ") + kFillLight);
    const sorrel::RgbaImage resized = screenshot();
    EXPECT_EQ(resized.width, kWidth);
    EXPECT_EQ(resized.height, kHeight);
}

TEST_F(ViewerWindow, APlacementUndoneIsGoneWithItsLightAndHandleAndARedoBringsItBack) {
    // On the floor, away from where the key light aims in the studio.
    const Pixel onFloor = view_.pixelOf({-3.0, 0.0, 3.0});
    const sorrel::SceneLight key = view_.light(kKeyLight);
    const Pixel keyHandle = view_.pixelOf(key.position + key.direction * key.centerOfInterest);
    const sorrel::SceneLight fill = view_.light(kFillLight);
    const Pixel fillHandle = view_.pixelOf(fill.position + fill.direction * fill.centerOfInterest);
    const Pixel away{view_.width() / 2, view_.height() - 1};

    // A press that does nothing says why.
    xdotool({"key", "0"});
    clickAt(onFloor);
    EXPECT_EQ(linesUntil("nothing placed").back(), "nothing placed: no placement mode is chosen");

    // The key light goes to the floor, its handle onto the point pressed;
    // selecting the fill light then shows the key light's handle.
    xdotool({"key", "3"});
    clickAt(onFloor);
    const Placement placed = placementAt(onFloor);
    EXPECT_EQ(placed.light, kKeyLight);
    clickAt(fillHandle);
    EXPECT_EQ(linesUntil("selected ").back(), std::string("selected ") + kFillLight);
    pointAt(away);
    const sorrel::RgbaImage placedPicture = screenshot();

    xdotool({"key", "ctrl+z"});
    EXPECT_EQ(linesUntil("undo ").back(), std::string("undo place ") + kKeyLight);
    xdotool({"key", "ctrl+s"});
    EXPECT_EQ(linesUntil("saved ").back(), "saved " + savedFile());
    const viewer::SceneDescription saved = viewer::loadScene(savedFile());
    pointAt(keyHandle);
    EXPECT_EQ(linesUntil("hovered ").back(), std::string("hovered ") + kKeyLight)
        << "the handle is back where the light aimed before";
    pointAt(away);
    const sorrel::RgbaImage undone = screenshot();

    xdotool({"key", "ctrl+shift+z"});
    EXPECT_EQ(linesUntil("redo ").back(), std::string("redo place ") + kKeyLight);
    pointAt(onFloor);
    EXPECT_EQ(linesUntil("hovered ").back(), std::string("hovered ") + kKeyLight);
    pointAt(away);
    const sorrel::RgbaImage redone = screenshot();
    xdotool({"key", "ctrl+z"});
    linesUntil("undo ");
    xdotool({"key", "ctrl+y"});
    EXPECT_EQ(linesUntil("redo ").back(), std::string("redo place ") + kKeyLight);

    // The light and its spot move back and again.
    const int width = view_.width();
    const int moved = viewportPixelsThatDiffer(placedPicture, undone, width);
    EXPECT_GT(moved, width) << "the undo changed the picture";
    EXPECT_LT(viewportPixelsThatDiffer(placedPicture, redone, width), moved / 50);
}

TEST_F(ViewerWindow, AWindowKilledAfterSomePlacementsIsRecoveredWithTheSameLights) {
    // The studio opens in "Normal".
    Placement last;
    for (const Vec3& point : {Vec3{-3.0, 0.0, 3.0}, Vec3{2.5, 0.0, 4.0}}) {
        const Pixel pixel = view_.pixelOf(point);
        clickAt(pixel);
        last = placementAt(pixel);
        EXPECT_EQ(linesUntil("autosaved ")
                      .back()
                      .rfind("autosaved " + folder_.path() + "/state/beamwright/studio.json-", 0),
                  0u);
    }
    EXPECT_EQ(viewer_->killNow(), 128 + SIGKILL);

    startViewer({"--recover"});
    const std::vector<std::string> started = linesUntil("ready ");
    ASSERT_EQ(started.front().rfind("recovered ", 0), 0u) << started.front();
    window_ = display_->xdotool({"search", "--sync", "--name", kWindowTitle});
    xdotool({"key", "ctrl+s"});
    EXPECT_EQ(linesUntil("saved ").back(), "saved " + savedFile());
    bool found = false;
    for (const viewer::LightDescription& light : viewer::loadScene(savedFile()).lights) {
        if (light.path != kKeyLight) continue;
        found = true;
        EXPECT_LT(sorrel::length(sorrel::matrixRow(light.local, 3) - last.position), 1e-3);
    }
    EXPECT_TRUE(found);
}

}  // namespace
