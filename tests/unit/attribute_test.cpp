// Typed views, samples, groups, event helpers and option identifiers over the
// host's attribute model.

#include <gtest/gtest.h>

#include "frame/attribute.h"
#include "frame/option_id.h"
#include "frame/picked_attrs_map.h"
#include "frame/sample_accessor.h"
#include "host/plugin_host.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttributeModel;
using sorrel::AttrRef;

namespace {

class Attributes : public testing_support::UnitTest {};

Attribute lend(const AttrRef& ref) { return Attribute::share(ref.get()); }

TEST_F(Attributes, WrongTypeViewsReadAsMissingWithoutLeaking) {
    const AttrRef text = sorrel::stringAttr("7");
    Attribute source = lend(text);
    const IntAttribute asInt(std::move(source));
    EXPECT_FALSE(asInt.isValid());
    EXPECT_TRUE(source.isValid()) << "a refused source keeps its reference";
    EXPECT_EQ(asInt.getValue(42), 42) << "the caller's default stands for the null view";
    EXPECT_EQ(DoubleAttribute().getValue(1.5), 1.5);
    EXPECT_EQ(FloatAttribute(lend(text)).getValue(2.5f), 2.5f);
    EXPECT_EQ(StringAttribute(lend(sorrel::intAttr(3))).getValue("none"), "none");

    const StringAttribute asString(std::move(source));
    EXPECT_FALSE(source.isValid()) << "a matching view takes the reference";
    EXPECT_EQ(asString.getValue(), "7");

    // Copies retain, moves transfer.
    const std::int64_t before = AttributeModel::instance().liveReferences();
    StringAttribute copy = asString;
    EXPECT_EQ(AttributeModel::instance().liveReferences(), before + 1);
    StringAttribute moved = std::move(copy);
    EXPECT_FALSE(copy.isValid());
    EXPECT_EQ(AttributeModel::instance().liveReferences(), before + 1);
}

TEST_F(Attributes, GroupChildrenByNameAndDottedPath) {
    const AttrRef group = sorrel::groupAttr(
        {{"geometry", sorrel::groupAttr({{"centerOfInterest", sorrel::doubleAttr(5.0)}})},
         {"count", sorrel::intAttr(3)}});
    const GroupAttribute view(lend(group));
    EXPECT_EQ(view.getChild<DoubleAttribute>("geometry.centerOfInterest").getValue(), 5.0);
    EXPECT_EQ(view.getChild<IntAttribute>("count").getValue(), 3);
    EXPECT_FALSE(view.getChild<IntAttribute>("geometry.missing").isValid());
    EXPECT_FALSE(view.getChild<GroupAttribute>("count").isValid());
    EXPECT_EQ(view.getNumberOfChildren(), 2);
    EXPECT_EQ(view.getChildName(1), "count");
    EXPECT_EQ(GroupAttribute().getChild<IntAttribute>("count").getValue(9), 9);
}

TEST_F(Attributes, SampleAccessorChoosesNearestSampleLowerOnTies) {
    AttributeModel& model = AttributeModel::instance();
    const AttrRef samples(model.makeDoubleSamples({-1.0f, 1.0f, 3.0f}, {{1, 2}, {3, 4}, {5, 6}}));
    for (const bool contiguous : {true, false}) {
        model.blockPolicy.contiguous = contiguous;
        // 0 lies as near -1 as 1: the lower index wins.
        const SampleAccessor<double> atZero(lend(samples), 0.0f);
        ASSERT_FALSE(atZero.empty());
        EXPECT_EQ(atZero.size(), 2);
        EXPECT_EQ(atZero[0], 1.0);
        const SampleAccessor<double> nearThree(lend(samples), 2.5f);
        EXPECT_EQ(nearThree[1], 6.0);
    }
    model.blockPolicy = {};

    const AttrRef texts(model.makeStrings({"a", "b"}));
    const SampleAccessor<const char*> strings(lend(texts), 0.0f);
    EXPECT_STREQ(strings[1], "b");
    const SampleAccessor<float> wrongType(lend(texts), 0.0f);
    EXPECT_TRUE(wrongType.empty());
}

TEST_F(Attributes, SampleBlocksAreGivenBackOnlyWhenTheHostAsks) {
    AttributeModel& model = AttributeModel::instance();
    const AttrRef single = sorrel::floatsAttr({1.0f, 2.0f, 3.0f});
    const std::uint64_t releasesBefore = model.calls(63);
    {
        // Built in the accessor's inline buffer: release flag clear.
        const SampleAccessor<float> inlineBlock(lend(single), 0.0f);
        EXPECT_EQ(inlineBlock[2], 3.0f);
    }
    EXPECT_EQ(model.calls(63), releasesBefore);
    model.blockPolicy.useInlineBuffer = false;
    {
        const SampleAccessor<float> heapBlock(lend(single), 0.0f);
        EXPECT_EQ(heapBlock[1], 2.0f);
    }
    model.blockPolicy = {};
    EXPECT_EQ(model.calls(63), releasesBefore + 1);
}

TEST_F(Attributes, BuildersMakeGroupsAndTheEmptyGroup) {
    AttributeModel& model = AttributeModel::instance();
    const std::uint64_t buildersBefore = model.calls(40);
    const GroupAttribute empty = GroupBuilder().build();
    EXPECT_TRUE(empty.isValid()) << "nothing added gives the empty group, not null";
    EXPECT_EQ(empty.getNumberOfChildren(), 0);
    EXPECT_EQ(model.calls(40), buildersBefore) << "no builder is made without a child";

    const double triple[3] = {1.0, -2.0, 3.5};
    GroupBuilder builder;
    builder.set("x", IntAttribute::create(4)).set("point", DoubleAttribute::createTriple(triple));
    const GroupAttribute group = builder.build();
    const AttrRef point(model.childByPath(static_cast<sorrel::AttrHandle>(group.handle()), "point"));
    ASSERT_EQ(point.valueCount(), 3u);
    EXPECT_EQ(point.doubleValue(1), -2.0);
    EXPECT_EQ(group.getChild<IntAttribute>("x").getValue(), 4);
}

TEST_F(Attributes, EventHelpersReadTypeAndData) {
    const AttrRef event = sorrel::groupAttr(
        {{"type", sorrel::stringAttr("MouseMove")}, {"data", sorrel::groupAttr({})}});
    const GroupAttribute view(lend(event));
    EXPECT_EQ(getEventTypeHash(view), hashOfText("MouseMove"));
    EXPECT_NE(getEventTypeHash(view), hashOfText("Leave"));
    EXPECT_TRUE(getEventData(view).isValid());

    const AttrRef odd = sorrel::groupAttr({{"type", sorrel::intAttr(1)}});
    const GroupAttribute oddView(lend(odd));
    EXPECT_TRUE(getEventTypeHash(oddView).isNull());
    EXPECT_FALSE(getEventData(oddView).isValid());
    EXPECT_TRUE(getEventTypeHash(GroupAttribute()).isNull());
}

TEST_F(Attributes, OptionIdsComeFromTheHostGenerator) {
    const OptionId enabled = getOptionId("Enabled");
    EXPECT_EQ(enabled, getOptionId("Enabled"));
    EXPECT_NE(enabled, getOptionId("Mode"));
    EXPECT_EQ(sorrel::OptionIdGenerator::instance().nameOf(enabled), "Enabled");
}

TEST_F(Attributes, PickedMapsConvertBothWays) {
    const AttrRef group = sorrel::groupAttr({{"12", sorrel::intAttr(1)},
                                             {"3", sorrel::intAttr(2)},
                                             {"12", sorrel::intAttr(3)}});
    PickedAttrsMap map;
    map.fill(GroupAttribute(lend(group)));
    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(IntAttribute(map.at(12)).getValue(), 3) << "the later duplicate wins";
    EXPECT_EQ(map.begin()->first, 3u);

    const GroupAttribute back = map.toGroup();
    EXPECT_EQ(back.getChildName(0), "3");
    EXPECT_EQ(back.getChild<IntAttribute>("12").getValue(), 3);

    map.fill(GroupAttribute());
    EXPECT_TRUE(map.empty());
    EXPECT_FALSE(map.toGroup().isValid()) << "an empty map is the null attribute";
}

TEST(SetHost, NullHostLeavesClassHostNull) {
    ViewportLayerPluginBase::pluginHost = nullptr;
    EXPECT_EQ(ViewportLayerPluginBase::setHost(nullptr), -1);
    EXPECT_EQ(ViewportLayerPluginBase::pluginHost, nullptr);
    EXPECT_EQ(ViewportLayerPluginBase::setHost(testing_support::hostRecord()), 0);
    EXPECT_EQ(ViewportLayerPluginBase::pluginHost, testing_support::hostRecord());
}

}  // namespace
