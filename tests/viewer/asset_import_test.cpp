// Assets through Assimp: a glTF's objects, materials, lights and camera arrive
// where the file puts them; the same scene written by Assimp's exporters in
// each format it writes comes back with its meshes (and, where the format
// carries them, its lights and camera); OBJ groups are objects of their own; a
// scene file brings an asset in under its transform; a file without a light
// gets the default rig; and --list prints it all.

#include "apps/scene/asset_import.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "apps/scene/scene_file.h"
#include "apps/scene/scene_framing.h"
#include "apps/viewer/scene_listing.h"
#include "tests/support/near.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/small_assets.h"

using namespace viewer;
using sorrel::Vec3;
using testing_support::near;

namespace {

constexpr double kTolerance = 1e-5;
constexpr double kRadiansToDegrees = 180.0 / 3.14159265358979323846;

const MeshDescription& meshNamed(const SceneDescription& scene, const std::string& name) {
    const auto found = std::find_if(scene.meshes.begin(), scene.meshes.end(),
                                    [&](const MeshDescription& m) { return m.name == name; });
    if (found == scene.meshes.end()) throw std::runtime_error("no mesh " + name);
    return *found;
}

Vec3 positionOf(const LightDescription& light) {
    return sorrel::matrixRow(light.local, sorrel::kTranslationRow);
}
Vec3 aimOf(const LightDescription& light) { return -sorrel::matrixRow(light.local, 2); }

std::size_t triangles(const SceneDescription& scene) {
    std::size_t count = 0;
    for (const MeshDescription& mesh : scene.meshes) count += mesh.mesh.triangleCorners().size();
    return count;
}

class AssetImport : public testing::Test {
protected:
    testing_support::TempFolder folder;
};

TEST_F(AssetImport, AGltfBringsItsObjectsMaterialsLightsAndCameraWhereTheFilePutsThem) {
    const SceneDescription scene = loadScene(testing_support::writeGltfScene(folder));

    ASSERT_EQ(scene.meshes.size(), 2u);
    const MeshDescription& floor = meshNamed(scene, "floor");
    const MeshDescription& crate = meshNamed(scene, "crate");
    EXPECT_EQ(floor.asset, std::optional<std::size_t>(0));
    EXPECT_EQ(floor.node, "floor");
    EXPECT_TRUE(near(floor.mesh.boundsCentre(), {0, 0, 0}, kTolerance));
    EXPECT_TRUE(near(crate.mesh.boundsCentre(), {2, 1, 0}, kTolerance));
    EXPECT_TRUE(floor.mesh.intersect({4.5, 5, 4.5}, {0, -1, 0}).has_value()) << "not scaled by 5";
    EXPECT_TRUE(near(floor.mesh.material.color, {0.8, 0.2, 0.1}, kTolerance));
    EXPECT_NEAR(floor.mesh.material.shininess, sorrel::shininessOfRoughness(0.3), kTolerance);

    ASSERT_EQ(scene.lights.size(), 2u);
    const LightDescription& key = scene.lights[0];
    EXPECT_EQ(key.path, "/root/world/lgt/Key_Light_001");
    EXPECT_EQ(key.kind, LightKind::Spot);
    EXPECT_FALSE(key.defaultRig);
    EXPECT_TRUE(near(positionOf(key), {0, 4, 0}, kTolerance));
    EXPECT_TRUE(near(aimOf(key), {0, -1, 0}, kTolerance));
    // Down onto the floor, the first surface along its aim.
    EXPECT_NEAR(key.centerOfInterest, 4.0, kTolerance);
    EXPECT_TRUE(near(key.properties.color, {1, 0.5, 0.25}, kTolerance));
    EXPECT_NEAR(key.properties.intensity, 2.0, kTolerance);
    // glTF gives half angles: an outer cone of 0.4 rad opens 0.8 rad.
    EXPECT_NEAR(key.properties.coneAngle, 0.8 * kRadiansToDegrees, 1e-3);

    const LightDescription& bulb = scene.lights[1];
    EXPECT_EQ(bulb.path, "/root/world/lgt/bulb");
    EXPECT_EQ(bulb.kind, LightKind::Point);
    EXPECT_TRUE(near(positionOf(bulb), {2, 3, 0}, kTolerance));
    EXPECT_NEAR(bulb.properties.intensity, 3.0, kTolerance);

    ASSERT_EQ(scene.cameras.size(), 1u);
    EXPECT_EQ(scene.cameras[0].name, "shot");
    EXPECT_TRUE(near(scene.camera.eye, {0, 3, 10}, kTolerance));
    EXPECT_TRUE(near(sorrel::normalizedOrZero(scene.camera.target - scene.camera.eye), {0, 0, -1},
                     kTolerance));
    EXPECT_NEAR(scene.camera.fovDegrees, 0.6 * kRadiansToDegrees, 1e-3);

    EXPECT_EQ(sceneListing(scene),
              "mesh floor 2\n"
              "mesh crate 2\n"
              "light /root/world/lgt/Key_Light_001 spot position (0.00, 4.00, 0.00) aim (0.00, "
              "-1.00, 0.00) coi 4.00\n"
              "light /root/world/lgt/bulb point position (2.00, 3.00, 0.00) aim (0.00, -1.00, "
              "0.00) coi 2.00\n"
              "camera shot\n");
}

TEST_F(AssetImport, ADirectionalLightStandsBackAlongItsAimByTheScenesSize) {
    folder.write("quad.bin", testing_support::quadBuffer());
    std::string text = testing_support::gltfScene();
    text.replace(text.find(R"("type": "point")"), 15, R"("type": "directional")");
    const SceneDescription scene = loadScene(folder.write("sun.gltf", text));
    const LightDescription& sun = scene.lights.at(1);
    EXPECT_EQ(sun.kind, LightKind::Directional);
    // The floor spans x and z from -5 to 5 at y = 0, the crate stands at y = 1.
    const Vec3 centre{0, 0.5, 0};
    const double size = std::sqrt(10.0 * 10.0 + 1.0 + 10.0 * 10.0);
    EXPECT_TRUE(near(aimOf(sun), {0, 0, -1}, kTolerance));
    EXPECT_TRUE(near(positionOf(sun), centre + Vec3{0, 0, size}, kTolerance));
    // Along its aim it meets nothing, so its centre of interest is the scene's size.
    EXPECT_NEAR(sun.centerOfInterest, size, kTolerance);
}

TEST_F(AssetImport, EachFormatAssimpWritesComesBackWithItsMeshesAndWhatItCarries) {
    for (const auto& [path, lightsAndCamera] : testing_support::writeEveryFormat(folder)) {
        const std::string format = path.substr(path.rfind('.'));
        const SceneDescription scene = loadScene(path);
        EXPECT_EQ(triangles(scene), 4u) << format;
        EXPECT_FALSE(scene.meshes.empty()) << format;
        if (lightsAndCamera) {
            EXPECT_EQ(scene.lights.size(), 2u) << format;
            EXPECT_EQ(scene.cameras.size(), 1u) << format;
            EXPECT_TRUE(std::none_of(scene.lights.begin(), scene.lights.end(),
                                     [](const LightDescription& l) { return l.defaultRig; }))
                << format;
        } else if (scene.lights.empty() || scene.lights.front().defaultRig) {
            // Without lights of its own, the default rig stands about the asset.
            ASSERT_EQ(scene.lights.size(), 3u) << format;
            EXPECT_TRUE(scene.lights[0].defaultRig) << format;
        }
    }
}

TEST_F(AssetImport, BlendersFbxInCentimetresGetsADepthRangeAndAPlacingDistanceToMatch) {
    // Written by Blender (tests/data/make_blend.py), which converts to Y up and centimetres.
    const SceneDescription scene = loadScene(std::string(BEAMWRIGHT_TEST_DATA) + "/set.fbx");
    ASSERT_EQ(scene.meshes.size(), 2u);
    EXPECT_TRUE(near(meshNamed(scene, "crate").mesh.boundsCentre(), {200, 100, 0}, 1e-3));
    ASSERT_EQ(scene.lights.size(), 1u);
    const LightDescription& key = scene.lights[0];
    EXPECT_EQ(key.path, "/root/world/lgt/key");
    EXPECT_EQ(key.kind, LightKind::Spot);
    EXPECT_TRUE(near(positionOf(key), {0, 400, 0}, 1e-3));
    EXPECT_TRUE(near(aimOf(key), {0, -1, 0}, 1e-6));
    EXPECT_NEAR(key.centerOfInterest, 400.0, 1e-3);
    EXPECT_NEAR(key.properties.coneAngle, 50.0, 1e-3);
    ASSERT_EQ(scene.cameras.size(), 1u);
    EXPECT_TRUE(near(scene.camera.eye, {0, 300, 1000}, 1e-3));

    // The far floor's corner lies some 1600 units from the eye: the view reaches it.
    EXPECT_GT(scene.camera.farPlane, std::hypot(500.0, 300.0, 1500.0));
    EXPECT_GE(scene.camera.nearPlane, 0.1);
    const auto distance =
        std::find_if(scene.options.begin(), scene.options.end(),
                     [](const auto& option) { return option.first == "DefaultDistance"; });
    ASSERT_NE(distance, scene.options.end());
    EXPECT_NEAR(std::get<double>(distance->second), sceneBounds(scene.meshes).size() / 4, 1e-9);
}

TEST_F(AssetImport, BlendersColladaBringsItsSpotAndCameraInMetres) {
    const SceneDescription scene = loadScene(std::string(BEAMWRIGHT_TEST_DATA) + "/set.dae");
    EXPECT_TRUE(near(meshNamed(scene, "crate").mesh.boundsCentre(), {2, 1, 0}, 1e-5));
    ASSERT_EQ(scene.lights.size(), 1u);
    EXPECT_TRUE(near(positionOf(scene.lights[0]), {0, 4, 0}, 1e-5));
    EXPECT_TRUE(near(aimOf(scene.lights[0]), {0, -1, 0}, 1e-5));
    EXPECT_NEAR(scene.lights[0].properties.coneAngle, 50.0, 1e-3);
    ASSERT_EQ(scene.cameras.size(), 1u);
    EXPECT_EQ(scene.cameras[0].name, "shot");
    EXPECT_TRUE(near(scene.camera.eye, {0, 3, 10}, 1e-5));
    EXPECT_EQ(scene.camera.farPlane, 1000.0);
}

TEST_F(AssetImport, ObjGroupsAreObjectsOfTheirOwnWithTheirMaterials) {
    folder.write("set.mtl", testing_support::kGroupsMtl);
    const SceneDescription scene = loadScene(folder.write("set.obj", testing_support::kGroupsObj));
    ASSERT_EQ(scene.meshes.size(), 2u);
    const MeshDescription& left = meshNamed(scene, "left");
    const MeshDescription& right = meshNamed(scene, "right");
    EXPECT_TRUE(near(left.mesh.boundsCentre(), {-2, 0.5, 0}, kTolerance));
    EXPECT_TRUE(near(right.mesh.boundsCentre(), {2, 0.5, 0}, kTolerance));
    EXPECT_TRUE(near(left.mesh.material.color, {0.9, 0.1, 0.1}, kTolerance));
    EXPECT_TRUE(near(right.mesh.material.color, {0.1, 0.2, 0.9}, kTolerance));
    // The quad stays one face: its centre is the centre of all four corners.
    const auto hit = right.mesh.intersect({2.9, 0.1, 5}, {0, 0, -1});
    ASSERT_TRUE(hit.has_value());
    EXPECT_TRUE(near(hit->faceCentre, {2, 0.5, 0}, kTolerance));
}

TEST_F(AssetImport, ASceneFileBringsAnAssetInUnderItsTransformAndNamesAroundItsOwn) {
    testing_support::writeGltfScene(folder);
    const SceneDescription scene = loadSceneFile(folder.write("scene.json", R"({
      "camera": {"name": "shot", "width": 320, "height": 200},
      "meshes": [{"name": "set", "file": "set.gltf", "transform": {"translate": [10, 0, 0]},
                  "material": {"color": [0, 1, 0]}}],
      "lights": [{"path": "/root/world/lgt/bulb", "position": [0, 9, 0]}],
      "selection": ["/root/world/lgt/bulb_2"]})"));
    ASSERT_EQ(scene.assets.size(), 1u);
    EXPECT_EQ(scene.assets[0].file, "set.gltf");
    EXPECT_TRUE(near(meshNamed(scene, "set/crate").mesh.boundsCentre(), {12, 1, 0}, kTolerance));
    EXPECT_TRUE(near(meshNamed(scene, "set/floor").mesh.material.color, {0, 1, 0}, kTolerance));
    // The file's own light keeps its name; the asset's takes the next free one.
    ASSERT_EQ(scene.lights.size(), 3u);
    EXPECT_EQ(scene.lights[0].path, "/root/world/lgt/bulb");
    EXPECT_EQ(scene.lights[2].path, "/root/world/lgt/bulb_2");
    EXPECT_TRUE(near(positionOf(scene.lights[2]), {12, 3, 0}, kTolerance));
    EXPECT_EQ(scene.lights[2].asset, std::optional<std::size_t>(0));
    EXPECT_TRUE(near(scene.camera.eye, {10, 3, 10}, kTolerance));
    EXPECT_EQ(scene.camera.width, 320);
}

TEST_F(AssetImport, ASceneWithoutLightsGetsTheDefaultRigFramedOnIt) {
    const SceneDescription scene = loadSceneFile(folder.write("scene.json", R"({
      "meshes": [{"name": "ball", "shape": "sphere", "radius": 10,
                  "transform": {"translate": [100, 0, 0]}}]})"));
    ASSERT_EQ(scene.lights.size(), 3u);
    for (const LightDescription& light : scene.lights) {
        EXPECT_TRUE(light.defaultRig) << light.path;
        // Each aims at the ball's centre, its centre of interest there.
        const Vec3 centre = positionOf(light) + aimOf(light) * light.centerOfInterest;
        EXPECT_TRUE(near(centre, {100, 0, 0}, 1e-6)) << light.path;
        EXPECT_GT(light.centerOfInterest, 10.0) << light.path << " stands inside the ball";
    }
    EXPECT_EQ(scene.lights[0].path, "/root/world/lgt/key");
    const std::string listing = sceneListing(scene);
    EXPECT_NE(listing.find("light /root/world/lgt/rim spot position"), std::string::npos);
    EXPECT_EQ(listing.back(), '\n');
    EXPECT_NE(listing.find(" default\n"), std::string::npos);
}

TEST_F(AssetImport, LimitsAreCheckedBeforeTheMeshesAreBuilt) {
    const std::string gltf = testing_support::writeGltfScene(folder);
    const struct {
        ImportLimits limits;
        std::string message;
    } cases[] = {
        {{3, 100, 100, 100, 100}, gltf + ": more than 3 triangles"},
        {{100, 7, 100, 100, 100}, gltf + ": more than 7 vertices"},
        {{100, 100, 5, 100, 100}, gltf + ": more than 5 nodes"},
        {{100, 100, 100, 1, 100}, gltf + ": 2 lights, more than 1"},
        {{100, 100, 100, 100, 0}, gltf + ": 1 cameras, more than 0"},
        // Assimp counts a default material of its own beside the file's.
        {{100, 100, 100, 100, 100, 1}, gltf + ": 2 materials, more than 1"},
    };
    for (const auto& limited : cases) {
        TakenNames taken;
        try {
            importAsset(gltf, sorrel::kIdentity, "", taken, limited.limits);
            ADD_FAILURE() << "accepted: " << limited.message;
        } catch (const SceneFileError& error) {
            EXPECT_EQ(error.what(), limited.message);
        }
    }
    TakenNames taken;
    EXPECT_EQ(importAsset(gltf, sorrel::kIdentity, "", taken, {4, 8, 6, 2, 1, 2}).meshes.size(),
              2u);
}

}  // namespace
