// BeamwrightLayerVDC driven by the host's viewer delegate: which location events
// store, update and remove records, selection, and the order and contents of
// the light list.

#include <gtest/gtest.h>

#include <string>

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
    delegate.sendLocation("/root/lgt");
    EXPECT_TRUE(list.empty()) << "a change empties the list at once: no pointer outlives it";
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
    for (const std::string group : {"/root/a", "/root/b", "/root/c", "/root/d"}) {
        delegate.putLocation(group, groupAttributes());
        delegate.putLocation(group + "/light", lightAttributes(1.0));
    }
    // The last sibling takes the removed one's place.
    delegate.removeLocation("/root/b");
    EXPECT_EQ(lightPaths(), (Paths{"/root/a/light", "/root/d/light", "/root/c/light"}));
    delegate.removeLocation("/root/a");
    EXPECT_EQ(lightPaths(), (Paths{"/root/c/light", "/root/d/light"}));
    const auto& list = component->getLights();
    delegate.sendRemoval("/root/nowhere");
    EXPECT_EQ(list.size(), 2u) << "removing an unknown location changes nothing";

    delegate.putLocation("/root/a", groupAttributes());
    delegate.putLocation("/root/a/light", lightAttributes(1.0));
    EXPECT_EQ(lightPaths(), (Paths{"/root/c/light", "/root/d/light", "/root/a/light"}));
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

}  // namespace
