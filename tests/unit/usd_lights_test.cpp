// BeamwrightLayerVDC fed a USD stage by the host's viewer delegate: which prims
// become lights, how ancestors move, hide and remove what lies below them, USD
// selection, and that the mirror dies with the component.

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>

#include "host/viewer/matrix.h"
#include "tests/support/light_attributes.h"
#include "tests/support/light_component_fixture.h"
#include "vrt/stage.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::UsdFlags::kExcluded;
using sorrel::UsdFlags::kPrimAdded;
using sorrel::UsdFlags::kPrimChanged;
using Tessera::Sorrel::ViewerUtils::Mat4d;
using Tessera::Sorrel::ViewerUtils::SceneNode;

namespace {

Mat4d moved(double x, double y, double z) { return Mat4d(sorrel::translationMatrix(x, y, z)); }

class UsdLights : public testing_support::LightComponentTest {
protected:
    vrt::Prim define(const char* path, const Mat4d& local = Mat4d()) {
        vrt::Prim prim = stage.definePrim(vrt::Path(path));
        prim.setLocalTransformation(local);
        return prim;
    }
    /// A prim with the light API and, unless empty, a centre of interest.
    vrt::Prim defineLight(const char* path, const vrt::Value& distance,
                          const Mat4d& local = Mat4d()) {
        vrt::Prim prim = define(path, local);
        prim.applyApi(vrt::Token("SorrelUsdLightAPI"));
        if (distance.getType() != vrt::Value::kEmptyType)
            prim.setAttr(vrt::Token("centerOfInterest"), distance);
        return prim;
    }
    void send(const vrt::Prim& prim, std::uint32_t flags = kPrimChanged) {
        delegate.sendUsdPrim(prim, flags, /* time = */ 1.0);
    }
    /// The node of the USD mirror at `path`, or null; the test only reads it.
    std::shared_ptr<SceneNode> nodeAt(const char* path) const {
        const auto root = std::const_pointer_cast<SceneNode>(component->getUsdRoot());
        return Tessera::Sorrel::ViewerUtils::findSceneNode(root, vrt::Path(path));
    }

    vrt::Stage stage;
};

TEST_F(UsdLights, TheLightApiMakesALightAtItsCentreOfInterestOrTwentyAhead) {
    vrt::Prim key = defineLight("/World/Lights/Key", vrt::Value(7.0), moved(0, 0, 3));
    // The distance is read at the earliest time, not at time 0 nor at the event's.
    key.setAttr(vrt::Token("centerOfInterest"), vrt::Value(5.0), /* time = */ -2.0);
    key.setAttr(vrt::Token("centerOfInterest"), vrt::Value(9.0), /* time = */ 1.0);
    send(key, kPrimAdded);

    const std::string keyLocation = "/usd/World/Lights/Key";
    const LightLocationData* light = lightAt(keyLocation);
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->position.z, 3.0);
    EXPECT_EQ(light->centerOfInterest.z, 3.0 - 5.0);
    EXPECT_EQ(light->locationHash, hashOfText(keyLocation.c_str()).words[0]);
    EXPECT_TRUE(light->isLight && light->showHandle && light->pickable && !light->excluded);
    EXPECT_EQ(light->color, (std::array<float, 4>{1.0f, 1.0f, 0.0f, 1.0f}));

    send(defineLight("/World/Lights/Bare", vrt::Value()));
    send(defineLight("/World/Lights/Float", vrt::Value(7.0f)));
    send(defineLight("/World/Lights/Text", vrt::Value(std::string("far"))));
    vrt::Prim plain = define("/World/Lights/Plain");
    plain.setAttr(vrt::Token("centerOfInterest"), vrt::Value(3.0));
    send(plain);
    EXPECT_EQ(lightAt("/usd/World/Lights/Plain"), nullptr) << "no API, no light";
    for (const char* name : {"Bare", "Float", "Text"}) {
        const LightLocationData* fallback = lightAt(std::string("/usd/World/Lights/") + name);
        ASSERT_NE(fallback, nullptr) << name;
        EXPECT_EQ(fallback->centerOfInterest.z, -20.0) << name;
    }

    // Location lights come first, whichever side reported first, and their events
    // leave the USD records as they are.
    const AttributeHandle keyRecord = lightAt(keyLocation)->pickerObject.handle();
    delegate.putLocation("/root", testing_support::groupAttributes());
    delegate.putLocation("/root/lgt", testing_support::lightAttributes(1.0));
    EXPECT_EQ(lightPaths().front(), "/root/lgt");
    EXPECT_EQ(lightAt(keyLocation)->pickerObject.handle(), keyRecord);
    const auto& list = component->getLights();
    EXPECT_EQ(list.size(), 1u + 4u);
    send(key, /* flags = */ 0);
    EXPECT_EQ(list.size(), 5u) << "an event without a change flag keeps the list current";

    key.removeApi(vrt::Token("SorrelUsdLightAPI"));
    send(key);
    EXPECT_EQ(lightAt(keyLocation), nullptr);
    EXPECT_NE(nodeAt("/World/Lights/Key"), nullptr) << "the node stays";
}

TEST_F(UsdLights, AncestorsMoveHideAndRemoveWhatLiesBelow) {
    vrt::Prim rig = define("/World/Rig", moved(10, 0, 0));
    send(rig, kPrimAdded);
    send(defineLight("/World/Rig/Key", vrt::Value(2.0), moved(0, 1, 0)), kPrimAdded);
    send(defineLight("/World/Rig/Arm/Fill", vrt::Value(2.0), moved(0, 0, 1)), kPrimAdded);

    // Only the rig is reported; what lies below it moves along.
    rig.setLocalTransformation(moved(20, 0, 0));
    send(rig);
    EXPECT_EQ(lightAt("/usd/World/Rig/Key")->position.x, 20.0);
    EXPECT_EQ(lightAt("/usd/World/Rig/Arm/Fill")->position.x, 20.0);

    const auto& list = component->getLights();
    send(rig);
    EXPECT_TRUE(list.empty()) << "any reported change makes the list stale";
    EXPECT_TRUE(nodeAt("/World/Rig/Key")->worldMatrixValid)
        << "an unchanged matrix invalidates nothing";

    send(rig, kPrimChanged | kExcluded);
    EXPECT_TRUE(lightPaths().empty()) << "an excluded prim hides its whole subtree";
    send(rig);
    EXPECT_EQ(lightPaths().size(), 2u);
    delegate.sendUsdRemoval(vrt::Path("/World/Nowhere"));
    EXPECT_EQ(list.size(), 2u) << "removing an unknown prim changes nothing";
    delegate.sendUsdRemoval(vrt::Path("/World/Rig"));
    EXPECT_TRUE(lightPaths().empty());

    // The mirror is a web of strong references; it must die with the component.
    send(define("/World/Rig/Key"), kPrimAdded);
    const std::weak_ptr<const SceneNode> world = component->getUsdRoot()->children.begin()->second;
    delegate.removeComponents();
    EXPECT_TRUE(world.expired());
}

TEST_F(UsdLights, SelectionGoesToExactlyTheNamedPrims) {
    send(defineLight("/World/Key", vrt::Value(1.0)), kPrimAdded);
    send(defineLight("/World/Key/Child", vrt::Value(1.0)), kPrimAdded);
    const auto& list = component->getLights();
    ASSERT_EQ(list.size(), 2u);

    delegate.sendUsdSelection({"/World/Key", "/World/Later", "/World/Key"});
    EXPECT_TRUE(list.empty()) << "records hold a copy of the flag, so the list is rebuilt";
    EXPECT_TRUE(lightAt("/usd/World/Key")->selected);
    EXPECT_FALSE(lightAt("/usd/World/Key/Child")->selected) << "selection is not inherited";
    send(defineLight("/World/Key", vrt::Value(1.0)));
    EXPECT_FALSE(lightAt("/usd/World/Key/Child")->selected) << "not by a later event either";

    send(defineLight("/World/Later", vrt::Value(1.0)), kPrimAdded);
    EXPECT_TRUE(lightAt("/usd/World/Later")->selected) << "selected before its first event";

    delegate.sendUsdSelection({});
    for (const LightLocationData* light : component->getLights()) EXPECT_FALSE(light->selected);
}

}  // namespace
