#include "kernel/rotations.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace kernel;

constexpr double quarter = 1.5707963;

class Rotations : public testing::Test {
protected:
    /// Ends of the line, to six decimals: the quarter turn is a truncated number.
    std::string ends(Handle handle) const {
        const auto* line = static_cast<const AcDbLine*>(drawing_->liveEntity(drawing_->find(handle)));
        std::string all;
        for (const AcGePoint3d& p : {line->startPoint(), line->endPoint()})
            for (const double value : {p.x, p.y, p.z}) {
                char text[40];
                std::snprintf(text, sizeof text, "%.6g ", std::round(value * 1e6) / 1e6 + 0.0);
                all += text;
            }
        return all;
    }

    DrawingText content_;
    const Handle a_ = content_.line({1, 0, 5}, {3, 0, 7});
    const Handle locked_ = content_.line({0, 0, 0}, {1, 0, 0}, "LOCKED");
    const Handle b_ = content_.line({0, 2, 0}, {0, 4, 0});
    OpenedDrawing drawing_{content_};
};

TEST_F(Rotations, TheStatusIsThatOfWhatWasRefused) {
    const std::string before = drawing_->toBytes();
    EXPECT_EQ(rotateEntity(drawing_.id(locked_), {}, quarter), Acad::eOnLockedLayer);
    EXPECT_EQ(rotateEntity(AcDbObjectId::kNull, {}, quarter), Acad::eNullObjectId);
    EXPECT_EQ(rotateEntity(drawing_.id(a_), {}, 0), Acad::eOk);
    EXPECT_EQ(drawing_->toBytes(), before) << "a turn by nothing";
    AcDbObjectPointer<AcDbEntity> { drawing_.id(a_), AcDb::kForWrite } -> erase();
    EXPECT_EQ(rotateEntity(drawing_.id(a_), {}, quarter), Acad::eWasErased);
    drawing_->setFault([](db::Drawing::Action action, const db::Record*) {
        return action == db::Drawing::Action::transform ? Acad::eNotApplicable : Acad::eOk;
    });
    EXPECT_EQ(rotateEntity(drawing_.id(b_), {}, quarter), Acad::eNotApplicable);
    EXPECT_EQ(drawing_->openCount(), 0u);
}

TEST_F(Rotations, AListTurnsAboutOnePointAndSkipsWhatCannotBeOpened) {
    rotateEntities(drawing_.ids({a_, locked_, b_}), {0, 0, 0}, quarter);
    EXPECT_EQ(ends(a_), "0 1 5 0 3 7 ");
    EXPECT_EQ(ends(locked_), "0 0 0 1 0 0 ");
    EXPECT_EQ(ends(b_), "-2 0 0 -4 0 0 ");
    EXPECT_EQ(drawing_->openCount(), 0u);
}

TEST_F(Rotations, EachTurnsAboutItsOwnPoint) {
    AcGePoint3dArray points;
    points.append({3, 0, 0});
    points.append({0, 0, 0});
    points.append({0, 2, 0});
    rotateEntitiesEach(drawing_.ids({a_, locked_, b_}), points, quarter);
    EXPECT_EQ(ends(a_), "3 -2 5 3 0 7 ");
    EXPECT_EQ(ends(b_), "0 2 0 -2 2 0 ");
}

} // namespace
} // namespace qx::tests
