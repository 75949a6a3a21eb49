// BeamwrightLayerVDC fed a USD stage by the host's viewer delegate: which prims
// become lights, how ancestors move, hide and remove what lies below them, USD
// selection, and that the mirror dies with the component.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "frame/plugin_object_handle.h"
#include "frame/viewer_delegate_component_suite.h"
#include "host/matrix.h"
#include "host/viewer_delegate.h"
#include "scene/light_component.h"
#include "tests/support/light_attributes.h"
#include "tests/support/unit_host.h"
#include "vrt/stage.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::UsdFlags::kExcluded;
using sorrel::UsdFlags::kPrimAdded;
using sorrel::UsdFlags::kPrimChanged;
using Tessera::Sorrel::ViewerUtils::Mat4d;
using Tessera::Sorrel::ViewerUtils::SceneNode;

namespace {

using Paths = std::vector<std::string>;

Mat4d moved(double x, double y, double z) { return Mat4d(sorrel::translationMatrix(x, y, z)); }

std::string pathOf(const LightLocationData& light) {
    return light.pickerObject.getChild<StringAttribute>("location").getValue();
}

/// The distance from a light to its centre of interest.
double distanceAhead(const LightLocationData& light) {
    const auto offset = light.centerOfInterest - light.position;
    return std::sqrt(dot(offset, offset));
}

/// The node below `root` by the names of its path.
const SceneNode* nodeAt(const SceneNode& root, std::initializer_list<const char*> names) {
    const SceneNode* node = &root;
    for (const char* name : names) {
        const auto found = node->children.find(vrt::Token(name));
        if (found == node->children.end()) return nullptr;
        node = found->second.get();
    }
    return node;
}

class UsdLights : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        ViewerDelegateComponentPluginBase::setHost(testing_support::hostRecord());
        const sorrel::ComponentObject& object =
            delegate.addComponent("BeamwrightLayerVDC", reinterpret_cast<void* const*>(&suite));
        component = dynamic_cast<BeamwrightLayerVDC*>(static_cast<ViewerDelegateComponent*>(
            pluginInstanceOf(static_cast<const PluginObjectHandle*>(object.handle()))));
        ASSERT_NE(component, nullptr);
    }
    void TearDown() override {
        delegate.removeComponents();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    vrt::Prim define(const char* path, const Mat4d& local = Mat4d()) {
        vrt::Prim prim = stage.definePrim(vrt::Path(path));
        prim.setLocalTransformation(local);
        return prim;
    }
    /// A prim with the light API and, when given, a double centre of interest.
    vrt::Prim defineLight(const char* path, const Mat4d& local, const vrt::Value& distance) {
        vrt::Prim prim = define(path, local);
        prim.applyApi(vrt::Token("SorrelUsdLightAPI"));
        if (distance.getType() != vrt::Value::kEmptyType)
            prim.setAttr(vrt::Token("centerOfInterest"), distance);
        return prim;
    }
    void send(const vrt::Prim& prim, std::uint32_t flags = kPrimChanged) {
        delegate.sendUsdPrim(prim, flags, /* time = */ 1.0);
    }

    Paths lightPaths() {
        Paths paths;
        for (const LightLocationData* light : component->getLights())
            paths.push_back(pathOf(*light));
        return paths;
    }
    const LightLocationData* lightAt(const std::string& path) {
        for (const LightLocationData* light : component->getLights())
            if (pathOf(*light) == path) return light;
        return nullptr;
    }

    const ViewerDelegateComponentPluginSuite suite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
    sorrel::ViewerDelegate delegate;
    vrt::Stage stage;
    BeamwrightLayerVDC* component = nullptr;
};

TEST_F(UsdLights, TheLightApiMakesALightAtItsCentreOfInterestOrTwentyAhead) {
    vrt::Prim key = defineLight("/World/Lights/Key", moved(0, 0, 3), vrt::Value(5.0));
    // The distance is read at the earliest time, not at the event's.
    key.setAttr(vrt::Token("centerOfInterest"), vrt::Value(9.0), /* time = */ 1.0);
    send(key, kPrimAdded);

    const std::string keyLocation = "/usd/World/Lights/Key";
    const LightLocationData* light = lightAt(keyLocation);
    ASSERT_NE(light, nullptr);
    EXPECT_EQ(light->position.z, 3.0);
    EXPECT_EQ(light->direction.z, -1.0);
    EXPECT_EQ(light->centerOfInterest.z, 3.0 - 5.0);
    EXPECT_EQ(light->locationHash, hashOfText(keyLocation.c_str()).words[0]);
    EXPECT_TRUE(light->isLight && light->showHandle && light->pickable);
    EXPECT_FALSE(light->excluded || light->selected);
    EXPECT_FALSE(light->attributes.isValid());
    EXPECT_EQ(light->color, (std::array<float, 4>{1.0f, 1.0f, 0.0f, 1.0f}));

    send(defineLight("/World/Lights/Bare", Mat4d(), vrt::Value()));
    send(defineLight("/World/Lights/Float", Mat4d(), vrt::Value(7.0f)));
    send(defineLight("/World/Lights/Text", Mat4d(), vrt::Value(std::string("far"))));
    vrt::Prim plain = define("/World/Lights/Plain");
    plain.setAttr(vrt::Token("centerOfInterest"), vrt::Value(3.0));
    send(plain);
    EXPECT_EQ(lightAt("/usd/World/Lights/Plain"), nullptr) << "no API, no light";
    for (const char* name : {"Bare", "Float", "Text"}) {
        const LightLocationData* fallback = lightAt(std::string("/usd/World/Lights/") + name);
        ASSERT_NE(fallback, nullptr) << name;
        EXPECT_EQ(distanceAhead(*fallback), 20.0) << name;
    }

    // Location lights come first, whichever side reported first.
    delegate.putLocation("/root", testing_support::groupAttributes());
    delegate.putLocation("/root/lgt", testing_support::lightAttributes(1.0));
    EXPECT_EQ(lightPaths().front(), "/root/lgt");
    EXPECT_EQ(lightPaths().size(), 1u + 4u);

    // An event without a change flag keeps the list current.
    const auto& list = component->getLights();
    send(key, /* flags = */ 0);
    EXPECT_EQ(list.size(), 5u);

    key.removeApi(vrt::Token("SorrelUsdLightAPI"));
    send(key);
    EXPECT_EQ(lightAt(keyLocation), nullptr);
    EXPECT_NE(nodeAt(*component->getUsdRoot(), {"World", "Lights", "Key"}), nullptr)
        << "the node stays";
    key.applyApi(vrt::Token("SorrelUsdLightAPI"));
    send(key);
    ASSERT_NE(lightAt(keyLocation), nullptr);
    EXPECT_EQ(lightAt(keyLocation)->locationHash, hashOfText(keyLocation.c_str()).words[0])
        << "a rebuilt record keeps its identity";
}

TEST_F(UsdLights, AncestorsMoveHideAndRemoveWhatLiesBelow) {
    vrt::Prim rig = define("/World/Rig", moved(10, 0, 0));
    send(rig, kPrimAdded);
    send(defineLight("/World/Rig/Key", moved(0, 1, 0), vrt::Value(2.0)), kPrimAdded);
    send(defineLight("/World/Rig/Arm/Fill", moved(0, 0, 1), vrt::Value(2.0)), kPrimAdded);
    EXPECT_EQ(lightAt("/usd/World/Rig/Arm/Fill")->position.x, 10.0);

    // Only the rig is reported; what lies below it moves along.
    rig.setLocalTransformation(moved(20, 0, 0));
    send(rig);
    EXPECT_EQ(lightAt("/usd/World/Rig/Key")->position.x, 20.0);
    EXPECT_EQ(lightAt("/usd/World/Rig/Key")->position.y, 1.0);
    EXPECT_EQ(lightAt("/usd/World/Rig/Arm/Fill")->position.x, 20.0);

    const SceneNode* key = nodeAt(*component->getUsdRoot(), {"World", "Rig", "Key"});
    const auto& list = component->getLights();
    send(rig);
    EXPECT_TRUE(list.empty()) << "any reported change makes the list stale";
    EXPECT_TRUE(key->worldMatrixValid) << "an unchanged matrix invalidates nothing";
    EXPECT_EQ(lightAt("/usd/World/Rig/Key")->position.x, 20.0);

    send(rig, kPrimChanged | kExcluded);
    EXPECT_TRUE(lightPaths().empty()) << "an excluded prim hides its whole subtree";
    send(rig);
    EXPECT_EQ(lightPaths().size(), 2u);

    delegate.sendUsdRemoval(vrt::Path("/World/Nowhere"));
    EXPECT_EQ(list.size(), 2u) << "removing an unknown prim changes nothing";
    const std::weak_ptr<const SceneNode> arm = key->parent->children.at(vrt::Token("Arm"));
    delegate.sendUsdRemoval(vrt::Path("/World/Rig"));
    EXPECT_TRUE(lightPaths().empty());
    EXPECT_TRUE(arm.expired());

    // The mirror is a web of strong references; it must die with the component.
    send(define("/World/Rig/Key"), kPrimAdded);
    const std::weak_ptr<const SceneNode> root = component->getUsdRoot();
    const std::weak_ptr<const SceneNode> world =
        component->getUsdRoot()->children.at(vrt::Token("World"));
    delegate.removeComponents();
    EXPECT_TRUE(root.expired());
    EXPECT_TRUE(world.expired());
}

TEST_F(UsdLights, SelectionGoesToExactlyTheNamedPrims) {
    send(defineLight("/World/Key", Mat4d(), vrt::Value(1.0)), kPrimAdded);
    send(defineLight("/World/Key/Child", Mat4d(), vrt::Value(1.0)), kPrimAdded);
    const auto& list = component->getLights();
    ASSERT_EQ(list.size(), 2u);

    delegate.sendUsdSelection({"/World/Key", "/World/Later", "/World/Key"});
    EXPECT_TRUE(list.empty()) << "records hold a copy of the flag, so the list is rebuilt";
    EXPECT_TRUE(lightAt("/usd/World/Key")->selected);
    EXPECT_FALSE(lightAt("/usd/World/Key/Child")->selected) << "selection is not inherited";

    send(defineLight("/World/Later", Mat4d(), vrt::Value(1.0)), kPrimAdded);
    EXPECT_TRUE(lightAt("/usd/World/Later")->selected) << "selected before its first event";

    delegate.sendUsdSelection({});
    for (const LightLocationData* light : component->getLights()) EXPECT_FALSE(light->selected);
}

}  // namespace
