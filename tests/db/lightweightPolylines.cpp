#include "db/RecordedShape.h"
#include "dbpl.h"
#include "dbsymtb.h"
#include "drawings/DrawingText.h"
#include "shape/randomShapes.h"

using namespace drawings;
using qx::db::Drawing;
using shapes::Random;

namespace {

constexpr unsigned seed = 20240612;

TEST(LightweightPolylines, sayWhatFollowsAVertex) {
    const std::pair<std::string, const char*> cases[] = {
        // types for each vertex and one more
        {"70 0", "4"},
        {"70 1|10 1.0|20 1.0", "34"},
        {"70 0|10 1.0|20 1.0|10 2.0|20 1.0|42 -0.5|10 3.0|20 1.0|42 1.0", "0134"},
        {"70 1|10 1.0|20 1.0|10 2.0|20 1.0|42 -0.5|10 3.0|20 1.0|42 1.0", "0114"},
        {"70 0|10 1.0|20 1.0|10 1.0|20 1.0|42 1.0|10 1.0|20 1.0", "2234"},
        {"70 1|10 1.0|20 1.0|10 2.0|20 1.0|10 1.0|20 1.0", "0024"},
        {"70 0|10 1.0|20 1.0|42 1e-12|10 2.0|20 1.0", "034"},
    };
    for (const auto& [groups, expected] : cases) {
        const auto drawing = read({.entities = {"LWPOLYLINE|" + groups}});
        AcDbObjectPointer<AcDbPolyline> polyline{idOf(*drawing, 0x100)};
        std::string types;
        for (unsigned i = 0; i <= polyline->numVerts(); ++i) {
            const auto type = polyline->segType(i);
            types += std::to_string(type);
            const auto other = type == AcDbPolyline::kEmpty ? Acad::eInvalidIndex : Acad::eNotApplicable;
            AcGeLineSeg3d line;
            AcGeCircArc2d arc;
            EXPECT_EQ(polyline->getLineSegAt(i, line), type == AcDbPolyline::kLine ? Acad::eOk : other);
            EXPECT_EQ(polyline->getArcSegAt(i, arc), type == AcDbPolyline::kArc ? Acad::eOk : other);
        }
        EXPECT_EQ(types, expected) << groups;
    }
}

/// Open or closed, with bulges, in any plane.
std::string anyPolyline(Random& random) {
    std::string text = "LWPOLYLINE|90 6" + tag(70, random.oneIn(2)) + tag(38, random.number(-5, 5));
    for (int i = 0; i < 6; ++i)
        text += tag(10, random.number(-50, 50)) + tag(20, random.number(-50, 50)) +
                (random.oneIn(2) ? tag(42, random.number(-3, 3)) : "");
    return text + point(210, random.oneIn(3) ? AcGePoint3d{0, 0, -1} : random.point(1));
}

AcGePoint3d middleOf(const AcGeCircArc3d& arc) {
    const double angle = (arc.startAng() + arc.endAng()) / 2;
    const AcGeVector3d y = arc.normal().crossProduct(arc.refVec());
    return arc.center() + (arc.refVec() * std::cos(angle) + y * std::sin(angle)) * arc.radius();
}

// The segments are what is drawn, from start to end.
TEST(LightweightPolylines, giveTheSegmentsTheyDraw) {
    Random random{seed};
    DrawingText text;
    for (int i = 0; i < 100; ++i) text.add(anyPolyline(random));
    const auto drawing = read(text);
    for (unsigned k = 0; k < 100; ++k) {
        AcDbObjectPointer<AcDbPolyline> polyline{idOf(*drawing, DrawingText::firstEntity + k)};
        const std::vector<AcGePoint3d> drawn = RecordedShape{*polyline}.compared;
        std::size_t at = 0;
        for (unsigned i = 0; i < polyline->numVerts(); ++i) {
            AcGeLineSeg3d line;
            AcGeCircArc3d arc;
            AcGeCircArc2d flat;
            const auto expectAt = [&](std::size_t index, const AcGePoint3d& p) {
                EXPECT_LE(p.distanceTo(drawn.at(index)), 1e-9) << k << ' ' << i;
            };
            if (polyline->getLineSegAt(i, line) == Acad::eOk) {
                expectAt(at++, line.startPoint());
                expectAt(at++, line.endPoint());
            } else if (polyline->getArcSegAt(i, arc) == Acad::eOk) {
                const std::size_t last = at + RecordedShape::samplesPerArc;
                expectAt(at, arc.startPoint());
                expectAt((at + last) / 2, middleOf(arc));
                expectAt(last, arc.endPoint());
                AcGePoint2d start, end;
                ASSERT_EQ(polyline->getArcSegAt(i, flat), Acad::eOk);
                polyline->getPointAt(i, start);
                polyline->getPointAt((i + 1) % polyline->numVerts(), end);
                EXPECT_LE((flat.startPoint() - start).length() + (flat.endPoint() - end).length(), 1e-9) << k;
                EXPECT_NEAR(flat.radius(), arc.radius(), 1e-9);
                at = last + 1;
            }
        }
        EXPECT_EQ(at, drawn.size()) << k << ", seed " << seed;
    }
}

TEST(LightweightPolylines, areMadeInMemoryAndWritten) {
    const auto drawing = read(DrawingText{});
    auto* polyline = new AcDbPolyline;
    EXPECT_EQ(polyline->addVertexAt(1, {0, 0}), Acad::eInvalidIndex);
    EXPECT_EQ(polyline->addVertexAt(0, {4, 1}, 1), Acad::eOk);
    EXPECT_EQ(polyline->addVertexAt(0, {1, 1}, 0, 0.5, 0.25), Acad::eOk);
    EXPECT_EQ(polyline->addVertexAt(2, {4, 5}), Acad::eOk);
    polyline->setClosed(true);
    AcDbObjectPointer<AcDbBlockTableRecord> space{idOf(*drawing, DrawingText::modelSpace), AcDb::kForWrite};
    ASSERT_EQ(space->appendAcDbEntity(polyline), Acad::eOk);
    EXPECT_EQ(polyline->addVertexAt(0, {0, 0}), Acad::eNotApplicable) << "in a drawing";
    const Handle handle = polyline->objectId().handle().value();
    polyline->close();

    const auto again = read(drawing->toBytes());
    EXPECT_EQ(extents(*again, handle), "1..6 1..5 0..0");
    AcDbObjectPointer<AcDbPolyline> written{idOf(*again, handle)};
    double start = 0, end = 0, bulge = 0;
    EXPECT_TRUE(written->isClosed());
    EXPECT_EQ(written->getBulgeAt(1, bulge), Acad::eOk);
    EXPECT_EQ(bulge, 1);
    EXPECT_EQ(written->getBulgeAt(3, bulge), Acad::eInvalidIndex);
    EXPECT_EQ(written->getWidthsAt(0, start, end), Acad::eOk);
    EXPECT_EQ(start, 0.5);
    EXPECT_EQ(end, 0.25);
    EXPECT_EQ(written->getWidthsAt(3, start, end), Acad::eInvalidIndex);
}

TEST(LightweightPolylines, copyOldOnes) {
    const struct {
        std::vector<std::string> entities;
        Acad::ErrorStatus status;
    } cases[] = {
        {{"POLYLINE|62 3|30 2.0|70 1|40 0.5|41 0.5", "VERTEX|10 1.0|20 1.0",
          "VERTEX|10 4.0|20 1.0|42 1.0|40 1.0|41 2.0", "VERTEX|10 4.0|20 5.0", "SEQEND"},
         Acad::eOk},
        {{"POLYLINE|30 2.0|210 0|220 0|230 -1", "VERTEX|10 1.0", "VERTEX|10 4.0", "SEQEND"}, Acad::eOk},
        {{"POLYLINE|70 2", "VERTEX|10 1.0", "SEQEND"}, Acad::eNotApplicable},
        {{"POLYLINE|70 4", "VERTEX|10 1.0", "SEQEND"}, Acad::eNotApplicable},
        {{"POLYLINE|70 8", "VERTEX|10 1.0", "SEQEND"}, Acad::eIllegalEntityType},
        {{"LINE|10 1.0|11 2.0"}, Acad::eIllegalEntityType},
    };
    double start = 0, end = 0;
    for (const auto& each : cases) {
        const DrawingText text{.entities = each.entities};
        const auto drawing = read(text);
        AcDbObjectPointer<AcDbEntity> source{idOf(*drawing, 0x100)};
        AcDbEntity* entity = source.object();
        AcDbPolyline copy;
        EXPECT_EQ(copy.convertFrom(entity), Acad::eNotImplementedYet) << each.entities[0];
        EXPECT_EQ(copy.convertFrom(entity, false), each.status) << each.entities[0];
        EXPECT_EQ(entity, source.object()) << each.entities[0];
        EXPECT_EQ(drawing->toBytes(), text.bytes()) << each.entities[0];
        if (each.status != Acad::eOk) continue;
        EXPECT_EQ(RecordedShape{copy}.points, RecordedShape{*source}.points) << each.entities[0];
        EXPECT_EQ(copy.colorIndex(), source->colorIndex()) << each.entities[0];
        for (const unsigned i : {0u, 1u}) {
            copy.getWidthsAt(i, start, end);
            EXPECT_EQ(end, !copy.isClosed() ? 0 : i == 0 ? 0.5 : 2) << each.entities[0];
        }
        EXPECT_EQ(copy.isClosed(), static_cast<AcDb2dPolyline*>(source.object())->isClosed())
            << each.entities[0];
    }
}

} // namespace
