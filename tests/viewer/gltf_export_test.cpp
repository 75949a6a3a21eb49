// The scene written as glTF: read back with a glTF reader, its meshes and
// lights are where the scene has them, with their colours, strengths and cones.
#include "apps/scene/gltf_export.h"

#include <gtest/gtest.h>
#include <tiny_gltf.h>

#include <cmath>
#include <map>

#include "apps/scene/atomic_file.h"
#include "host/render/primitive_meshes.h"
#include "host/viewer/scene_light.h"
#include "tests/support/temp_folder.h"

namespace {

using sorrel::Vec3;

constexpr double kTolerance = 1e-6;
constexpr double kDegreesPerRadian = 180.0 / 3.14159265358979323846;

sorrel::Scene twoMeshesAndALight() {
    sorrel::Scene scene;
    sorrel::Mesh floor = sorrel::Mesh::plane(10, 10, 2);
    floor.material.color = {0.2, 0.4, 0.6};
    scene.meshes().emplace("floor", floor);
    sorrel::Mesh box = sorrel::Mesh::box({1, 2, 3});
    box.world = sorrel::translationMatrix(1, 1, 0);
    scene.meshes().emplace("box", box);
    scene.set("/root", sorrel::AttrRef(), sorrel::translationMatrix(0, 1, 0));
    sorrel::Matrix local = sorrel::translationMatrix(2, 3, 4);
    local[0] = 0.0;  // turned a quarter about y
    local[2] = -1.0;
    local[8] = 1.0;
    local[10] = 0.0;
    scene.set("/root/key", sorrel::AttrRef(), local);
    return scene;
}

sorrel::SceneLight keyLight() {
    sorrel::SceneLight light;
    light.path = "/root/key";
    light.centerOfInterest = 6.5;
    light.properties.color = {0.5, 0.25, 0.1};
    light.properties.intensity = 4.0;
    light.properties.coneAngle = 50.0;
    light.properties.coneFalloff = 5.0;
    return light;
}

tinygltf::Model readBack(const std::string& text) {
    tinygltf::Model model;
    tinygltf::TinyGLTF reader;
    std::string errors;
    std::string warnings;
    EXPECT_TRUE(reader.LoadASCIIFromString(&model, &errors, &warnings, text.data(),
                                           static_cast<unsigned>(text.size()), ""))
        << errors;
    EXPECT_EQ(errors, "");
    return model;
}

TEST(GltfExport, MeshesAndLightsReadBackWhereTheSceneHasThem) {
    const sorrel::Scene scene = twoMeshesAndALight();
    const tinygltf::Model model = readBack(viewer::gltfText(scene, {keyLight()}));

    std::map<std::string, const tinygltf::Node*> nodes;
    for (const tinygltf::Node& node : model.nodes) nodes[node.name] = &node;
    ASSERT_EQ(nodes.size(), 3u);
    ASSERT_EQ(model.scenes.size(), 1u);
    EXPECT_EQ(model.scenes[0].nodes.size(), 3u);

    // The box: its world matrix, its triangles, twelve of them.
    const tinygltf::Node& box = *nodes.at("box");
    const sorrel::Matrix boxWorld = scene.meshes().at("box").world;
    ASSERT_EQ(box.matrix.size(), 16u);
    for (int i = 0; i < 16; ++i) EXPECT_EQ(box.matrix[i], boxWorld[i]) << i;
    const tinygltf::Primitive& boxShape = model.meshes.at(box.mesh).primitives.at(0);
    EXPECT_EQ(model.accessors.at(boxShape.indices).count, 36u);
    EXPECT_EQ(model.accessors.at(boxShape.attributes.at("POSITION")).count,
              scene.meshes().at("box").points().size());
    const tinygltf::Primitive& floorShape =
        model.meshes.at(nodes.at("floor")->mesh).primitives.at(0);
    const std::vector<double> floorColour = {0.2, 0.4, 0.6, 1.0};
    EXPECT_EQ(model.materials.at(floorShape.material).pbrMetallicRoughness.baseColorFactor,
              floorColour);

    // The light: the world matrix of its location (its parent's move
    // included), a spot with its cone in half openings, its strength split
    // from its colour, its centre of interest kept.
    const tinygltf::Node& key = *nodes.at("key");
    const sorrel::Matrix keyWorld = *scene.worldTransform("/root/key");
    for (int i = 0; i < 16; ++i) EXPECT_EQ(key.matrix[i], keyWorld[i]) << i;
    EXPECT_EQ(key.matrix[13], 4.0) << "translation in the last column, as glTF has it";
    const int index = key.extensions.at("KHR_lights_punctual").Get("light").GetNumberAsInt();
    const tinygltf::Light& light = model.lights.at(index);
    EXPECT_EQ(light.type, "spot");
    EXPECT_EQ(light.color, (std::vector<double>{1.0, 0.5, 0.2}));
    EXPECT_NEAR(light.intensity, 2.0, kTolerance);
    EXPECT_NEAR(light.spot.outerConeAngle * kDegreesPerRadian, 25.0, kTolerance);
    EXPECT_NEAR(light.spot.innerConeAngle * kDegreesPerRadian, 20.0, kTolerance);
    EXPECT_EQ(key.extras.Get("centerOfInterest").GetNumberAsDouble(), 6.5);
}

TEST(GltfExport, TheFileIsWrittenWholeOrNotAtAll) {
    const testing_support::TempFolder folder;
    const std::string path = folder.write("scene.gltf", "earlier");
    const sorrel::Scene scene = twoMeshesAndALight();
    viewer::exportGltf(path, scene, {keyLight()});
    std::ifstream in(path);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(text, viewer::gltfText(scene, {keyLight()}));
    EXPECT_THROW(viewer::exportGltf(folder.path(), scene, {}), viewer::FileWriteError);
}

}  // namespace
