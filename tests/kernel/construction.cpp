#include "kernel/construction.h"
#include "dbapserv.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"
#include "kernel/Opened.h"
#include "kernel/midpoint.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace kernel;

class Construction : public testing::Test {
protected:
    std::size_t lines() const {
        std::size_t count = 0;
        drawing_->forEachInModelSpace([&](db::Record*) { ++count; });
        return count;
    }
    OpenedDrawing drawing_{DrawingText{}};
};

TEST_F(Construction, ALineKeepsItsHeightsAndItsColour) {
    const AcDbObjectId id = makeLine({1, 2, 3}, {4, 5, 6}, 0);
    const AcDbObjectPointer<AcDbLine> line{id};
    ASSERT_EQ(line.openStatus(), Acad::eOk);
    EXPECT_EQ(line->startPoint(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(line->endPoint(), AcGePoint3d(4, 5, 6));
    EXPECT_EQ(line->colorIndex(), 256);
    EXPECT_EQ(line->ownerId().record(), drawing_->modelSpace());
    const AcDbObjectPointer<AcDbLine> red{makeLine({0, 0, 0}, {1, 0, 0}, 1)};
    EXPECT_EQ(red->colorIndex(), 1);
}

TEST_F(Construction, CirclesAndArcsLieFlat) {
    const AcDbObjectPointer<AcDbCircle> circle{makeCircle({1, 2, 3}, 4)};
    const AcDbObjectPointer<AcDbArc> arc{makeArc({5, 6, 7}, 8, 0.5, 2.5)};
    ASSERT_TRUE(circle.object() && arc.object());
    EXPECT_EQ(circle->center(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(circle->radius(), 4);
    EXPECT_EQ(circle->normal().z, 1);
    EXPECT_EQ(arc->center(), AcGePoint3d(5, 6, 7));
    EXPECT_NEAR(arc->startAngle(), 0.5, 1e-12);
    EXPECT_NEAR(arc->endAngle(), 2.5, 1e-12);
    EXPECT_EQ(arc->normal().z, 1);
}

TEST_F(Construction, NothingStaysOpenAndNothingIsLeftWhenAnyOpeningFails) {
    for (int k = 0;; ++k) {
        int calls = 0;
        drawing_->setFault([&](db::Drawing::Action, const db::Record*) {
            return calls++ == k ? Acad::eWasOpenForWrite : Acad::eOk;
        });
        const std::size_t before = lines();
        const AcDbObjectId id = makeLine({0, 0, 0}, {1, 1, 1}, 3);
        EXPECT_EQ(drawing_->openCount(), 0u) << "opening " << k;
        EXPECT_EQ(lines(), before + (id.isNull() ? 0u : 1u)) << "opening " << k;
        if (calls <= k) break;
        EXPECT_TRUE(id.isNull()) << "opening " << k;
    }
}

TEST(Midpoint, LiesInTheXyPlane) { EXPECT_EQ(midpointXY({0, 0, 5}, {2, 4, 7}), (AcGePoint3d{1, 2, 0})); }

} // namespace
} // namespace qx::tests
