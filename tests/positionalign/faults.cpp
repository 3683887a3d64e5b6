// Every opening and every transformation of every action made to fail once.
#include "positionalign/actions.h"
#include "tests/positionalign/Scene.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace positionalign;

constexpr int lastAction = static_cast<int>(Action::verticalDistribution);

/// One run over the whole scene in which the k-th request to the drawing is refused.
class FaultyRun {
public:
    FaultyRun(int action, SelectionMode mode, int k) {
        drawing_->history().begin("run");
        drawing_->setFault([this, k](db::Drawing::Action, const db::Record*) {
            return requests_++ == k ? Acad::eWasOpenForWrite : Acad::eOk;
        });
        applyAction({static_cast<Action>(action), true, 4, mode},
                    drawing_.ids({scene_.a, scene_.b, scene_.c, scene_.d}), {50, 60, 1});
        drawing_->setFault(nullptr);
        drawing_->history().end();
    }

    int requests() const { return requests_; }
    std::string shifts() const { return before_.shifts(); }
    const OpenedDrawing& drawing() const { return drawing_; }
    bool isUndoneToTheBytes() {
        if (drawing_->history().stepsDone() > 0) drawing_->history().undo();
        return drawing_->toBytes() == scene_.content.bytes();
    }

private:
    Scene scene_;
    OpenedDrawing drawing_{scene_.content};
    Positions before_{*drawing_, scene_.items};
    int requests_ = 0;
};

TEST(Faults, NothingStaysOpenNothingIsBentAndAllCanBeUndone) {
    for (int action = 0; action <= lastAction; ++action)
        for (const SelectionMode mode : {SelectionMode::objects, SelectionMode::groups})
            for (int k = 0;; ++k) {
                FaultyRun run{action, mode, k};
                const std::string where = "action " + std::to_string(action) + ", mode " +
                                          std::to_string(static_cast<int>(mode)) + ", request " +
                                          std::to_string(k);
                EXPECT_EQ(run.drawing()->openCount(), 0u) << where;
                EXPECT_EQ(run.shifts().find('?'), std::string::npos) << where << ": " << run.shifts();
                EXPECT_TRUE(run.isUndoneToTheBytes()) << where;
                if (run.requests() <= k) break;
            }
}

TEST(Faults, OfAnObjectLeaveTheOthersWhereTheyBelong) {
    // Per object three requests: it is opened to be measured, opened to be moved, and moved.
    const char* const shifts[] = {"44,0,-2 ", "59,0,1 ", "-46,0,3 ", "54,0,-4 "};
    for (int k = 0; k < 12; ++k) {
        const int failing = k / 3;
        const bool stops = k % 3 == 0;
        std::string expected;
        for (int i = 0; i < 4; ++i) {
            const bool moves = stops ? i < failing : i != failing;
            expected += moves ? shifts[i] : "0,0,0 ";
        }
        expected.pop_back();
        const FaultyRun run{static_cast<int>(Action::left), SelectionMode::objects, k};
        EXPECT_EQ(run.shifts(), expected) << "request " << k;
        EXPECT_EQ(run.requests(), stops ? k + 1 : k % 3 == 1 ? 11 : 12) << "request " << k;
    }
    const FaultyRun distribution{static_cast<int>(Action::horizontalDistribution), SelectionMode::objects, 2};
    EXPECT_EQ(distribution.requests(), 3) << "it does not even begin";
}
} // namespace
} // namespace qx::tests
