#include "kernel/polylineVertices.h"

#include "dbobjptr.h"
#include "drawings/OpenedDrawing.h"
#include "kernel/lightCopy.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {

/// The first snippet, and what is set apart by "; " as its vertices.
DrawingText drawingOf(std::string_view compact) {
    DrawingText content;
    content.addEach(compact);
    if (content.entities.size() > 1) content.add("SEQEND");
    return content;
}

std::string text(const AcGePoint3d& p) {
    char line[100];
    std::snprintf(line, sizeof line, "%g,%g,%g ", p.x, p.y, p.z);
    return line;
}

TEST(PolylineVertices, InTheWorldAndInOrder) {
    const struct {
        const char* name;
        const char* drawing;
        const char* vertices;
        bool isPolyline = true;
    } cases[] = {
        {"light", "LWPOLYLINE|90 3|70 1|38 2|10 1|20 2|42 1|10 3|20 4|10 1|20 2", "1,2,2 3,4,2 1,2,2 "},
        {"light, from below", "LWPOLYLINE|90 2|70 0|38 2|10 1|20 2|10 3|20 4|210 0|220 0|230 -1",
         "-1,2,-2 -3,4,-2 "},
        {"flat, from below",
         "POLYLINE|66 1|10 0|20 0|30 2|70 0|210 0|220 0|230 -1; VERTEX|10 1|20 2; VERTEX|10 3|20 4",
         "-1,2,-2 -3,4,-2 "},
        {"flat, without the frame of a spline",
         "POLYLINE|66 1|10 0|20 0|70 4; VERTEX|10 1|20 2|70 16; VERTEX|10 3|20 4|70 8; VERTEX|10 5|20 6|70 9",
         "3,4,0 5,6,0 "},
        {"flat, with what curve fitting adds",
         "POLYLINE|66 1|10 0|20 0|70 2; VERTEX|10 1|20 2|70 0; VERTEX|10 3|20 4|70 1; VERTEX|10 5|20 6|70 0",
         "1,2,0 3,4,0 5,6,0 "},
        {"in space", "POLYLINE|66 1|70 8; VERTEX|10 1|20 2|30 9|70 32; VERTEX|10 3|20 4|30 -1|70 32",
         "1,2,9 3,4,-1 "},
        {"in space, without the frame of a spline",
         "POLYLINE|66 1|70 12; VERTEX|10 1|20 2|70 48; VERTEX|10 3|20 4|30 7|70 40", "3,4,7 "},
        {"no polyline", "LINE|10 1|20 2|11 3|21 4", "", false},
    };
    for (const auto& each : cases) {
        const OpenedDrawing drawing{drawingOf(each.drawing)};
        const AcDbObjectPointer<AcDbEntity> entity{drawing.id(DrawingText::firstEntity)};
        std::string vertices;
        AcGePoint3dArray points;
        EXPECT_EQ(kernel::readPolylineVertices(*entity.object(), points), Acad::eOk) << each.name;
        for (const AcGePoint3d& point : points) vertices += text(point);
        EXPECT_EQ(vertices, each.vertices) << each.name;
        EXPECT_EQ(kernel::isPolyline(*entity.object()), each.isPolyline) << each.name;
        EXPECT_EQ(drawing->openCount(), 1u) << each.name;
    }
}

TEST(PolylineVertices, ErasedOnesAreLeftOutAndARefusedOneEndsThem) {
    const OpenedDrawing drawing{
        drawingOf("POLYLINE|66 1|70 8; VERTEX|10 1|70 32; VERTEX|10 2|70 32; VERTEX|10 3|70 32")};
    ASSERT_EQ(erase(*drawing, DrawingText::firstEntity + 1), Acad::eOk);
    const AcDbObjectPointer<AcDbEntity> entity{drawing.id(DrawingText::firstEntity)};
    drawing->setFault([&](db::Drawing::Action, const db::Record* record) {
        return record == drawing->find(DrawingText::firstEntity + 2) ? Acad::eNotApplicable : Acad::eOk;
    });
    AcGePoint3dArray left;
    EXPECT_EQ(kernel::readPolylineVertices(*entity.object(), left), Acad::eNotApplicable);
    EXPECT_TRUE(left.isEmpty());
    drawing->setFault(nullptr);
    EXPECT_EQ(kernel::readPolylineVertices(*entity.object(), left), Acad::eOk);
    ASSERT_EQ(left.length(), 2);
    EXPECT_EQ(left[1].x, 3);
    EXPECT_EQ(drawing->openCount(), 1u);
}

TEST(LightCopy, LooksLikeTheOriginalAndLeavesItAlone) {
    const DrawingText content = drawingOf("POLYLINE|66 1|10 0|20 0|30 2|70 1|210 0|220 0|230 -1; "
                                          "VERTEX|10 1|20 2|42 0.5; VERTEX|10 3|20 4; VERTEX|10 5|20 2");
    const OpenedDrawing drawing{content};
    const AcDbObjectPointer<AcDb2dPolyline> original{drawing.id(DrawingText::firstEntity)};
    const auto copy = kernel::lightCopy(*original.object());
    ASSERT_TRUE(copy);
    AcGePoint3d first;
    double bulge = 0;
    copy->getPointAt(0u, first);
    copy->getBulgeAt(0, bulge);
    AcDbExtents box;
    ASSERT_EQ(copy->getGeomExtents(box), Acad::eOk);
    EXPECT_EQ(text(first), "-1,2,-2 ");
    EXPECT_EQ(bulge, 0.5);
    EXPECT_EQ(copy->numVerts(), 3u);
    EXPECT_TRUE(copy->isClosed());
    EXPECT_EQ(shapes::text({box.minPoint(), box.maxPoint()}), extents(*drawing, DrawingText::firstEntity));
    EXPECT_TRUE(copy->objectId().isNull());
    EXPECT_EQ(drawing->openCount(), 1u);
    EXPECT_EQ(drawing->toBytes(), content.bytes());
}

TEST(LightCopy, OfFittedPolylinesThereIsNone) {
    for (const char* flags : {"2", "4"}) {
        const OpenedDrawing drawing{drawingOf(std::string{"POLYLINE|66 1|10 0|20 0|70 "} + flags +
                                              "; VERTEX|10 1|20 2; VERTEX|10 3|20 4")};
        const AcDbObjectPointer<AcDb2dPolyline> original{drawing.id(DrawingText::firstEntity)};
        EXPECT_FALSE(kernel::lightCopy(*original.object())) << flags;
        EXPECT_EQ(drawing->openCount(), 1u);
    }
}
} // namespace
} // namespace qx::tests
