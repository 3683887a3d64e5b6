#include "db/RecordedShape.h"
#include "drawings/DrawingText.h"

#include <array>

using namespace drawings;
using qx::db::Drawing;

namespace {

/// A header and its vertices: "70 1; 10 0.0|20 0.0; 10 5.0|20 0.0".
std::vector<std::string> polyline(std::string_view compact) {
    std::vector<std::string> snippets;
    while (!compact.empty()) {
        const std::string_view groups = compact.substr(0, compact.find(';'));
        compact.remove_prefix(std::min(groups.size() + 2, compact.size()));
        snippets.push_back((snippets.empty() ? "POLYLINE|66 1|" : "VERTEX|") + std::string{groups});
    }
    snippets.push_back("SEQEND");
    return snippets;
}

constexpr Handle header = DrawingText::firstEntity, firstVertex = header + 1;

const char* const triangle =
    "10 0.0|20 0.0|30 2.0|70 1; 10 1.0|20 1.0|30 2.0; 10 4.0|20 1.0|30 2.0|42 1.0; 10 4.0|20 5.0|30 2.0";

std::string classOf(const Drawing& drawing, Handle handle) {
    AcDbObjectPointer<AcDbObject> object{idOf(drawing, handle)};
    const std::wstring name = object->isA()->name();
    return {name.begin(), name.end()};
}

TEST(Polylines, areWhatTheHeaderSays) {
    const char *flat = "AcDb2dPolyline AcDb2dVertex", *inSpace = "AcDb3dPolyline AcDb3dPolylineVertex";
    const char* mesh = "AcDbPolygonMesh AcDbPolygonMeshVertex";
    const char* faces = "AcDbPolyFaceMesh AcDbPolyFaceMeshVertex";
    const struct {
        const char* groups;
        std::string classes; ///< of the header and the vertex
        const char* extents;
    } cases[] = {
        {"30 2.0; 10 1.0|20 1.0|30 7.0; 10 4.0|20 3.0", flat, "1..4 1..3 2..2"},
        {"30 2.0|210 0|220 0|230 -1; 10 1.0|20 1.0; 10 4.0|20 3.0", flat, "-4..-1 1..3 -2..-2"},
        {"70 0; 10 0.0|20 0.0|42 1.0; 10 4.0|20 0.0", flat, "0..4 -2..0 0..0"},
        {"70 1; 10 0.0|20 0.0; 10 4.0|20 0.0|42 1.0", flat, "0..4 0..2 0..0"},
        {"70 1; 10 3.0|20 1.0", flat, "3..3 1..1 0..0"},
        // A spline's frame is not drawn.
        {"70 4; 10 0.0|20 0.0|70 8; 10 9.0|20 9.0|70 16; 10 1.0|20 2.0|70 8", flat, "0..1 0..2 0..0"},
        {"70 8; 10 1.0|20 1.0|30 7.0|70 32; 10 4.0|20 3.0|70 32", inSpace, "1..4 1..3 0..7"},
        {"70 12; 10 9.0|70 48; 10 4.0|20 3.0|70 40; 10 5.0|20 3.0|70 40", inSpace, "4..5 3..3 0..0"},
        // Curve-fit: what fitting added is drawn as well. Splines in space, quadratic or not.
        {"70 2; 10 0.0|20 0.0|42 1.0; 10 4.0|20 0.0|42 -1.0|70 1; 10 8.0|20 0.0", flat, "0..8 -2..2 0..0"},
        {"70 12|75 5; 10 0.0|70 48; 10 1.0|70 40; 10 2.0|70 40; 10 9.0|70 48", inSpace, "1..2 0..0 0..0"},
        // Meshes: of a smoothed one the surface; rows that are not full, and counts that are wrong.
        {"70 16|71 1|72 2; 10 1.0|20 1.0|70 64; 10 3.0|30 5.0|70 64", mesh, "1..3 0..1 0..5"},
        {"70 20|71 1|72 1|73 1|74 2|75 6; 10 9.0|70 80; 10 1.0|70 72; 10 2.0|70 72", mesh, "1..2 0..0 0..0"},
        {"70 49|71 -7|72 2147483647; 10 1.0|70 64; 10 3.0|70 64; 10 2.0|70 64", mesh, "1..3 0..0 0..0"},
        {"70 16; 10 1.0|20 1.0|70 64", mesh, "1..1 1..1 0..0"},
        {"70 64; 10 1.0|70 192; 10 4.0|70 192; 70 128|71 1|72 -2", faces, "1..4 0..0 0..0"},
        {"70 64; 10 1.0|70 192; 10 9.0|70 192; 70 128|71 1|72 -9|73 0|74 3", faces, "1..1 0..0 0..0"},
        {"70 64; 10 1.0|70 192; 70 128|71 -2147483648|72 99999", faces, "status 1001"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.groups);
        const auto drawing = read({.entities = polyline(each.groups)});
        EXPECT_EQ(classOf(*drawing, header) + " " + classOf(*drawing, firstVertex), each.classes);
        EXPECT_EQ(extents(*drawing, header), each.extents);
        EXPECT_TRUE(drawing->isSelectable(drawing->find(header)));
        EXPECT_FALSE(drawing->isSelectable(drawing->find(firstVertex)));
        EXPECT_EQ(move(*drawing, header, shift(1, 0)), Acad::eOk);
    }
}

TEST(Meshes, areDrawnByTheirEdges) {
    const std::string square = "; 10 0.0|70 64; 10 1.0|70 64; 10 0.0|20 1.0|70 64; 10 1.0|20 1.0|70 64";
    const std::string corners =
        "; 10 0.0|70 192; 10 1.0|70 192; 10 1.0|20 1.0|70 192; 10 0.0|20 1.0|70 192; ";
    const std::pair<std::string, std::string> cases[] = {
        {"70 16|71 2|72 2" + square, "0,0-1,0 0,1-1,1 0,0-0,1 1,0-1,1 "},
        {"70 49|71 2|72 2" + square, "0,0-1,0 1,0-0,0 0,1-1,1 1,1-0,1 0,0-0,1 1,0-1,1 0,1-0,0 1,1-1,0 "},
        {"70 16|71 2|72 3" + square, "0,0-1,0 1,0-0,1 0,0-1,1 "},
        {"70 64" + corners + "70 128|71 1|72 -2|73 3|74 4", "0,0-1,0 (1,0-1,1) 1,1-0,1 0,1-0,0 "},
        {"70 64" + corners + "70 128|71 1|72 3; 70 128|71 2|72 3|73 4", "0,0-1,1 1,0-1,1 1,1-0,1 0,1-1,0 "},
    };
    for (const auto& [groups, expected] : cases) {
        const auto drawing = read({.entities = polyline(groups)});
        EXPECT_EQ(Edges{*drawing->liveEntity(drawing->find(header))}.all, expected) << groups;
    }
}

TEST(Polylines, giveTheirVerticesUnderTheRulesOfOpening) {
    const auto drawing = read({.entities = polyline(triangle)});
    AcDbObjectPointer<AcDb2dPolyline> owner{idOf(*drawing, header)};
    ASSERT_EQ(erase(*drawing, firstVertex + 1), Acad::eOk);
    std::unique_ptr<AcDbObjectIterator> each{owner->vertexIterator()};
    std::string met;
    for (; !each->done(); each->step()) {
        AcDb2dVertex* vertex = nullptr;
        ASSERT_EQ(owner->openVertex(vertex, each->objectId(), AcDb::kForRead), Acad::eOk);
        const AcGePoint3d world = owner->vertexPosition(*vertex);
        met += shapes::text(qx::shape::Box{world, vertex->position()}) + "; ";
        vertex->close();
    }
    each->step();
    EXPECT_TRUE(each->done());
    EXPECT_EQ(met, "1..1 1..1 2..2; 4..4 5..5 2..2; ");

    AcDb2dVertex* vertex = nullptr;
    EXPECT_EQ(owner->openVertex(vertex, idOf(*drawing, header), AcDb::kForRead), Acad::eInvalidInput);
    EXPECT_EQ(owner->openVertex(vertex, idOf(*drawing, firstVertex + 1), AcDb::kForRead), Acad::eWasErased);
    AcDb3dPolylineVertex* inSpace = nullptr;
    EXPECT_EQ(acdbOpenObject(inSpace, idOf(*drawing, firstVertex)), Acad::eNotThatKindOfClass);
    AcDbExtents nothing;
    AcDbObjectPointer<AcDb2dVertex> first{idOf(*drawing, firstVertex)};
    EXPECT_EQ(first->getGeomExtents(nothing), Acad::eNotApplicable);
    EXPECT_EQ(extents(*drawing, header), "1..4 1..5 2..2") << "without the erased vertex";
}

TEST(Polylines, standStillWhileAVertexIsOpenForWriting) {
    const auto drawing = read({.entities = polyline(triangle)});
    const std::string before = drawing->toBytes();
    AcDbObjectPointer<AcDb2dVertex> vertex{idOf(*drawing, firstVertex + 2), AcDb::kForWrite};
    EXPECT_EQ(vertex->transformBy(shift(1, 0)), Acad::eMustOpenThruOwner);
    EXPECT_EQ(move(*drawing, header, shift(1, 0)), Acad::eSubentitiesStillOpen);
    EXPECT_EQ(drawing->toBytes(), before);
    vertex.close();
    EXPECT_EQ(move(*drawing, header, shift(1, 0)), Acad::eOk);
}

TEST(Polylines, lockTheirVerticesByTheirOwnLayer) {
    std::vector<std::string> locked = polyline("8 LOCKED|70 0; 8 0|10 0.0"),
                             free = polyline("8 0|70 0; 8 LOCKED|10 0.0");
    for (auto* snippets : {&locked, &free}) {
        const auto drawing = read({.entities = *snippets});
        const Acad::ErrorStatus expected = snippets == &locked ? Acad::eOnLockedLayer : Acad::eOk;
        EXPECT_EQ(move(*drawing, header, shift(1, 0)), expected);
        AcDbObjectPointer<AcDb2dVertex> vertex{idOf(*drawing, firstVertex), AcDb::kForWrite};
        EXPECT_EQ(vertex.openStatus(), expected);
    }
}

TEST(Polylines, takeTheirPartsAlongWhenErased) {
    DrawingText text{.entities = polyline(triangle)};
    const Handle reference = text.add("INSERT|66 1|2 B|10 0.0");
    for (const char* part : {"ATTRIB|10 0.0|40 1.0|1 a|2 T|70 0", "SEQEND", "POINT|10 1.0"}) text.add(part);
    const auto drawing = read(text);
    const auto expectErased = [&](bool isErased, const char* when) {
        for (const Handle each : {firstVertex, firstVertex + 2, reference + 1})
            EXPECT_EQ(idOf(*drawing, each).isErased(), isErased) << when << ' ' << each;
    };
    step(*drawing, [&] { erase(*drawing, header), erase(*drawing, reference); });
    expectErased(true, "erased");
    DrawingText rest{.entities = {"POINT|5 " + hex(reference + 3) + "|100 AcDbEntity|8 0|10 1.0"}};
    EXPECT_EQ(drawing->toBytes(), rest.bytes());
    drawing->history().undo();
    expectErased(false, "undone");
    EXPECT_EQ(drawing->toBytes(), text.bytes());
    drawing->history().redo();
    EXPECT_EQ(erase(*drawing, header, false), Acad::eOk);
    EXPECT_EQ(erase(*drawing, reference, false), Acad::eOk);
    expectErased(false, "brought back");
}

TEST(Curves, beginAndEnd) {
    const struct {
        std::vector<std::string> entities;
        const char* ends; ///< start and end, and whether it is closed
    } cases[] = {
        {{"LINE|10 1.0|20 2.0|11 3.0|21 4.0"}, "1,2 3,4 "},
        {{"CIRCLE|10 1.0|20 2.0|40 3.0"}, "4,2 4,2 closed"},
        {{"CIRCLE|10 1.0|20 2.0|40 3.0|210 0|220 0|230 -1"}, "-4,2 -4,2 closed"},
        {{"ARC|10 0.0|20 0.0|40 2.0|50 0.0|51 90.0"}, "2,0 0,2 "},
        {{"LWPOLYLINE|90 3|38 5.0|10 1.0|20 1.0|10 9.0|20 9.0|10 2.0|20 3.0"}, "1,1,5 2,3,5 "},
        {{"LWPOLYLINE|90 2|70 1|10 1.0|20 1.0|10 9.0|20 9.0"}, "1,1 1,1 closed"},
        {polyline("30 2.0|70 0; 10 1.0|20 1.0; 10 9.0|20 9.0; 10 2.0|20 3.0"), "1,1,2 2,3,2 "},
        {polyline("70 1; 10 1.0|20 1.0; 10 9.0|20 9.0"), "1,1 1,1 closed"},
        {polyline("70 9; 10 1.0|20 1.0; 10 9.0|20 9.0"), "1,1 1,1 closed"},
        {polyline("70 4; 10 9.0|70 16; 10 1.0|20 1.0|70 8; 10 2.0|20 3.0|70 8"), "1,1 2,3 "},
        {polyline("70 8; 10 1.0|20 1.0; 10 9.0|20 9.0; 10 2.0|20 3.0"), "1,1 2,3 "},
        {polyline("70 0"), "none "},
        {{"LWPOLYLINE|90 0|70 1"}, "none closed"},
    };
    for (const auto& each : cases) {
        const auto drawing = read({.entities = each.entities});
        AcDbObjectPointer<AcDbCurve> curve{idOf(*drawing, header)};
        AcGePoint3d start, end;
        const bool has = curve->getStartPoint(start) == Acad::eOk && curve->getEndPoint(end) == Acad::eOk;
        const std::string ends = has ? shapes::pointsText(std::array{start, end}) : "none ";
        EXPECT_EQ(ends + (curve->isClosed() ? "closed" : ""), each.ends) << each.entities[0];
    }
}

} // namespace
