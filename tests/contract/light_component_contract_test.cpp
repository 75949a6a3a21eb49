// BeamwrightLayerVDC loaded from Beamwright.so and driven by the host's viewer
// delegate. The host sees the component only through what it asks of the host:
// the references it holds on attributes, and the world transforms it queries.

#include <gtest/gtest.h>

#include "host/viewer_delegate.h"
#include "tests/support/light_attributes.h"
#include "tests/support/plugin_fixture.h"

using namespace sorrel;
using testing_support::groupAttributes;
using testing_support::lightAttributes;

namespace {

class LightComponentContract : public testing_support::PluginContractTest {
protected:
    void SetUp() override {
        PluginContractTest::SetUp();
        delegate.addComponent("BeamwrightLayerVDC", suiteOf("BeamwrightLayerVDC"));
    }
    void TearDown() override {
        delegate.removeComponents();
        delegate.scene() = Scene();
        PluginContractTest::TearDown();
    }

    static std::int64_t references() { return AttributeModel::instance().liveReferences(); }
    static int referencesOn(const AttrRef& attribute) {
        return AttributeModel::instance().read(attribute.get()).references;
    }

    ViewerDelegate delegate;
};

TEST_F(LightComponentContract, RecordsAreKeptBelowAKnownParentAndReleasedWithTheirSubtree) {
    delegate.scene().set("/root", groupAttributes());
    delegate.scene().set("/root/lgt", lightAttributes(1.0));
    const std::int64_t idle = references();

    delegate.sendLocation("/root/lgt");
    EXPECT_EQ(references(), idle) << "a location before its parent is not kept";
    EXPECT_EQ(delegate.transformQueries, 0u);

    delegate.sendLocation("/root");
    const std::int64_t withRoot = references();
    EXPECT_GT(withRoot, idle);
    delegate.sendLocation("/root/lgt");
    EXPECT_GT(references(), withRoot) << "the repeat after the parent is kept";
    EXPECT_EQ(delegate.transformQueries, 2u) << "one world transform for each new location";

    const std::int64_t withBoth = references();
    delegate.sendRemoval("/root/nowhere");
    EXPECT_EQ(references(), withBoth);
    delegate.sendRemoval("/root");
    EXPECT_EQ(references(), idle) << "removing the parent releases both records";

    delegate.sendLocation("/root");
    delegate.sendLocation("/root/lgt");
    delegate.removeComponents();
    EXPECT_EQ(references(), idle) << "destroying the component releases every record";
}

TEST_F(LightComponentContract, OnlyAMoveAsksForTransformsAndItCarriesTheWholeSubtree) {
    for (const char* path :
         {"/root", "/root/group", "/root/group/a", "/root/group/a/b", "/root/other"})
        delegate.putLocation(path, groupAttributes());
    const AttrRef firstAttributes = delegate.scene().find("/root/group")->attributes;
    const int heldAtFirst = referencesOn(firstAttributes);

    std::uint64_t queries = delegate.transformQueries;
    delegate.scene().find("/root/group")->attributes = lightAttributes(2.0);
    delegate.moveLocation("/root/group", translationMatrix(1, 2, 3));
    EXPECT_EQ(delegate.transformQueries - queries, 1u + 3u)
        << "the moved location, then its subtree";
    EXPECT_EQ(referencesOn(firstAttributes), heldAtFirst - 1) << "a move keeps the old attributes";

    queries = delegate.transformQueries;
    delegate.sendStateChange("/root/group");
    EXPECT_EQ(referencesOn(firstAttributes), heldAtFirst - 2)
        << "a state change takes the new ones";
    delegate.setExcluded("/root/group/a", true);
    delegate.sendLocation("/root/group/a/b");
    const std::int64_t held = references();
    delegate.sendSelection({"/root/group", "/root/unknown"});
    delegate.component("BeamwrightLayerVDC")->locationEvent("/root/other", AttrRef(), AttrRef(), 0);
    EXPECT_EQ(references(), held) << "selection and flagless events keep what they have";
    EXPECT_EQ(delegate.transformQueries, queries);
}

}  // namespace
