// BeamwrightLayerVDC driven by the host's viewer delegate: which location events
// store, update and remove records, selection, and the order and contents of
// the light list.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "tests/support/light_attributes.h"
#include "tests/support/light_component_fixture.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttrRef;
using sorrel::translationMatrix;
using testing_support::groupAttributes;
using testing_support::lightAttributes;
using testing_support::Paths;

namespace {

class LightComponent : public testing_support::LightComponentTest {
protected:
    /// An event with no flag at all, as a host may send for a known location.
    void sendWithoutFlags(const std::string& path) {
        delegate.component("BeamwrightLayerVDC")
            ->locationEvent(path, delegate.scene().find(path)->attributes, AttrRef(),
                            /* flags = */ 0);
    }
};

TEST_F(LightComponent, ChildBeforeItsParentIsDroppedAndTakenWhenRepeated) {
    delegate.putLocation("/root/lgt", lightAttributes(2.0), translationMatrix(0, 0, 5));
    EXPECT_TRUE(lightPaths().empty());
    EXPECT_EQ(delegate.transformQueries(), 0u) << "nothing stored, nothing asked";

    delegate.scene().set("/root", groupAttributes(), translationMatrix(1, 0, 0));
    sendWithoutFlags("/root");
    EXPECT_EQ(delegate.transformQueries(), 1u) << "a first event stores whatever its flags";
    delegate.sendLocation("/root/lgt");
    delegate.putLocation("/root/lgt/child", lightAttributes(1.0));
    delegate.putLocation("/other", lightAttributes(1.0));
    EXPECT_EQ(lightPaths(), (Paths{"/root/lgt", "/root/lgt/child"}))
        << "only what lies below /root is listed";
    EXPECT_EQ(lightAt("/root/lgt")->position.x, 1.0);
    EXPECT_EQ(lightAt("/root/lgt")->position.z, 5.0);

    // An excluded light is off the list; what lies below it is not.
    delegate.setExcluded("/root/lgt", true);
    EXPECT_EQ(lightPaths(), Paths{"/root/lgt/child"});
    delegate.setExcluded("/root/lgt", false);
    const auto& list = component->getLights();
    EXPECT_EQ(list.size(), 2u);
    sendWithoutFlags("/root/lgt");
    EXPECT_EQ(list.size(), 2u) << "a known location without a change flag keeps the list";
}

TEST_F(LightComponent, TransformAndAttributeChangesTouchExactlyTheirOwnParts) {
    delegate.putLocation("/root", groupAttributes());
    delegate.putLocation("/root/group", groupAttributes(), translationMatrix(10, 0, 0));
    delegate.putLocation("/root/group/key", lightAttributes(2.0), translationMatrix(0, 1, 0));
    delegate.putLocation("/root/group/sub", groupAttributes());
    delegate.putLocation("/root/group/sub/fill", lightAttributes(3.0));
    delegate.putLocation("/root/rim", lightAttributes(1.0), translationMatrix(0, 0, 4));

    // The host reports the moved group only; the plugin carries what lies below, and
    // keeps the group's attributes though the event brings others.
    delegate.scene().find("/root/group")->attributes = lightAttributes(5.0);
    std::uint64_t queries = delegate.transformQueries();
    delegate.moveLocation("/root/group", translationMatrix(20, 0, 0));
    EXPECT_EQ(delegate.transformQueries() - queries, 1u + 4u)
        << "the moved location, then its subtree";
    EXPECT_EQ(lightAt("/root/group/key")->position.x, 20.0);
    EXPECT_EQ(lightAt("/root/group/sub/fill")->position.x, 20.0);
    EXPECT_EQ(lightAt("/root/group"), nullptr);

    // An attribute change takes the new attributes and asks for no transform, here nor below.
    sorrel::Location& rim = *delegate.scene().find("/root/rim");
    rim.attributes = lightAttributes(7.0);
    queries = delegate.transformQueries();
    delegate.sendLocation("/root/group");
    delegate.sendLocation("/root/rim");
    EXPECT_EQ(delegate.transformQueries(), queries);
    EXPECT_EQ(lightAt("/root/rim")->centerOfInterest.z, 4.0 - 7.0);

    // A state change takes the attributes as well as the excluded bit, and a light
    // that loses its centre of interest leaves the list.
    delegate.scene().find("/root/group/key")->attributes =
        lightAttributes(2.0, {{"viewer.default.beamwright.hideHandle", sorrel::intAttr(1)}});
    delegate.sendStateChange("/root/group/key");
    rim.attributes = testing_support::dottedGroup({{"type", sorrel::stringAttr("light")}});
    delegate.sendLocation("/root/rim");
    EXPECT_EQ(lightPaths(), (Paths{"/root/group", "/root/group/sub/fill"}));
}

TEST_F(LightComponent, RemovalTakesTheSubtreeAndALaterReportComesLast) {
    delegate.putLocation("/root", groupAttributes());
    for (const std::string group : {"/root/a", "/root/b", "/root/c"}) {
        delegate.putLocation(group, groupAttributes());
        delegate.putLocation(group + "/light", lightAttributes(1.0));
    }
    // The last sibling takes the removed one's place.
    delegate.removeLocation("/root/a");
    EXPECT_EQ(lightPaths(), (Paths{"/root/c/light", "/root/b/light"}));
    const auto& list = component->getLights();
    delegate.sendRemoval("/root/nowhere");
    EXPECT_EQ(list.size(), 2u) << "removing an unknown location changes nothing";

    delegate.putLocation("/root/a", groupAttributes());
    delegate.putLocation("/root/a/light", lightAttributes(1.0));
    EXPECT_EQ(lightPaths(), (Paths{"/root/c/light", "/root/b/light", "/root/a/light"}));
    delegate.removeLocation("/root");
    EXPECT_TRUE(lightPaths().empty());
}

TEST_F(LightComponent, SelectionIsWrittenInPlaceAndNeverInherited) {
    delegate.putLocation("/root", groupAttributes());
    delegate.putLocation("/root/key", lightAttributes(1.0));
    delegate.putLocation("/root/key/fill", lightAttributes(1.0));
    const auto& list = component->getLights();
    ASSERT_EQ(list.size(), 2u);

    delegate.sendSelection({"/root/key", "/root/later", "/root/key"});
    ASSERT_EQ(list.size(), 2u) << "selection needs no rebuild";
    EXPECT_TRUE(list[0]->selected);
    EXPECT_FALSE(list[1]->selected) << "a child of a selected location is not selected";
    delegate.putLocation("/root/later", lightAttributes(1.0));
    EXPECT_TRUE(lightAt("/root/later")->selected) << "selected before its first event";

    delegate.sendSelection({});
    for (const LightLocationData* light : component->getLights()) EXPECT_FALSE(light->selected);
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

std::string groupPath(int g) { return "/root/g" + std::to_string(g); }

TEST_F(LightComponent, LargeSceneFollowsMovesAndPruningAsARecomputationSays) {
    constexpr int groups = 100;
    constexpr int subgroupsPerGroup = 10;
    constexpr int locationsPerSubgroup = 99;
    constexpr int lightsPerSubgroup = 10;
    // Locations share attribute groups, so that the records make the bulk of the work.
    const AttrRef group = groupAttributes();
    std::vector<AttrRef> lights;
    for (int n = 0; n < lightsPerSubgroup; ++n) lights.push_back(lightAttributes(1.0 + n));

    std::map<std::string, double> distanceOf;
    delegate.putLocation("/root", group);
    for (int g = 0; g < groups; ++g) {
        delegate.putLocation(groupPath(g), group, translationMatrix(g, 0, 0));
        for (int s = 0; s < subgroupsPerGroup; ++s) {
            const std::string subgroup = groupPath(g) + "/s" + std::to_string(s);
            delegate.putLocation(subgroup, group, turned(0.3 * s, 0, s, 0));
            for (int n = 0; n < locationsPerSubgroup; ++n) {
                const std::string path = subgroup + "/n" + std::to_string(n);
                const bool light = n < lightsPerSubgroup;
                delegate.putLocation(path, light ? lights[n] : group,
                                     turned(0.2 * n, 0, 0, 0.5 * n));
                if (light) distanceOf[path] = 1.0 + n;
            }
        }
    }
    ASSERT_EQ(delegate.scene().locations().size(), 100101u);
    ASSERT_EQ(component->getLights().size(), 10000u);

    for (int g = 3; g < groups; g += 10) delegate.moveLocation(groupPath(g), turned(0.7, g, 5, -2));
    delegate.moveLocation("/root/g5/s4", turned(-1.1, 1, 1, 1));
    delegate.moveLocation("/root/g6/s1/n2", turned(0.4, 3, 2, 1));
    for (int g = 7; g < groups; g += 10) delegate.removeLocation(groupPath(g));
    for (int g = 0; g < groups; g += 4) delegate.removeLocation(groupPath(g) + "/s2");
    delegate.removeLocation("/root/g5/s4/n3");
    delegate.moveLocation("/root/g13", turned(0.1, 0, 0, 0));

    std::map<std::string, const LightLocationData*> listed;
    long lastDepth = 0;
    for (const LightLocationData* light : component->getLights()) {
        const std::string path = testing_support::pathOf(*light);
        const long depth = std::count(path.begin(), path.end(), '/');
        ASSERT_GE(depth, lastDepth) << "breadth first, at " << path;
        lastDepth = depth;
        ASSERT_TRUE(listed.emplace(path, light).second) << "listed twice: " << path;
    }
    // Recomputed from the host's own scene: where each light stands and looks.
    constexpr double tolerance = 1e-9;
    std::size_t present = 0;
    for (const auto& [path, distance] : distanceOf) {
        const auto world = delegate.scene().worldTransform(path);
        const auto found = listed.find(path);
        ASSERT_EQ(found != listed.end(), world.has_value()) << path;
        if (!world) continue;
        ++present;
        const sorrel::Matrix& m = *world;
        const double zLength = std::sqrt(m[8] * m[8] + m[9] * m[9] + m[10] * m[10]);
        const LightLocationData& light = *found->second;
        for (int i = 0; i < 3; ++i) {
            const double direction = -m[8 + i] / zLength;
            ASSERT_NEAR(light.position[i], m[12 + i], tolerance) << path;
            ASSERT_NEAR(light.direction[i], direction, tolerance) << path;
            ASSERT_NEAR(light.centerOfInterest[i], m[12 + i] + distance * direction, tolerance)
                << path;
        }
    }
    EXPECT_EQ(listed.size(), present) << "nothing else is listed";
}

}  // namespace
