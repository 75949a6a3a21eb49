// The window's camera list: an asset's cameras are offered in the panel, and
// choosing one there moves the view to it.

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include "apps/window/window_layout.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/small_assets.h"
#include "tests/window/child_process.h"
#include "tests/window/xvfb_display.h"

using window_testing::ChildProcess;
using window_testing::XvfbDisplay;

namespace {

constexpr std::chrono::seconds kPatience{30};
/// The viewport of an asset's camera is this wide, pixels; the panel stands to its right.
constexpr int kViewportWidth = 640;
/// Where the camera list's box stands: the panel's first line, pixels from
/// the panel's left and the window's top.
constexpr int kListX = 60;
constexpr int kListY = 28;
/// The list opens downwards; the second camera's row, below the box.
constexpr int kSecondCameraBelowList = 39;

TEST(CameraListWindow, ChoosingACameraInThePanelMovesTheViewToIt) {
    testing_support::TempFolder folder;
    folder.write("quad.bin", testing_support::quadBuffer());
    const std::string asset = folder.write("two.gltf", testing_support::gltfSceneWithTwoCameras());
    std::unique_ptr<XvfbDisplay> display;
    try {
        display = std::make_unique<XvfbDisplay>(folder.path() + "/xvfb.log");
    } catch (const std::exception& error) {
        GTEST_SKIP() << "Xvfb cannot start here, so there is no window to test: " << error.what();
    }
    std::vector<std::string> environment{display->environment()};
    // As for the other window tests: the drivers' allocations at exit are not the viewer's.
    if (const char* sanitizer = std::getenv("ASAN_OPTIONS"))
        environment.push_back(std::string("ASAN_OPTIONS=") + sanitizer + ":detect_leaks=0");
    ChildProcess viewer({BEAMWRIGHT_VIEWER_PATH, asset, "--window"}, environment,
                        folder.path() + "/viewer.log");
    const auto lineStarting = [&viewer](const std::string& prefix) -> std::optional<std::string> {
        while (const std::optional<std::string> line = viewer.nextLine(kPatience))
            if (line->rfind(prefix, 0) == 0) return line;
        return std::nullopt;
    };
    ASSERT_TRUE(lineStarting("ready ").has_value());
    const std::string window =
        display->xdotool({"search", "--sync", "--name", viewer::kWindowTitle});
    const int x = kViewportWidth + kListX;
    const int y = kListY;
    display->xdotool(
        {"mousemove", "--window", window, std::to_string(x), std::to_string(y), "click", "1"});
    display->xdotool({"mousemove", "--window", window, std::to_string(x),
                      std::to_string(y + kSecondCameraBelowList), "click", "1"});

    // "top" looks down from twelve units up (the orbit stays short of vertical).
    EXPECT_EQ(lineStarting("camera "), std::optional<std::string>("camera top"));
    const std::optional<std::string> moved = lineStarting("camera eye ");
    ASSERT_TRUE(moved.has_value());
    static const std::regex kCamera(
        R"(camera eye \((\S+), (\S+), (\S+)\) target \((\S+), (\S+), (\S+)\))");
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(*moved, parts, kCamera)) << *moved;
    EXPECT_NEAR(std::stod(parts[2]), 12.0, 0.01) << *moved;
    EXPECT_NEAR(std::stod(parts[1]), 0.0, 1e-3) << *moved;
    EXPECT_NEAR(std::stod(parts[3]), 0.0, 0.25) << *moved;

    display->xdotool({"key", "Escape"});
    EXPECT_TRUE(lineStarting("quit").has_value());
    EXPECT_EQ(viewer.wait(), 0);
}

}  // namespace
