// The host's history of edits under random edits, undos and redos: undoing
// everything gives the scene as loaded, redoing everything the scene as
// edited, and after every step the plugin's light list is the host's lights.

#include "host/viewer/edit_history.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>

#include "host/viewer/scene_light.h"
#include "tests/support/light_attributes.h"
#include "tests/support/light_component_fixture.h"

namespace {

using sorrel::translationMatrix;
using testing_support::lightAttributes;

constexpr int kTrials = 20;
constexpr int kActionsPerTrial = 40;
constexpr double kTolerance = 1e-9;

/// Each location's attribute reference and transform: what an edit changes.
using SceneState = std::map<std::string, std::pair<const void*, sorrel::Matrix>>;

SceneState stateOf(const sorrel::Scene& scene) {
    SceneState state;
    for (const auto& [path, location] : scene.locations())
        state[path] = {location.attributes.get(), location.local};
    return state;
}

class EditHistoryTest : public testing_support::LightComponentTest {
protected:
    void SetUp() override {
        LightComponentTest::SetUp();
        delegate.putLightRoots();
        for (int i = 0; i < 4; ++i)
            delegate.putLocation(lightPath(i), lightAttributes(2.0 + i),
                                 translationMatrix(i, 1, 0));
    }

    static std::string lightPath(int i) { return "/root/world/lgt/light" + std::to_string(i); }

    /// The plugin's light list against the host's lights: the same paths,
    /// positions and centres of interest.
    void expectListMatchesScene(const std::string& after) {
        SCOPED_TRACE(after);
        std::map<std::string, sorrel::SceneLight> hostLights;
        for (const sorrel::SceneLight& light : sorrel::locationLights(delegate.scene()))
            hostLights[light.path] = light;
        ASSERT_EQ(component->getLights().size(), hostLights.size());
        for (const LightLocationData* light : component->getLights()) {
            const std::string path = testing_support::pathOf(*light);
            ASSERT_EQ(hostLights.count(path), 1u) << path;
            const sorrel::SceneLight& host = hostLights[path];
            EXPECT_NEAR(light->position.x, host.position.x, kTolerance) << path;
            EXPECT_NEAR(light->position.y, host.position.y, kTolerance) << path;
            EXPECT_NEAR(light->position.z, host.position.z, kTolerance) << path;
            const sorrel::Vec3 aim = host.position + host.direction * host.centerOfInterest;
            EXPECT_NEAR(light->centerOfInterest.x, aim.x, kTolerance) << path;
            EXPECT_NEAR(light->centerOfInterest.z, aim.z, kTolerance) << path;
        }
    }

    /// One edit as the window makes them: a move, a new centre of interest,
    /// a package created, or a light removed.
    void edit(std::mt19937& random, sorrel::EditHistory& history, int& packages) {
        std::uniform_int_distribution<int> kind(0, 3);
        std::uniform_real_distribution<double> place(-5.0, 5.0);
        std::vector<std::string> lights;
        for (const sorrel::SceneLight& light : sorrel::locationLights(delegate.scene()))
            lights.push_back(light.path);
        const int what = lights.empty() ? 2 : kind(random);
        const std::string path = lights.empty() ? "" : lights[random() % lights.size()];
        history.begin();
        if (what == 0) {
            delegate.moveLocation(path, translationMatrix(place(random), place(random), 1));
        } else if (what == 1) {
            sorrel::Location& light = *delegate.scene().find(path);
            light.attributes =
                sorrel::withChild(light.attributes, sorrel::names::kGeometryCenterOfInterest,
                                  sorrel::doubleAttr(1.0 + place(random) * place(random)));
            delegate.sendLocation(path);
        } else if (what == 2) {
            const std::string package = "/root/world/lgt/package" + std::to_string(++packages);
            delegate.putLocation(package, testing_support::groupAttributes(),
                                 translationMatrix(place(random), 2, 0));
            delegate.putLocation(package + "/light", lightAttributes(3.0));
        } else {
            delegate.removeLocation(path);
        }
        EXPECT_TRUE(history.end("edit"));
    }
};

TEST_F(EditHistoryTest, UndoAllGivesTheSceneAsLoadedAndRedoAllTheSceneAsEdited) {
    const SceneState loaded = stateOf(delegate.scene());
    std::mt19937 random(20261124);
    for (int trial = 0; trial < kTrials; ++trial) {
        sorrel::EditHistory history(delegate);
        int packages = 0;
        for (int action = 0; action < kActionsPerTrial; ++action) {
            const int roll = static_cast<int>(random() % 4);
            if (roll == 0)
                history.undo();
            else if (roll == 1)
                history.redo();
            else
                edit(random, history, packages);
            expectListMatchesScene("action " + std::to_string(action));
        }
        while (history.redo()) expectListMatchesScene("redo to the latest");
        const SceneState edited = stateOf(delegate.scene());
        while (history.undo()) expectListMatchesScene("undo");
        EXPECT_EQ(stateOf(delegate.scene()), loaded);
        while (history.redo()) expectListMatchesScene("redo");
        EXPECT_EQ(stateOf(delegate.scene()), edited);
        while (history.undo()) {
        }
    }
}

TEST_F(EditHistoryTest, AnEditThatChangesNothingIsNoStepAndANewEditEndsTheRedos) {
    sorrel::EditHistory history(delegate);
    history.begin();
    EXPECT_FALSE(history.end("press on nothing"));
    EXPECT_FALSE(history.canUndo());

    history.begin();
    delegate.moveLocation(lightPath(0), translationMatrix(7, 0, 0));
    history.begin();  // ends the first
    delegate.moveLocation(lightPath(1), translationMatrix(8, 0, 0));
    history.end("second move");
    EXPECT_EQ(history.labels(), (std::vector<std::string>{"edit", "second move"}));
    EXPECT_EQ(history.undo(), "second move");
    EXPECT_EQ(history.undo(), "edit");
    EXPECT_EQ(delegate.scene().find(lightPath(0))->local, translationMatrix(0, 1, 0));
    EXPECT_EQ(history.redo(), "edit");
    history.begin();
    delegate.removeLocation(lightPath(2));
    history.end("third");
    EXPECT_FALSE(history.canRedo()) << "an edit after an undo drops what was undone";
    EXPECT_EQ(history.labels(), (std::vector<std::string>{"edit", "third"}));
}

}  // namespace
