// Loads Beamwright.so into the stand-in viewer host and shows it at work: the
// plugin table, a light placed by pointing at a floor in several modes, a new
// light package from a Shift press, and the attribute reference balance.

#include <GL/glew.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "host/core/attribute_model.h"
#include "host/core/attribute_ref.h"
#include "host/core/plugin_library.h"
#include "host/viewer/gl_context.h"
#include "host/viewer/mesh.h"
#include "host/viewer/picking.h"
#include "host/viewer/selection.h"
#include "host/viewer_stage.h"

using namespace sorrel;

namespace {

constexpr const char* kPlacementLayer = "BeamwrightLayer";
constexpr const char* kHandlesLayer = "BeamwrightCOIHandlesLayer";
constexpr const char* kLight = "/root/world/lgt/key";
constexpr const char* kPackageLight = "/root/world/lgt/package1/light";
constexpr int kShift = 0x02000000;
constexpr int kLeftButton = 1;

AttrRef mouse(const char* kind, int x, int y, int button, int buttons, int modifiers) {
    return groupAttr({{"type", stringAttr(kind)},
                      {"data", groupAttr({{"x", intAttr(x)},
                                          {"y", intAttr(y)},
                                          {"button", intAttr(button)},
                                          {"buttons", intAttr(buttons)},
                                          {"modifiers", intAttr(modifiers)}})}});
}

void printLight(const Scene& scene, const std::string& path, const char* what) {
    const Matrix world = *scene.worldTransform(path);
    std::printf("    %-34s at (%6.2f, %6.2f, %6.2f) aiming (%5.2f, %5.2f, %5.2f)\n", what,
                world[12], world[13], world[14], -world[8], -world[9], -world[10]);
}

void placeLights(ViewerStage& stage) {
    LayerObject& layer = *stage.viewport().pluginLayer(kPlacementLayer);
    layer.setOption("Enabled", intAttr(1));
    layer.setOption("DefaultDistance", doubleAttr(4.0));

    std::printf("\nPointing at the floor (camera at (2, 9, 12), 640 x 480 pixels):\n");
    layer.setOption("Mode", stringAttr("Normal"));
    std::printf("  \"Normal\": a left drag from pixel (320, 240) to (420, 300)\n");
    layer.event(mouse("MouseButtonPress", 320, 240, kLeftButton, 1, 0));
    printLight(stage.scene(), kLight, "after the press");
    for (int step = 1; step <= 2; ++step) {
        layer.event(mouse("MouseMove", 320 + 50 * step, 240 + 30 * step, 0, 1, 0));
        printLight(stage.scene(), kLight, step == 1 ? "after a move" : "after another move");
    }
    for (const char* mode : {"Face - Center - Oriented to Normal", "Specular", "Reflection"}) {
        layer.setOption("Mode", stringAttr(mode));
        layer.event(mouse("MouseButtonPress", 420, 300, kLeftButton, 1, 0));
        const std::string label = std::string("\"") + mode + "\"";
        printLight(stage.scene(), kLight, label.c_str());
    }

    std::printf("\n  \"Normal\", Shift with a left press at (200, 260): a new package\n");
    layer.setOption("Mode", stringAttr("Normal"));
    layer.setOption("PackageClassName", stringAttr("SpotPackage"));
    const bool created = layer.event(mouse("MouseButtonPress", 200, 260, kLeftButton, 1, kShift));
    std::printf("    package requested: %s\n", created ? "yes" : "no");
    for (const auto& [path, location] : stage.scene().locations())
        if (hasType(location, kLightType) && path != kLight)
            printLight(stage.scene(), path, path.c_str());
}

/// The floor as a grid and each light as a dot, by the fixed-function
/// pipeline: the host's own view of the scene beneath the plugin's handles.
void drawScene(Viewport& viewport, const Scene& scene) {
    constexpr float kBackground = 0.12f;
    constexpr double kHalfFloor = 10.0;
    constexpr float kLightDotPixels = 7.0f;
    glViewport(0, 0, viewport.width, viewport.height);
    glClearColor(kBackground, kBackground, kBackground, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    // Row-vector matrices laid out row by row read as GL's column-major ones.
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(viewport.projection.data());
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(viewport.view.data());
    glColor3f(0.35f, 0.35f, 0.38f);
    glBegin(GL_LINES);
    for (double t = -kHalfFloor; t <= kHalfFloor; t += 1.0) {
        glVertex3d(t, 0, -kHalfFloor), glVertex3d(t, 0, kHalfFloor);
        glVertex3d(-kHalfFloor, 0, t), glVertex3d(kHalfFloor, 0, t);
    }
    glEnd();
    glPointSize(kLightDotPixels);
    glColor3f(1.0f, 0.85f, 0.4f);
    glBegin(GL_POINTS);
    for (const auto& [path, location] : scene.locations()) {
        if (!hasType(location, kLightType)) continue;
        const Matrix world = *scene.worldTransform(path);
        glVertex3d(world[12], world[13], world[14]);
    }
    glEnd();
    glLoadIdentity();
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
}

/// Hovers the new package light's handle (the selected light shows the
/// manipulator instead of a handle), draws the viewport and writes a PNG.
void drawPicture(ViewerStage& stage, const GLContext& gl, const std::string& file) {
    Picking picking(stage.viewport(), gl);
    picking.install();
    const Matrix world = *stage.scene().worldTransform(kPackageLight);
    const Vec3 centreOfInterest = {world[12] - 4.0 * world[8], world[13] - 4.0 * world[9],
                                   world[14] - 4.0 * world[10]};
    const PickArea pixel = pixelOfPoint(stage.viewport(), centreOfInterest);
    LayerObject& handles = *stage.viewport().pluginLayer(kHandlesLayer);
    handles.event(mouse("MouseMove", pixel.x, pixel.y, 0, 0, 0));

    gl.makeCurrent();
    drawScene(stage.viewport(), stage.scene());
    handles.draw();
    const bool written = gl.readPixels().savePng(file);
    std::printf("\nThe viewport, with the package light's handle hovered: %s\n",
                written ? file.c_str() : "(could not be written)");
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : BEAMWRIGHT_PLUGIN_PATH;
    setenv("SORREL_ROOT", BEAMWRIGHT_RESOURCES_DIR, /* overwrite = */ 0);
    const AttributeModel& attributes = AttributeModel::instance();

    const PluginLibrary plugin(path);
    std::printf("Loaded %s\n\n", path.c_str());
    std::printf("  %-28s %-32s %s\n", "plugin", "kind", "version (kind, plugin)");
    for (const PluginRowView& row : plugin.getPlugins()) {
        std::printf("  %-28s %-32s %u, %u.%u\n", row.name.c_str(), row.apiName.c_str(),
                    row.apiVersion, row.pluginVersionMajor, row.pluginVersionMinor);
    }

    const std::int64_t before = attributes.liveReferences();
    {
        const GLContext gl(640, 480);
        ViewerStage stage(640, 480, {2, 9, 12}, {0, 0, 0}, &plugin);
        stage.scene().meshes().emplace("floor", Mesh::plane(20, 20, 4));
        for (const char* group : {"/root", "/root/world", "/root/world/lgt"})
            stage.delegate().putLocation(group, groupAttr({}));
        stage.delegate().putLocation(
            kLight,
            groupAttr({{"type", stringAttr(kLightType)},
                       {"geometry", groupAttr({{"centerOfInterest", doubleAttr(4.0)}})}}),
            translationMatrix(3, 4, 0));
        stage.select({kLight});
        placeLights(stage);
        drawPicture(stage, gl, BEAMWRIGHT_PICTURE_PATH);
    }
    const std::int64_t after = attributes.liveReferences();
    std::printf("\nLive attribute references: %lld before, %lld after (%s)\n",
                static_cast<long long>(before), static_cast<long long>(after),
                after == before ? "balanced" : "LEAKED");
    return after == before ? EXIT_SUCCESS : EXIT_FAILURE;
}
