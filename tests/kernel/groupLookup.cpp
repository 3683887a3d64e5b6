#include "kernel/groupLookup.h"
#include "dbgroup.h"
#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace kernel;

class GroupLookup : public testing::Test {
protected:
    DrawingText content_;
    const Handle a_ = content_.line({0, 0, 0}, {1, 0, 0}), b_ = content_.line({0, 0, 0}, {2, 0, 0});
    const Handle zulu_ = content_.group("ZULU", {a_, b_}), alpha_ = content_.group("alpha", {b_, a_});
    OpenedDrawing drawing_{content_};
};

TEST_F(GroupLookup, WhatIsNoLivingMemberTouchesNothing) {
    EXPECT_TRUE(groupsContaining(drawing_.ids({0x7777, 0x7778})).isEmpty()) << "no such handles";
    erase(*drawing_, b_);
    EXPECT_TRUE(groupsContaining(drawing_.ids({b_})).isEmpty()) << "erased";
}

TEST_F(GroupLookup, AGroupThatIsOpenElsewhereIsLeftOut) {
    const AcDbObjectPointer<AcDbGroup> held{drawing_.id(alpha_), AcDb::kForRead};
    const AcDbObjectIdArray found = groupsContaining(drawing_.ids({a_}));
    ASSERT_EQ(found.length(), 1);
    EXPECT_EQ(found.first(), drawing_.id(zulu_));
    EXPECT_EQ(drawing_->openCount(), 1u);
}

} // namespace
} // namespace qx::tests
