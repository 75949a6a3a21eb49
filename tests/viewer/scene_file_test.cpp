// Scene files: a good one reaches the viewer as written; each kind of bad
// input is refused with one line naming the file, the place and the fault.

#include "apps/scene/scene_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "apps/viewer/scene_listing.h"
#include "apps/viewer/scene_setup.h"
#include "host/core/names.h"
#include "host/viewer/scene_light.h"
#include "host/viewer_stage.h"
#include "tests/support/near.h"
#include "tests/support/reference_balance.h"
#include "tests/support/temp_folder.h"

using namespace viewer;
using sorrel::Vec3;

namespace {

using testing_support::near;

constexpr double kTolerance = 1e-9;

// A cube of six quads, one unit wide, without normals.
constexpr const char* kCubeObj = R"(v 0 0 0
v 1 0 0
v 1 1 0
v 0 1 0
v 0 0 1
v 1 0 1
v 1 1 1
v 0 1 1
f 1 4 3 2
f 5 6 7 8
f 1 2 6 5
f 4 8 7 3
f 1 5 8 4
f 2 3 7 6
)";

constexpr const char* kGoodScene = R"({
  "camera": {"eye": [0, 3, 10], "target": [0, 1, 0], "fov": 35, "width": 320, "height": 240},
  "meshes": [
    {"name": "floor", "shape": "plane", "size": [20, 20]},
    {"name": "ball", "shape": "sphere", "radius": 1, "transform": {"translate": [0, 1, 0]},
     "material": {"color": [0.8, 0.1, 0.1], "roughness": 0.1}},
    {"name": "cube", "file": "cube.obj", "transform": {"translate": [3, 0, 0], "scale": 2}}
  ],
  "groups": [{"path": "/root/world/lgt/rig", "transform": {"translate": [0, 2, 0]}}],
  "lights": [
    {"path": "/root/world/lgt/rig/key", "position": [4, 3, 0], "aim": [0, -1, 0],
     "intensity": 2, "cone": {"angle": 40, "falloff": 5}, "shadows": true},
    {"path": "/root/world/lgt/fill", "transform": {"translate": [-4, 3, 2]}, "centerOfInterest": 6}
  ],
  "usdLights": [{"path": "/World/Lights/Bounce", "position": [0, 5, -5], "aim": [0, 0, 0]}],
  "selection": ["/root/world/lgt/rig/key"],
  "options": {"Enabled": true, "Mode": "Normal", "DefaultDistance": 4},
  "tour": {"press": [160, 120], "pressByMode": {"Face - Center": [200, 150]}}
})";

class SceneFile : public testing_support::ReferenceBalanceTest {
protected:
    testing_support::TempFolder folder;
};

TEST_F(SceneFile, AGoodSceneReachesTheViewerAsWritten) {
    folder.write("cube.obj", kCubeObj);
    const SceneDescription scene = loadSceneFile(folder.write("scene.json", kGoodScene));
    EXPECT_EQ(scene.camera.width, 320);
    EXPECT_EQ(scene.camera.fovDegrees, 35.0);
    EXPECT_EQ(scene.tour.pressByMode.at("Face - Center"), (Pixel{200, 150}));
    const std::vector<std::pair<std::string, OptionValue>> options = {
        {sorrel::names::kDefaultDistance, 4.0},
        {sorrel::names::kEnabled, 1},
        {sorrel::names::kMode, std::string("Normal")}};
    EXPECT_EQ(scene.options, options);
    // Where each mesh came from, as a writer would write it back.
    ASSERT_EQ(scene.meshes.size(), 3u);
    ASSERT_TRUE(scene.meshes[0].shape.has_value());
    EXPECT_EQ(scene.meshes[0].shape->shape, "plane");
    EXPECT_TRUE(near(scene.meshes[0].shape->size, {20, 0, 20}, kTolerance));
    EXPECT_EQ(scene.meshes[1].shape->radius, 1.0);
    EXPECT_FALSE(scene.meshes[2].shape.has_value());
    ASSERT_EQ(scene.meshes[2].asset, std::optional<std::size_t>(0));
    EXPECT_EQ(scene.assets.at(0).file, "cube.obj");
    EXPECT_EQ(scene.assets.at(0).name, "cube");

    sorrel::ViewerStage stage(320, 240, scene.camera.eye, scene.camera.target);
    vrt::Stage usdStage;
    putSceneIntoStage(scene, stage, usdStage);

    // Lights stand where their parents put them, aim where the file says.
    const std::vector<sorrel::SceneLight> lights = sorrel::locationLights(stage.scene());
    ASSERT_EQ(lights.size(), 2u);
    const sorrel::SceneLight& fill = lights[0];
    const sorrel::SceneLight& key = lights[1];
    EXPECT_EQ(key.path, "/root/world/lgt/rig/key");
    EXPECT_TRUE(near(key.position, {4, 5, 0}, kTolerance));
    EXPECT_TRUE(near(key.direction, Vec3{-1, -1, 0} * (1 / std::sqrt(2.0)), kTolerance));
    EXPECT_NEAR(key.centerOfInterest, std::sqrt(32.0), 1e-9);
    EXPECT_EQ(key.properties.intensity, 2.0);
    EXPECT_EQ(key.properties.coneAngle, 40.0);
    EXPECT_TRUE(key.properties.shadows && key.selected);
    EXPECT_FALSE(fill.selected || fill.properties.shadows);
    EXPECT_EQ(fill.centerOfInterest, 6.0);
    EXPECT_TRUE(near(fill.direction, {0, 0, -1}, kTolerance));

    // --list gives the world position, below the group that lifts the key by 2.
    EXPECT_NE(sceneListing(scene).find("light /root/world/lgt/rig/key spot position (4.00, 5.00, "
                                       "0.00) aim (-0.71, -0.71, 0.00) coi 5.66\n"),
              std::string::npos)
        << sceneListing(scene);

    const auto usd = usdSceneLights(scene);
    ASSERT_EQ(usd.size(), 1u);
    EXPECT_TRUE(near(usd[0].position, {0, 5, -5}, kTolerance));
    EXPECT_TRUE(usdStage.getPrim(vrt::Path("/World/Lights/Bounce"))
                    .hasApi(vrt::Token(sorrel::names::kUsdLightApi)));

    const auto& meshes = stage.scene().meshes();
    EXPECT_NEAR(meshes.at("ball").material.shininess, sorrel::shininessOfRoughness(0.1), 1e-9);
    // The OBJ's quads stay faces: a ray into the top, off centre, snaps to the quad's centre.
    const auto hit = meshes.at("cube").intersect({3.5, 9, 0.5}, {0, -1, 0});
    ASSERT_TRUE(hit.has_value());
    EXPECT_TRUE(near(hit->point, {3.5, 2, 0.5}, kTolerance));
    EXPECT_TRUE(near(hit->faceCentre, {4, 2, 1}, kTolerance));
    EXPECT_TRUE(near(hit->normal, {0, 1, 0}, kTolerance));
}

TEST_F(SceneFile, EachBadInputIsRefusedWithOneLineNamingFilePlaceAndFault) {
    folder.write("bad.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 9\n");
    const std::string file = folder.path() + "/scene.json";
    const struct {
        const char* text;  // null: no file at all
        std::string message;
    } cases[] = {
        {nullptr, file + ": no such file, or it cannot be read"},
        {"{\n  \"camera\": {\"eye\": [0, 1,, 2]}\n}",
         file + ":2:27: syntax error while parsing value - unexpected ','; expected '[', '{', or a "
                "literal"},
        {R"({"lights": [{"path": "/root/world/lgt/key", "colour": [1, 1, 1]}]})",
         file + ": lights[0]: unknown key 'colour' (known: path, kind, transform, position, aim, "
                "centerOfInterest, color, intensity, cone, shadows)"},
        {R"({"lights": [{"path": "/root/world/lgt/key", "cone": {"angle": "wide"}}]})",
         file + ": lights[0].cone.angle: expected a number, got string"},
        {R"({"meshes": [{"name": "m", "file": "absent.obj"}]})",
         file + ": meshes[0].file: no mesh file '" + folder.path() + "/absent.obj'"},
        {R"({"meshes": [{"name": "m", "file": "bad.obj"}]})",
         file + ": meshes[0].file: " + folder.path() +
             "/bad.obj: not a scene file Assimp can read: OBJ: vertex index out of range"},
        {R"({"lights": [{"path": "/root/world/lgt/rig/key"}]})",
         file + ": lights[0].path: the parent of '/root/world/lgt/rig/key' is missing (add it to "
                "\"groups\" first)"},
        {R"({"lights": [{"path": "/root/world/key"}]})",
         file + ": lights[0].path: '/root/world/key' does not lie below /root/world/lgt"},
        {R"({"selection": ["/root/world/lgt/nobody"]})",
         file + ": selection[0]: no light or group '/root/world/lgt/nobody'"},
        {R"({"options": {"Mode": "Norml"}})", file + ": options.Mode: unknown mode 'Norml'"},
    };
    for (const auto& bad : cases) {
        std::filesystem::remove(file);
        if (bad.text != nullptr) folder.write("scene.json", bad.text);
        try {
            loadSceneFile(file);
            ADD_FAILURE() << "accepted: " << (bad.text ? bad.text : "(no file)");
        } catch (const SceneFileError& error) {
            EXPECT_EQ(error.what(), bad.message);
        }
    }
}

}  // namespace
