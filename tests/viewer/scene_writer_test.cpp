// Saving the scene as it stands: opening the saved file gives the same lights,
// packages, view, selection and options, and saving that again the same
// bytes; an asset's scene is saved beside it, referencing it, never over it.
#include "apps/scene/scene_writer.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "apps/scene/atomic_file.h"
#include "apps/scene/scene_file.h"
#include "apps/viewer/scene_as_it_stands.h"
#include "apps/viewer/scene_setup.h"
#include "host/core/names.h"
#include "host/siblings/light_package_commands.h"
#include "host/viewer_stage.h"
#include "tests/support/reference_balance.h"
#include "tests/support/temp_folder.h"
#include "tests/viewer/small_assets.h"

using namespace viewer;

namespace {

using testing_support::contentOf;

constexpr double kTolerance = 1e-9;
const std::string kPackage = "/root/world/lgt/package1";

void expectSameLights(const std::vector<LightDescription>& saved,
                      const std::vector<LightDescription>& opened) {
    ASSERT_EQ(saved.size(), opened.size());
    for (std::size_t i = 0; i < saved.size(); ++i) {
        SCOPED_TRACE(saved[i].path);
        EXPECT_EQ(opened[i].path, saved[i].path);
        for (std::size_t k = 0; k < saved[i].local.size(); ++k)
            EXPECT_NEAR(opened[i].local[k], saved[i].local[k], kTolerance);
        EXPECT_NEAR(opened[i].centerOfInterest, saved[i].centerOfInterest, kTolerance);
        EXPECT_EQ(opened[i].properties.coneAngle, saved[i].properties.coneAngle);
        EXPECT_EQ(opened[i].properties.intensity, saved[i].properties.intensity);
        EXPECT_EQ(opened[i].kind, saved[i].kind);
    }
}

class SceneWriter : public testing_support::ReferenceBalanceTest {
protected:
    /// The scene of `loaded` put into a viewer, its first light moved and
    /// re-aimed, a package created, then described as it stands.
    SceneDescription editedScene(const SceneDescription& loaded) {
        sorrel::ViewerStage stage(320, 240, loaded.camera.eye, loaded.camera.target);
        vrt::Stage usd;
        putSceneIntoStage(loaded, stage, usd);
        sorrel::Scene& scene = stage.scene();
        const std::string moved = loaded.lights.front().path;
        sorrel::Matrix local = scene.find(moved)->local;
        local[12] += 0.125;
        local[13] = 1.0 / 3.0;
        stage.delegate().moveLocation(moved, local);
        stage.delegate().putLocation(kPackage, sorrel::lightPackageAttributes("SpotPackage", ""),
                                     sorrel::translationMatrix(1, 2, 3));
        stage.delegate().putLocation(
            kPackage + "/light",
            sorrel::groupAttr(
                {{sorrel::names::kType, sorrel::stringAttr(sorrel::names::kLightType)},
                 {sorrel::names::kGeometry,
                  sorrel::lightGeometry(sorrel::LightProperties{}, 2.75)}}));
        ViewNow view;
        view.camera = loaded.camera;
        view.camera.eye = {1.5, 2.5, 9.25};
        view.selection = {kPackage + "/light"};
        view.options = {{sorrel::names::kMode, std::string("Specular")}};
        return sceneAsItStands(loaded, scene, view);
    }

    testing_support::TempFolder folder;
};

TEST_F(SceneWriter, ASavedSceneOpensAsItStoodAndSavesAgainToTheSameBytes) {
    const SceneDescription edited = editedScene(loadScene(BEAMWRIGHT_STUDIO_SCENE));
    const std::string first = folder.path() + "/studio-lit.json";
    saveSceneFile(first, edited);
    const SceneDescription opened = loadScene(first);

    expectSameLights(edited.lights, opened.lights);
    ASSERT_EQ(opened.groups.size(), 1u);
    EXPECT_EQ(opened.groups[0].path, kPackage);
    EXPECT_EQ(opened.groups[0].packageClass, std::optional<std::string>("SpotPackage"));
    EXPECT_EQ(opened.selection, edited.selection);
    EXPECT_NEAR(opened.camera.eye.z, 9.25, kTolerance);
    EXPECT_EQ(opened.meshes.size(), edited.meshes.size());
    const auto mode = std::find_if(opened.options.begin(), opened.options.end(),
                                   [](const auto& o) { return o.first == "Mode"; });
    ASSERT_NE(mode, opened.options.end());
    EXPECT_EQ(std::get<std::string>(mode->second), "Specular");

    const std::string second = folder.path() + "/again.json";
    saveSceneFile(second, opened);
    EXPECT_EQ(contentOf(second), contentOf(first));
}

TEST_F(SceneWriter, AnAssetsSceneIsSavedBesideItAndItsLightsComeBackOnce) {
    const std::string assetPath = testing_support::writeGltfScene(folder);
    const std::string assetBytes = contentOf(assetPath);
    const SceneDescription loaded = loadScene(assetPath);
    const SceneDescription edited = editedScene(loaded);
    const std::string saved = savePathFor(assetPath);
    EXPECT_EQ(saved, assetPath + ".beamwright.json");
    EXPECT_EQ(savePathFor(saved), saved) << "a scene file saves back to itself";
    saveSceneFile(saved, edited);
    EXPECT_EQ(contentOf(assetPath), assetBytes) << "the asset itself is never written";

    const SceneDescription opened = loadScene(saved);
    expectSameLights(edited.lights, opened.lights);
    EXPECT_EQ(opened.meshes.size(), loaded.meshes.size());
    EXPECT_EQ(opened.cameras.size(), loaded.cameras.size());
    saveSceneFile(folder.path() + "/again.json", opened);
    EXPECT_EQ(contentOf(folder.path() + "/again.json"), contentOf(saved));
}

TEST_F(SceneWriter, AFailedSaveLeavesTheEarlierFileWholeAndSaysWhy) {
    const SceneDescription scene = loadScene(BEAMWRIGHT_STUDIO_SCENE);
    const std::string earlier = folder.write("scene.json", "{}\n");
    saveSceneFile(earlier, scene);
    const std::string saved = contentOf(earlier);
    try {
        saveSceneFile(folder.path(), scene);
        ADD_FAILURE() << "a folder in the way was written over";
    } catch (const FileWriteError& error) {
        EXPECT_EQ(std::string(error.what()), "cannot write " + folder.path() + ": it is a folder");
    }
    EXPECT_THROW(saveSceneFile(folder.path() + "/missing/scene.json", scene), FileWriteError);
    EXPECT_EQ(contentOf(earlier), saved);
}

}  // namespace
