#include "kernel/groupLookup.h"
#include "dbgroup.h"
#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace kernel;

std::vector<Handle> handles(const AcDbObjectIdArray& ids) {
    std::vector<Handle> list;
    for (const AcDbObjectId id : ids) list.push_back(id.handle().value());
    return list;
}

class GroupLookup : public testing::Test {
protected:
    DrawingText content_;
    const Handle a_ = content_.line({0, 0, 0}, {1, 0, 0}), b_ = content_.line({0, 0, 0}, {2, 0, 0}),
                 c_ = content_.line({0, 0, 0}, {3, 0, 0}), d_ = content_.line({0, 0, 0}, {4, 0, 0});
    const Handle zulu_ = content_.group("ZULU", {a_, b_}), alpha_ = content_.group("alpha", {c_, b_, a_}),
                 mike_ = content_.group("Mike", {c_}), empty_ = content_.group("BARE", {});
    OpenedDrawing drawing_{content_};
};

TEST_F(GroupLookup, GivesEachTouchedGroupOnceInDictionaryOrder) {
    const struct {
        const char* name;
        std::vector<Handle> selected, groups;
    } cases[] = {
        {"nothing selected", {}, {}},
        {"in one group", {c_, d_}, {alpha_, mike_}},
        {"all members of a group", {b_, a_}, {alpha_, zulu_}},
        {"selected twice", {a_, a_, a_}, {alpha_, zulu_}},
        {"not in the order of the selection", {a_, c_}, {alpha_, mike_, zulu_}},
    };
    for (const auto& each : cases)
        EXPECT_EQ(handles(groupsContaining(drawing_.ids(each.selected))), each.groups) << each.name;
}

TEST_F(GroupLookup, WhatIsNoLivingMemberTouchesNothing) {
    EXPECT_TRUE(groupsContaining(drawing_.ids({0x7777, 0x7778})).isEmpty()) << "no such handles";
    erase(*drawing_, b_);
    EXPECT_TRUE(groupsContaining(drawing_.ids({b_})).isEmpty()) << "erased";
}

TEST_F(GroupLookup, AGroupThatIsOpenElsewhereIsLeftOut) {
    const AcDbObjectPointer<AcDbGroup> held{drawing_.id(alpha_), AcDb::kForRead};
    EXPECT_EQ(handles(groupsContaining(drawing_.ids({a_}))), std::vector{zulu_});
    EXPECT_EQ(drawing_->openCount(), 1u);
}

TEST_F(GroupLookup, AnyOpeningMayFail) {
    for (int k = 0;; ++k) {
        int calls = 0;
        drawing_->setFault([&](db::Drawing::Action, const db::Record*) {
            return calls++ == k ? Acad::eWasOpenForWrite : Acad::eOk;
        });
        const auto found = handles(groupsContaining(drawing_.ids({a_, c_})));
        EXPECT_EQ(drawing_->openCount(), 0u) << "opening " << k;
        const std::vector all{alpha_, mike_, zulu_};
        if (calls <= k) {
            EXPECT_EQ(found, all);
            break;
        }
        for (const Handle each : found)
            EXPECT_NE(std::find(all.begin(), all.end(), each), all.end()) << "opening " << k;
    }
}

TEST_F(GroupLookup, MembersComeInTheGroupsOrder) {
    EXPECT_EQ(handles(groupMembers(drawing_.id(alpha_))), (std::vector{c_, b_, a_}));
    EXPECT_TRUE(groupMembers(drawing_.id(empty_)).isEmpty());
    EXPECT_TRUE(groupMembers(drawing_.id(a_)).isEmpty()) << "not a group";
    EXPECT_TRUE(groupMembers(AcDbObjectId::kNull).isEmpty());
}

} // namespace
} // namespace qx::tests
