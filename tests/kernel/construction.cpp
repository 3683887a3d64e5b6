#include "kernel/construction.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"
#include "kernel/midpoint.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace kernel;

TEST(Construction, KeepsHeightsAndColoursAndLiesFlat) {
    const OpenedDrawing drawing{DrawingText{}};
    const AcDbObjectId id = makeLine({1, 2, 3}, {4, 5, 6}, 0);
    const AcDbObjectPointer<AcDbLine> line{id};
    ASSERT_EQ(line.openStatus(), Acad::eOk);
    EXPECT_EQ(line->startPoint(), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(line->endPoint(), AcGePoint3d(4, 5, 6));
    EXPECT_EQ(line->colorIndex(), 256);
    EXPECT_EQ(line->ownerId().record(), drawing->modelSpace());
    const AcDbObjectPointer<AcDbLine> red{makeLine({0, 0, 0}, {1, 0, 0}, 1)};
    EXPECT_EQ(red->colorIndex(), 1);
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

TEST(Construction, NothingStaysOpenAndNothingIsLeftWhenAnyOpeningFails) {
    const OpenedDrawing drawing{DrawingText{}};
    for (int k = 0;; ++k) {
        int calls = 0;
        drawing->setFault([&](db::Drawing::Action, const db::Record*) {
            return calls++ == k ? Acad::eWasOpenForWrite : Acad::eOk;
        });
        const std::string before = drawing->toBytes();
        const AcDbObjectId id = makeLine({0, 0, 0}, {1, 1, 1}, 3);
        EXPECT_EQ(drawing->openCount(), 0u) << "opening " << k;
        EXPECT_EQ(drawing->toBytes() == before, id.isNull()) << "opening " << k;
        if (calls <= k) break;
        EXPECT_TRUE(id.isNull()) << "opening " << k;
    }
}

TEST(Midpoint, LiesInTheXyPlane) { EXPECT_EQ(midpointXY({0, 0, 5}, {2, 4, 7}), (AcGePoint3d{1, 2, 0})); }

} // namespace
} // namespace qx::tests
