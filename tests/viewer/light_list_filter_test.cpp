// The filter over the window's light list.
#include <gtest/gtest.h>

#include "apps/window/viewer_panel.h"

namespace {

TEST(LightListFilter, ListsPathsHoldingTheTextInAnyCase) {
    EXPECT_TRUE(viewer::passesFilter("/root/world/lgt/Key", ""));
    EXPECT_TRUE(viewer::passesFilter("/root/world/lgt/Key", "key"));
    EXPECT_TRUE(viewer::passesFilter("/root/world/lgt/package1/light", "PACKAGE1/L"));
    EXPECT_FALSE(viewer::passesFilter("/root/world/lgt/fill", "key"));
    EXPECT_FALSE(viewer::passesFilter("/root/world/lgt/ke", "key"));
}

}  // namespace
