#pragma once
// Every test that touches attributes ends with the reference balance it began with.

#include <gtest/gtest.h>

#include "host/core/attribute_model.h"
#include "host/core/sample_blocks.h"

namespace testing_support {

/// Fails the test when attribute references or sample blocks leaked.
class ReferenceBalanceTest : public ::testing::Test {
protected:
    void SetUp() override {
        referencesAtStart_ = sorrel::AttributeModel::instance().liveReferences();
        blocksAtStart_ = sorrel::SampleBlocks::instance().outstanding();
    }
    void TearDown() override {
        EXPECT_EQ(sorrel::AttributeModel::instance().liveReferences(), referencesAtStart_)
            << "attribute references leaked (or were released twice)";
        EXPECT_EQ(sorrel::SampleBlocks::instance().outstanding(), blocksAtStart_)
            << "sample blocks were not given back";
    }

private:
    std::int64_t referencesAtStart_ = 0;
    std::int64_t blocksAtStart_ = 0;
};

}  // namespace testing_support
