// Typed views, samples, groups, event helpers and option identifiers over the
// host's attribute model.

#include "frame/attribute.h"

#include <gtest/gtest.h>

#include "frame/group_builder.h"
#include "frame/picked_attrs_map.h"
#include "frame/sample_accessor.h"
#include "host/core/attribute_host_table.h"
#include "host/core/attribute_model.h"
#include "host/core/attribute_ref.h"
#include "host/core/sample_blocks.h"
#include "tests/support/unit_host.h"

using namespace Tessera::Sorrel::ViewerAPI;
using sorrel::AttributeModel;
using sorrel::AttrRef;

namespace {

// Positions in the host's attribute table, whose calls the table counts.
constexpr std::size_t kReleaseSampleBlock = 63;

class Attributes : public testing_support::UnitTest {};

Attribute lend(const AttrRef& ref) { return Attribute::share(ref.get()); }

TEST_F(Attributes, WrongTypeViewsReadAsMissingWithoutLeaking) {
    const AttrRef text = sorrel::stringAttr("7");
    Attribute source = lend(text);
    const IntAttribute asInt(std::move(source));
    EXPECT_FALSE(asInt.isValid());
    EXPECT_TRUE(source.isValid()) << "a refused source keeps its reference";
    EXPECT_EQ(asInt.getValue(42), 42) << "the caller's default stands for the null view";
    EXPECT_EQ(FloatAttribute(lend(text)).getValue(2.5f), 2.5f);
    EXPECT_EQ(StringAttribute(lend(sorrel::intAttr(3))).getValue("none"), "none");

    const StringAttribute asString(std::move(source));
    EXPECT_FALSE(source.isValid()) << "a matching view takes the reference";
    EXPECT_EQ(asString.getValue(), "7");

    // Copies retain, moves transfer.
    const std::int64_t before = AttributeModel::instance().liveReferences();
    StringAttribute copy = asString;
    EXPECT_EQ(AttributeModel::instance().liveReferences(), before + 1);
    const StringAttribute moved = std::move(copy);
    EXPECT_FALSE(copy.isValid());
    EXPECT_EQ(AttributeModel::instance().liveReferences(), before + 1);
}

TEST_F(Attributes, ChildrenAndEventPartsAreReadByNameAndDottedPath) {
    const AttrRef group = sorrel::groupAttr(
        {{"geometry", sorrel::groupAttr({{"centerOfInterest", sorrel::doubleAttr(5.0)}})},
         {"count", sorrel::intAttr(3)}});
    const GroupAttribute view(lend(group));
    EXPECT_EQ(view.getChild<DoubleAttribute>("geometry.centerOfInterest").getValue(), 5.0);
    EXPECT_EQ(view.getChild<IntAttribute>("count").getValue(), 3);
    EXPECT_FALSE(view.getChild<IntAttribute>("geometry.missing").isValid());
    EXPECT_FALSE(view.getChild<GroupAttribute>("count").isValid());
    EXPECT_EQ(GroupAttribute().getChild<IntAttribute>("count").getValue(9), 9);

    const AttrRef event = sorrel::groupAttr(
        {{"type", sorrel::stringAttr("MouseMove")}, {"data", sorrel::groupAttr({})}});
    EXPECT_EQ(getEventTypeHash(GroupAttribute(lend(event))), hashOfText("MouseMove"));
    EXPECT_TRUE(getEventData(GroupAttribute(lend(event))).isValid());
    const AttrRef odd = sorrel::groupAttr({{"type", sorrel::intAttr(1)}});
    EXPECT_TRUE(getEventTypeHash(GroupAttribute(lend(odd))).isNull());
    EXPECT_FALSE(getEventData(GroupAttribute(lend(odd))).isValid());
    EXPECT_TRUE(getEventTypeHash(GroupAttribute()).isNull());
}

TEST_F(Attributes, SampleAccessorChoosesNearestSampleAndGivesBlocksBackOnlyWhenAsked) {
    AttributeModel& model = AttributeModel::instance();
    sorrel::SampleBlocks& blocks = sorrel::SampleBlocks::instance();
    const AttrRef samples(model.makeDoubleSamples({-1.0f, 1.0f, 3.0f}, {{1, 2}, {3, 4}, {5, 6}}));
    for (const bool contiguous : {true, false}) {
        blocks.setPolicy({/* contiguous = */ contiguous, /* useInlineBuffer = */ true});
        // 0 lies as near -1 as 1: the lower index wins.
        const SampleAccessor<double> atZero(lend(samples), 0.0f);
        ASSERT_EQ(atZero.size(), 2);
        EXPECT_EQ(atZero[0], 1.0);
        EXPECT_EQ(SampleAccessor<double>(lend(samples), 2.5f)[1], 6.0);
    }
    blocks.setPolicy({});

    const AttrRef texts(model.makeStrings({"a", "b"}));
    EXPECT_STREQ(SampleAccessor<const char*>(lend(texts), 0.0f)[1], "b");
    EXPECT_TRUE(SampleAccessor<float>(lend(texts), 0.0f).empty()) << "wrong type";

    // Blocks are given back only when the host asks.
    const AttrRef triple = sorrel::floatsAttr({1.0f, 2.0f, 3.0f});
    const auto releasesOfOneRead = [&](bool useInlineBuffer) {
        blocks.setPolicy({/* contiguous = */ true, useInlineBuffer});
        const std::uint64_t before = sorrel::attributeHostCalls(kReleaseSampleBlock);
        EXPECT_EQ(SampleAccessor<float>(lend(triple), 0.0f)[2], 3.0f);
        blocks.setPolicy({});
        return sorrel::attributeHostCalls(kReleaseSampleBlock) - before;
    };
    EXPECT_EQ(releasesOfOneRead(true), 0u) << "built in the accessor's inline buffer";
    EXPECT_EQ(releasesOfOneRead(false), 1u);
}

TEST_F(Attributes, BuilderWithNothingAddedGivesTheEmptyGroup) {
    const GroupAttribute empty = GroupBuilder().build();
    EXPECT_TRUE(empty.isValid()) << "the empty group, not null";
    EXPECT_EQ(empty.getNumberOfChildren(), 0);
}

TEST_F(Attributes, PickedMapsConvertBothWays) {
    const AttrRef group = sorrel::groupAttr(
        {{"12", sorrel::intAttr(1)}, {"3", sorrel::intAttr(2)}, {"12", sorrel::intAttr(3)}});
    PickedAttrsMap map;
    map.fill(GroupAttribute(lend(group)));
    ASSERT_EQ(map.size(), 2u);
    EXPECT_EQ(IntAttribute(map.at(12)).getValue(), 3) << "the later duplicate wins";

    const GroupAttribute back = map.toGroup();
    EXPECT_EQ(back.getChildName(0), "3") << "ascending by number";
    EXPECT_EQ(back.getChild<IntAttribute>("12").getValue(), 3);

    map.fill(GroupAttribute());
    EXPECT_TRUE(map.empty());
    EXPECT_FALSE(map.toGroup().isValid()) << "an empty map is the null attribute";
}

}  // namespace
