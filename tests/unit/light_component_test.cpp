// BeamwrightLayerVDC driven by the host's viewer delegate: which location events
// store, update and remove records, selection, and the order and contents of
// the light list.

#include "scene/light_component.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/viewer_delegate_component_suite.h"
#include "frame/wrappers.h"
#include "host/viewer_delegate.h"
#include "tests/support/light_attributes.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;
using sorrel::translationMatrix;
using testing_support::groupAttributes;
using testing_support::lightAttributes;

namespace {

using Paths = std::vector<std::string>;

/// Reports fixed USD lights, standing in for the USD mirror.
class UsdStandIn : public BeamwrightLayerVDC {
public:
    void reportUsdChange() { markUsdDirty(); }

    Paths usdPaths;
    int collections = 0;

protected:
    void collectUsdLights(std::vector<LightLocationData>& records) override {
        ++collections;
        for (const std::string& path : usdPaths) {
            LightLocationData& record = records.emplace_back();
            record.excluded = false;
            record.pickerObject = makePickerObject(path);
        }
    }
};

std::string pathOf(const LightLocationData& light) {
    return light.pickerObject.getChild<StringAttribute>("location").getValue();
}

Paths lightPaths(BeamwrightLayerVDC& component) {
    Paths paths;
    for (const LightLocationData* light : component.getLights()) paths.push_back(pathOf(*light));
    return paths;
}

const LightLocationData* lightAt(BeamwrightLayerVDC& component, const std::string& path) {
    for (const LightLocationData* light : component.getLights())
        if (pathOf(*light) == path) return light;
    return nullptr;
}

class LightComponent : public testing_support::UnitTest {
protected:
    void SetUp() override {
        UnitTest::SetUp();
        ViewerDelegateComponentPluginBase::setHost(testing_support::hostRecord());
        delegate.addComponent("BeamwrightLayerVDC", reinterpret_cast<void* const*>(&suite));
    }
    void TearDown() override {
        delegate.removeComponents();
        delegate.scene() = sorrel::Scene();
        UnitTest::TearDown();
    }

    /// The component as a layer reaches it: by name, then by a dynamic cast.
    template <class Component = BeamwrightLayerVDC>
    Component& reach(const std::string& name = "BeamwrightLayerVDC") {
        const sorrel::ObjectTriple triple = delegate.triple();
        const ViewerDelegateWrapper wrapper(testing_support::hostRecord(),
                                            {triple.hostHandle, triple.pluginHandle, triple.suite});
        const auto found = wrapper.getComponent(name);
        auto* const component = dynamic_cast<Component*>(
            static_cast<ViewerDelegateComponent*>(found->getPluginInstance()));
        // gtest reports the exception as this test's failure and goes on with the next.
        if (component == nullptr) throw std::logic_error(name + " is not reached as a component");
        return *component;
    }

    /// An event with no flag at all, as a host may send for a known location.
    void sendWithoutFlags(const std::string& path) {
        const sorrel::Location* location = delegate.scene().find(path);
        delegate.component("BeamwrightLayerVDC")
            ->locationEvent(path, location->attributes, AttrRef(), /* flags = */ 0);
    }

    const ViewerDelegateComponentPluginSuite suite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<BeamwrightLayerVDC>);
    sorrel::ViewerDelegate delegate;
};

TEST_F(LightComponent, ChildBeforeItsParentIsDroppedAndTakenWhenRepeated) {
    BeamwrightLayerVDC& component = reach();
    delegate.putLocation("/root/lgt", lightAttributes(2.0), translationMatrix(0, 0, 5));
    EXPECT_TRUE(component.getLights().empty());
    EXPECT_EQ(delegate.transformQueries, 0u) << "nothing stored, nothing asked";

    delegate.scene().set("/root", groupAttributes(), translationMatrix(1, 0, 0));
    sendWithoutFlags("/root");
    EXPECT_EQ(delegate.transformQueries, 1u) << "a first event stores whatever its flags";
    delegate.sendLocation("/root/lgt");
    ASSERT_EQ(lightPaths(component), Paths{"/root/lgt"});
    const LightLocationData& light = *component.getLights()[0];
    EXPECT_EQ(light.position.x, 1.0);
    EXPECT_EQ(light.position.z, 5.0);
    EXPECT_FALSE(light.excluded);

    // An excluded light is off the list; what lies below it is not.
    delegate.putLocation("/root/lgt/child", lightAttributes(1.0));
    delegate.setExcluded("/root/lgt", true);
    EXPECT_EQ(lightPaths(component), Paths{"/root/lgt/child"});
    delegate.setExcluded("/root/lgt", false);
    EXPECT_EQ(lightPaths(component), (Paths{"/root/lgt", "/root/lgt/child"}));

    // A known location without a change flag leaves the current list alone.
    const auto& list = component.getLights();
    sendWithoutFlags("/root/lgt");
    EXPECT_EQ(list.size(), 2u);

    delegate.putLocation("/other", lightAttributes(1.0));
    EXPECT_EQ(lightPaths(component), (Paths{"/root/lgt", "/root/lgt/child"}))
        << "only what lies below /root is listed";
}

TEST_F(LightComponent, TransformAndAttributeChangesTouchExactlyTheirOwnParts) {
    BeamwrightLayerVDC& component = reach();
    delegate.putLocation("/root", groupAttributes());
    delegate.putLocation("/root/group", groupAttributes(), translationMatrix(10, 0, 0));
    delegate.putLocation("/root/group/key", lightAttributes(2.0), translationMatrix(0, 1, 0));
    delegate.putLocation("/root/group/sub", groupAttributes());
    delegate.putLocation("/root/group/sub/fill", lightAttributes(3.0));
    delegate.putLocation("/root/rim", lightAttributes(1.0), translationMatrix(0, 0, 4));
    const AttributeHandle keyAttributes =
        lightAt(component, "/root/group/key")->attributes.handle();

    // The host reports the moved group only; the plugin carries what lies below.
    std::uint64_t queries = delegate.transformQueries;
    delegate.moveLocation("/root/group", translationMatrix(20, 0, 0));
    EXPECT_EQ(delegate.transformQueries - queries, 1u + 4u)
        << "the moved location, then its subtree";
    const LightLocationData* key = lightAt(component, "/root/group/key");
    EXPECT_EQ(key->position.x, 20.0);
    EXPECT_EQ(key->position.y, 1.0);
    EXPECT_EQ(lightAt(component, "/root/group/sub/fill")->position.x, 20.0);
    EXPECT_EQ(key->attributes.handle(), keyAttributes) << "a move keeps the attributes";
    EXPECT_EQ(lightAt(component, "/root/rim")->position.z, 4.0);

    // An attribute change asks for no transform, here nor below.
    delegate.scene().find("/root/group/key")->local = translationMatrix(0, 9, 0);
    sorrel::Location& rim = *delegate.scene().find("/root/rim");
    rim.local = translationMatrix(0, 0, 9);
    rim.attributes = lightAttributes(7.0);
    queries = delegate.transformQueries;
    delegate.sendLocation("/root/group");
    delegate.sendLocation("/root/rim");
    EXPECT_EQ(delegate.transformQueries, queries);
    EXPECT_EQ(lightAt(component, "/root/group/key")->position.y, 1.0);
    const LightLocationData* rimLight = lightAt(component, "/root/rim");
    EXPECT_EQ(rimLight->position.z, 4.0) << "the unreported move is not seen";
    EXPECT_EQ(rimLight->centerOfInterest.z, 4.0 - 7.0) << "the new distance is";

    // A state change takes the attributes as well as the excluded bit.
    delegate.scene().find("/root/group/key")->attributes =
        lightAttributes(2.0, {{"viewer.default.beamwright.hideHandle", sorrel::intAttr(1)}});
    delegate.sendStateChange("/root/group/key");
    EXPECT_EQ(lightAt(component, "/root/group/key"), nullptr);

    // A light that loses its centre of interest leaves the list.
    rim.attributes = testing_support::dottedGroup({{"type", sorrel::stringAttr("light")}});
    delegate.sendLocation("/root/rim");
    EXPECT_EQ(lightPaths(component), Paths{"/root/group/sub/fill"});
}

TEST_F(LightComponent, RemovalTakesTheSubtreeAndALaterReportMakesANewRecord) {
    BeamwrightLayerVDC& component = reach();
    delegate.putLocation("/root", groupAttributes());
    for (const char* group : {"a", "b", "c"}) {
        const std::string path = std::string("/root/") + group;
        delegate.putLocation(path, groupAttributes());
        delegate.putLocation(path + "/light", lightAttributes(1.0));
    }
    ASSERT_EQ(lightPaths(component), (Paths{"/root/a/light", "/root/b/light", "/root/c/light"}));
    const std::uint64_t removedHash = hashOfText("/root/a/light").words[0];

    // The last sibling takes the removed one's place.
    delegate.removeLocation("/root/a");
    EXPECT_EQ(lightPaths(component), (Paths{"/root/c/light", "/root/b/light"}));
    for (const LightLocationData* light : component.getLights())
        EXPECT_NE(light->locationHash, removedHash);

    const auto& list = component.getLights();
    delegate.sendRemoval("/root/nowhere");
    EXPECT_EQ(list.size(), 2u) << "removing an unknown location changes nothing";

    delegate.sendSelection({"/root/a/light"});
    delegate.putLocation("/root/a", groupAttributes());
    delegate.putLocation("/root/a/light", lightAttributes(1.0));
    EXPECT_EQ(lightPaths(component), (Paths{"/root/c/light", "/root/b/light", "/root/a/light"}));
    EXPECT_TRUE(lightAt(component, "/root/a/light")->selected);
    EXPECT_EQ(lightAt(component, "/root/a/light")->locationHash, removedHash);

    delegate.removeLocation("/root");
    EXPECT_TRUE(component.getLights().empty());
}

TEST_F(LightComponent, SelectionIsWrittenInPlaceAndNeverInherited) {
    BeamwrightLayerVDC& component = reach();
    delegate.putLocation("/root", groupAttributes());
    delegate.putLocation("/root/key", lightAttributes(1.0));
    delegate.putLocation("/root/key/fill", lightAttributes(1.0));
    const auto& list = component.getLights();
    ASSERT_EQ(list.size(), 2u);

    delegate.sendSelection({"/root/key", "/root/later", "/root/key"});
    ASSERT_EQ(list.size(), 2u) << "selection needs no rebuild";
    EXPECT_TRUE(list[0]->selected);
    EXPECT_FALSE(list[1]->selected) << "a child of a selected location is not selected";

    delegate.putLocation("/root/later", lightAttributes(1.0));
    EXPECT_TRUE(lightAt(component, "/root/later")->selected) << "selected before its first event";

    delegate.sendSelection({});
    for (const LightLocationData* light : component.getLights()) EXPECT_FALSE(light->selected);
}

TEST_F(LightComponent, LocationLightsComeBeforeUsdLights) {
    const ViewerDelegateComponentPluginSuite standInSuite =
        buildViewerDelegateComponentSuite(&ViewerDelegateComponent::create<UsdStandIn>);
    delegate.addComponent("UsdStandIn", reinterpret_cast<void* const*>(&standInSuite));
    UsdStandIn& component = reach<UsdStandIn>("UsdStandIn");
    EXPECT_TRUE(component.getLights().empty());
    EXPECT_EQ(component.collections, 0) << "a fresh list needs no walk";

    component.usdPaths = {"/usd/World/Key", "/usd/World/Fill"};
    component.reportUsdChange();
    delegate.putLocation("/root", groupAttributes());
    delegate.putLocation("/root/lgt", lightAttributes(1.0));
    const Paths expected{"/root/lgt", "/usd/World/Key", "/usd/World/Fill"};
    EXPECT_EQ(lightPaths(component), expected);
    EXPECT_EQ(lightPaths(component), expected);
    EXPECT_EQ(component.collections, 1) << "a current list is returned as it is";

    delegate.moveLocation("/root/lgt", translationMatrix(1, 2, 3));
    EXPECT_EQ(lightPaths(component), expected);
    EXPECT_EQ(component.collections, 1) << "a location change keeps the USD records";

    const auto& list = component.getLights();
    component.reportUsdChange();
    EXPECT_TRUE(list.empty()) << "no pointer to a destroyed USD record survives";
    EXPECT_EQ(lightPaths(component), expected);
    EXPECT_EQ(component.collections, 2);
    delegate.removeComponents();
}

/// A turn about the y axis followed by a move (row vectors).
sorrel::Matrix turned(double angle, double x, double y, double z) {
    sorrel::Matrix m = translationMatrix(x, y, z);
    m[0] = std::cos(angle);
    m[2] = -std::sin(angle);
    m[8] = std::sin(angle);
    m[10] = std::cos(angle);
    return m;
}

struct PlannedLight {
    double distance = 0.0;
    bool hidden = false;
};

/// Compares the list with what the host's own scene says, light by light.
void expectListMatchesScene(BeamwrightLayerVDC& component, const sorrel::Scene& scene,
                            const std::map<std::string, PlannedLight>& planned) {
    constexpr double tolerance = 1e-9;
    std::map<std::string, const LightLocationData*> listed;
    long lastDepth = 0;
    bool breadthFirst = true;
    for (const LightLocationData* light : component.getLights()) {
        const std::string path = pathOf(*light);
        listed.emplace(path, light);
        const long depth = std::count(path.begin(), path.end(), '/');
        breadthFirst = breadthFirst && depth >= lastDepth;
        lastDepth = depth;
    }
    EXPECT_TRUE(breadthFirst);
    EXPECT_EQ(listed.size(), component.getLights().size()) << "each light listed once";

    std::size_t expectedCount = 0;
    std::size_t mismatches = 0;
    std::string firstMismatch;
    for (const auto& [path, plan] : planned) {
        const auto world = scene.worldTransform(path);
        const auto found = listed.find(path);
        const bool expected = world.has_value() && !plan.hidden;
        bool matches = expected == (found != listed.end());
        if (expected && matches) {
            ++expectedCount;
            const sorrel::Matrix& m = *world;
            const double zLength = std::sqrt(m[8] * m[8] + m[9] * m[9] + m[10] * m[10]);
            const LightLocationData& light = *found->second;
            for (int i = 0; i < 3; ++i) {
                const double direction = -m[8 + i] / zLength;
                matches = matches && std::abs(light.position[i] - m[12 + i]) < tolerance &&
                          std::abs(light.direction[i] - direction) < tolerance &&
                          std::abs(light.centerOfInterest[i] -
                                   (m[12 + i] + plan.distance * direction)) < tolerance;
            }
        }
        if (!matches && mismatches++ == 0) firstMismatch = path;
    }
    EXPECT_EQ(listed.size(), expectedCount);
    EXPECT_EQ(mismatches, 0u) << "first at " << firstMismatch;
}

TEST_F(LightComponent, LargeSceneFollowsMovesAndPruningAsARecomputationSays) {
    constexpr int groups = 100;
    constexpr int subgroupsPerGroup = 10;
    constexpr int locationsPerSubgroup = 99;
    constexpr int lightsPerSubgroup = 10;
    BeamwrightLayerVDC& component = reach();
    std::map<std::string, PlannedLight> planned;

    delegate.putLocation("/root", groupAttributes());
    for (int g = 0; g < groups; ++g) {
        const std::string group = "/root/g" + std::to_string(g);
        delegate.putLocation(group, groupAttributes(), translationMatrix(g, 0, 0));
        for (int s = 0; s < subgroupsPerGroup; ++s) {
            const std::string subgroup = group + "/s" + std::to_string(s);
            delegate.putLocation(subgroup, groupAttributes(), turned(0.3 * s, 0, s, 0));
            for (int n = 0; n < locationsPerSubgroup; ++n) {
                const std::string path = subgroup + "/n" + std::to_string(n);
                const sorrel::Matrix local = turned(0.2 * n, 0, 0, 0.5 * n);
                if (n >= lightsPerSubgroup) {
                    delegate.putLocation(path, groupAttributes(), local);
                    continue;
                }
                const PlannedLight plan{1.0 + n, n == 0 && s % 3 == 0};
                planned[path] = plan;
                delegate.putLocation(
                    path,
                    lightAttributes(plan.distance, {{"viewer.default.drawOptions.hide",
                                                     sorrel::intAttr(plan.hidden)}}),
                    local);
            }
        }
    }
    ASSERT_EQ(delegate.scene().locations().size(), 100101u);
    ASSERT_EQ(planned.size(), 10000u);
    expectListMatchesScene(component, delegate.scene(), planned);

    for (int g = 3; g < groups; g += 10)
        delegate.moveLocation("/root/g" + std::to_string(g), turned(0.7, g, 5, -2));
    delegate.moveLocation("/root/g5/s4", turned(-1.1, 1, 1, 1));
    delegate.moveLocation("/root/g6/s1/n2", turned(0.4, 3, 2, 1));
    expectListMatchesScene(component, delegate.scene(), planned);

    for (int g = 7; g < groups; g += 10) delegate.removeLocation("/root/g" + std::to_string(g));
    for (int g = 0; g < groups; g += 4)
        delegate.removeLocation("/root/g" + std::to_string(g) + "/s2");
    delegate.removeLocation("/root/g5/s4/n3");
    delegate.moveLocation("/root/g13", turned(0.1, 0, 0, 0));
    expectListMatchesScene(component, delegate.scene(), planned);
}

}  // namespace
