#include "draw/ChangeWatch.h"
#include "drawings/OpenedDrawing.h"

#include <algorithm>
#include <set>

namespace {

using namespace qx;
using drawings::DrawingText;

class Watched : public testing::Test {
protected:
    void move(drawings::Handle handle) {
        AcDbObjectPointer<AcDbEntity> entity{drawing.id(handle), AcDb::kForWrite};
        ASSERT_EQ(entity->transformBy(AcGeMatrix3d::translation({1, 0, 0})), Acad::eOk);
    }
    /// What may have changed, "1 2".
    std::string taken() {
        std::set<int> which;
        for (const db::Record* each : watch.take())
            which.insert(static_cast<int>(std::ranges::find(lines, each->handle) - lines.begin()) + 1);
        std::string text;
        for (const int each : which) text += (text.empty() ? "" : " ") + std::to_string(each);
        return text;
    }
    db::History& history() { return drawing->history(); }

    DrawingText content;
    std::vector<drawings::Handle> lines{content.line({0, 0, 0}, {1, 0, 0}),
                                        content.line({0, 1, 0}, {1, 1, 0})};
    drawings::OpenedDrawing drawing{content};
    draw::ChangeWatch watch{*drawing};
};

TEST_F(Watched, StepsDoneAndUndoneAreTold) {
    EXPECT_EQ(taken(), "");
    history().begin("A"), move(lines[0]), history().end();
    EXPECT_EQ(taken(), "1");
    EXPECT_EQ(taken(), "");
    history().begin("B"), move(lines[1]), history().end();
    history().undo();
    history().undo();
    EXPECT_EQ(taken(), "1") << "the second step came and went unseen";
    history().redo();
    EXPECT_EQ(taken(), "1");
    history().redo();
    EXPECT_EQ(taken(), "2");
}

TEST_F(Watched, AnOpenStepIsToldAgainAndAgain) {
    history().begin("A");
    EXPECT_EQ(taken(), "");
    move(lines[0]);
    EXPECT_EQ(taken(), "1");
    move(lines[1]);
    EXPECT_EQ(taken(), "1 2");
    history().rollBack();
    EXPECT_EQ(taken(), "1 2") << "both are back where they were";
    EXPECT_EQ(taken(), "");
}

} // namespace
