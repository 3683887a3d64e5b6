#include "drawings/DrawingText.h"

#include <numbers>

using namespace drawings;
using namespace std::string_literals;
using qx::db::Drawing;

namespace {

constexpr double quarter = std::numbers::pi / 2;

AcGeMatrix3d turn(double angle) { return AcGeMatrix3d::rotation(angle, AcGeVector3d::kZAxis); }

AcGeMatrix3d mirrorX() {
    return AcGeMatrix3d{}.setCoordSystem({}, -AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                                         AcGeVector3d::kZAxis);
}
AcGeMatrix3d mirrorY() {
    return AcGeMatrix3d{}.setCoordSystem({}, AcGeVector3d::kXAxis, -AcGeVector3d::kYAxis,
                                         AcGeVector3d::kZAxis);
}
AcGeMatrix3d twice() { return AcGeMatrix3d::scaling(2); }
/// About Z, without the rounding of a sine, which differs between systems.
const AcGeMatrix3d quarterTurn = AcGeMatrix3d{}.setCoordSystem({0, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
const AcGeMatrix3d halfTurn = quarterTurn * quarterTurn;

/// What became of the entity's own groups: those behind the layer.
std::string groupsAfter(const std::string& snippet, const std::function<void(const Drawing&)>& change) {
    const std::string layer = "|8 0", before = DrawingText{.entities = {snippet}}.bytes();
    const auto drawing = read(before);
    change(*drawing);
    const std::string after = drawing->toBytes();
    const std::string head = tags(completed(snippet.substr(0, snippet.find('|')), DrawingText::firstEntity));
    const std::size_t begin = before.find(head) + head.size();
    const std::string tail = before.substr(before.find("  0\nENDSEC", begin));
    EXPECT_EQ(after.substr(0, begin), before.substr(0, begin)) << "what stands before";
    if (!after.ends_with(tail)) return "what stands behind is changed";
    return after.substr(begin, after.size() - tail.size() - begin);
}

struct PatchCase {
    const char* name;
    const char* snippet;
    AcGeMatrix3d motion;
    const char* groups; ///< afterwards
};

const char* const leftText = "TEXT|10 1.0|20 2.0|40 2.5|1 a";

const PatchCase cases[] = {
    // Lines and points, in world coordinates.
    {"line, only what differs", "LINE|10 1.000|20 2.00|30 0|11 +3.0|21 4|31 0.", shift(5, 0),
     "10 6.0|20 2.00|30 0|11 8.0|21 4|31 0."},
    {"line, blanks go with the value", "LINE|10   1.0|20 2.0|11 3.0 |21 4.0", shift(1, 0),
     "10 2.0|20 2.0|11 4.0|21 4.0"},
    {"line, shortest round trip", "LINE|10 0.1|20 1e5|11 3.0|21 4.0", shift(0.2, 0.1),
     "10 0.30000000000000004|20 100000.1|11 3.2|21 4.1"},
    {"line without z, moved up", "LINE|10 1.0|20 2.0|11 3.0|21 4.0", shift(0, 0, 7),
     "10 1.0|20 2.0|30 7.0|11 3.0|21 4.0|31 7.0"},
    {"line without y", "LINE|10 1.0|11 3.0|21 4.0", shift(0, 1), "10 1.0|20 1.0|30 0.0|11 3.0|21 5.0"},
    {"line, groups in another order", "LINE|11 3.0|21 4.0|20 2.0|10 1.0|39 1.0", shift(1, 1),
     "11 4.0|21 5.0|20 3.0|10 2.0|39 1.0"},
    {"line, a group twice: the last counts", "LINE|10 9.0|10 1.0|20 2.0|11 3.0|21 4.0", shift(1, 0),
     "10 9.0|10 2.0|20 2.0|11 4.0|21 4.0"},
    {"line, its comment stays", "LINE|999 10|10 1.0|20 2.0|11 3.0|21 4.0", shift(1, 0),
     "999 10|10 2.0|20 2.0|11 4.0|21 4.0"},
    {"line, application groups are nobody's", "LINE|102 {X|10 1.0|102 }|10 1.0|20 2.0|11 3.0|21 4.0",
     shift(1, 0), "102 {X|10 1.0|102 }|10 2.0|20 2.0|11 4.0|21 4.0"},
    {"line turned", "LINE|10 1.0|20 0.0|11 2.0|21 0.0|210 0|220 0|230 1", halfTurn,
     "10 -1.0|20 0.0|11 -2.0|21 0.0|210 0|220 0|230 1"},
    {"line, an embedded object's groups are its own",
     "LINE|10 1.0|20 2.0|11 3.0|21 4.0|101 Embedded Object|10 7.0", shift(1, 0, 1),
     "10 2.0|20 2.0|30 1.0|11 4.0|21 4.0|31 1.0|101 Embedded Object|10 7.0"},
    {"point, display angle turns", "POINT|10 1.0|20 0.0|50 350.0", quarterTurn, "10 0.0|20 1.0|50 80.0"},

    // Extended data.
    {"1010 stays, 1011 moves, directions stay",
     "LINE|10 1.0|20 2.0|11 3.0|21 4.0|1001 X|1010 1.0|1020 1.0|1030 0.0|1011 1.0|1021 1.0|1031 0.0|1012 "
     "1.0|1022 "
     "0.0|1032 0.0|1013 1.0|1023 0.0|1033 0.0|1040 1.0",
     shift(5, 0),
     "10 6.0|20 2.0|11 8.0|21 4.0|1001 X|1010 1.0|1020 1.0|1030 0.0|1011 6.0|1021 1.0|1031 0.0|1012 1.0|1022 "
     "0.0|1032 0.0|1013 1.0|1023 0.0|1033 0.0|1040 1.0"},
    {"1011 moves and turns, 1012 and 1013 turn",
     "POINT|10 0.0|20 0.0|50 0.0|1001 X|1011 0.0|1021 0.0|1031 0.0|1012 0.0|1022 2.0|1032 0.0|1013 0.0|1023 "
     "3.0|1033 0.0",
     AcGeMatrix3d{}.setCoordSystem({5, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}),
     "10 5.0|20 0.0|50 90.0|1001 X|1011 5.0|1021 0.0|1031 0.0|1012 -2.0|1022 0.0|1032 0.0|1013 -3.0|1023 "
     "0.0|1033 0.0"},
    {"missing groups stand before extended data",
     "LINE|10 1.0|20 2.0|11 3.0|21 4.0|1001 X|1011 0.0|1021 0.0|1031 0.0", shift(0, 0, 1),
     "10 1.0|20 2.0|30 1.0|11 3.0|21 4.0|31 1.0|1001 X|1011 0.0|1021 0.0|1031 1.0"},

    // Object coordinates.
    {"circle", "CIRCLE|10 1.0|20 2.0|30 0.0|40 5.0", shift(1, 1, 1), "10 2.0|20 3.0|30 1.0|40 5.0"},
    {"circle seen from below", "CIRCLE|10 1.0|20 2.0|30 3.0|40 5.0|210 0|220 0|230 -1.0", shift(10, 1, 1),
     "10 -9.0|20 3.0|30 2.0|40 5.0|210 0|220 0|230 -1.0"},
    {"circle tilted: the direction comes as a triple", "CIRCLE|10 0.0|20 0.0|40 5.0",
     AcGeMatrix3d{}.setCoordSystem({0, 0, 0}, {0, 0, -1}, {0, 1, 0}, {1, 0, 0}),
     "10 0.0|20 0.0|40 5.0|210 1.0|220 0.0|230 0.0"},
    {"arc turned", "ARC|10 0.0|20 0.0|40 5.0|100 AcDbArc|50 300.0|51 10.0", turn(quarter),
     "10 0.0|20 0.0|40 5.0|100 AcDbArc|50 30.0|51 100.0"},
    {"arc seen from below turns the other way",
     "ARC|10 0.0|20 0.0|40 5.0|210 0|220 0|230 -1|50 30.0|51 100.0", turn(quarter),
     "10 0.0|20 0.0|40 5.0|210 0|220 0|230 -1|50 300.0|51 10.0"},
    {"arc without angles moved: none come", "ARC|10 0.0|20 0.0|40 5.0", shift(1, 0), "10 1.0|20 0.0|40 5.0"},
    {"polyline", "LWPOLYLINE|90 2|70 0|43 0.5|10 1.0|20 1.0|42 0.25|10 2.0|20 1.0", shift(1, 0),
     "90 2|70 0|43 0.5|10 2.0|20 1.0|42 0.25|10 3.0|20 1.0"},
    {"polyline moved up: elevation", "LWPOLYLINE|90 1|70 0|10 1.0|20 1.0", shift(0, 0, 3),
     "90 1|70 0|38 3.0|10 1.0|20 1.0"},
    {"polyline seen from below", "LWPOLYLINE|90 1|70 0|38 2.0|10 1.0|20 1.0|210 0|220 0|230 -1",
     shift(1, 1, 1), "90 1|70 0|38 1.0|10 0.0|20 2.0|210 0|220 0|230 -1"},
    {"polyline's widths and ids", "LWPOLYLINE|90 1|70 1|10 1.0|20 1.0|40 1.0|41 2.0|91 7", shift(1, 0),
     "90 1|70 1|10 2.0|20 1.0|40 1.0|41 2.0|91 7"},

    {"a group that nothing stands before comes behind the class's marker",
     "CIRCLE|100 AcDbCircle|40 5.0|62 1", shift(1, 0), "100 AcDbCircle|10 1.0|20 0.0|30 0.0|40 5.0|62 1"},
    {"polyline, a vertex without y", "LWPOLYLINE|90 2|70 0|10 1.0|10 2.0|42 0.5", shift(0, 3),
     "90 2|70 0|10 1.0|20 3.0|10 2.0|20 3.0|42 0.5"},

    // Mirrored and scaled.
    {"circle mirrored is seen from below", "CIRCLE|10 1.00|20 2.00|40 5.00", mirrorX(),
     "10 1.00|20 2.00|40 5.00|210 0.0|220 0.0|230 -1.0"},
    {"circle mirrored back", "CIRCLE|10 1.00|20 2.00|40 5.00|210 0.00|220 0.0|230 -1.00", mirrorX(),
     "10 1.00|20 2.00|40 5.00|210 0.00|220 0.0|230 1.0"},
    {"arc mirrored across its own x axis: no angle changes", "ARC|10 0.0|20 0.0|40 5.0|50 -30.0|51 100.0",
     mirrorX(), "10 0.0|20 0.0|40 5.0|210 0.0|220 0.0|230 -1.0|50 -30.0|51 100.0"},
    {"arc mirrored the other way turns by half", "ARC|10 0.0|20 0.0|40 5.0|50 30.0|51 100.0", mirrorY(),
     "10 0.0|20 0.0|40 5.0|210 0.0|220 0.0|230 -1.0|50 210.0|51 280.0"},
    {"arc scaled", "ARC|39 0.5|10 1.0|20 0.0|40 5.0|50 30.00|51 100.0", twice(),
     "39 1.0|10 2.0|20 0.0|40 10.0|50 30.00|51 100.0"},
    {"tilted arc scaled: only lengths change",
     "ARC|10 0.0|20 0.0|30 0.0|40 5.0|210 0.1|220 0.2|230 0.97467943448089633|50 30.0|51 -1.0",
     AcGeMatrix3d::scaling(3),
     "10 0.0|20 0.0|30 0.0|40 15.0|210 0.1|220 0.2|230 0.97467943448089633|50 30.0|51 -1.0"},
    {"a normal without direction stays where Z would", "CIRCLE|10 1.0|20 0.0|40 1.0|210 0|220 0|230 0",
     twice(), "10 2.0|20 0.0|40 2.0|210 0|220 0|230 0"},
    {"thickness mirrored runs against the normal", "LINE|39 2.0|10 1.0|20 0.0|11 2.0|21 0.0", mirrorX(),
     "39 -2.0|10 -1.0|20 0.0|11 -2.0|21 0.0|210 0.0|220 0.0|230 -1.0"},
    {"polyline mirrored: bulges stay, the direction follows the vertices",
     "LWPOLYLINE|90 2|70 0|43 0.5|10 1.0|20 1.0|42 0.25|10 2.0|20 1.0|91 7", mirrorX(),
     "90 2|70 0|43 0.5|10 1.0|20 1.0|42 0.25|10 2.0|20 1.0|210 0.0|220 0.0|230 -1.0|91 7"},
    {"polyline scaled with its widths",
     "LWPOLYLINE|90 2|38 1.0|43 0.5|10 1.0|20 1.0|42 0.25|10 2.0|20 1.0|40 0.0|41 3.0", twice(),
     "90 2|38 2.0|43 1.0|10 2.0|20 2.0|42 0.25|10 4.0|20 2.0|40 0.0|41 6.0"},
    {"text scaled", leftText, twice(), "10 2.0|20 4.0|40 5.0|1 a"},
    {"insert scaled: missing scales come", "INSERT|2 B|10 1.0|20 2.0|41 0.5", twice(),
     "2 B|10 2.0|20 4.0|41 1.0|42 2.0|43 2.0"},
    {"insert mirrored: what stands up in it still does", "INSERT|2 B|10 1.0|20 2.0", mirrorX(),
     "2 B|10 1.0|20 2.0|43 -1.0|210 0.0|220 0.0|230 -1.0"},
    {"extended data mirrored and scaled",
     "POINT|10 0.0|20 0.0|1001 X|1011 1.0|1021 0.0|1031 0.0|1012 1.0|1022 1.0|1032 0.0",
     AcGeMatrix3d::translation({5, 0, 0}) * twice(),
     "10 5.0|20 0.0|1001 X|1011 7.0|1021 0.0|1031 0.0|1012 2.0|1022 2.0|1032 0.0"},
    {"an integer with a point stays", "LINE|62 1.5|10 1.0|20 2.0|11 3.0|21 4.0", twice(),
     "62 1.5|10 2.0|20 4.0|11 6.0|21 8.0"},
    {"what a turn does not reach keeps its digits",
     "ARC|10 1.0|20 0.0|30 0.10000000000000001|40 2.50|50 350.0|51 10.0|210 0.0|220 0.0|230 2.0", quarterTurn,
     "10 0.0|20 1.0|30 0.10000000000000001|40 2.50|50 80.0|51 100.0|210 0.0|220 0.0|230 "
     "2.0"},

    // Text.
    {"left text gets no second point", leftText, shift(1, 0), "10 2.0|20 2.0|40 2.5|1 a"},
    {"left text, its second point stays", "TEXT|10 1.0|20 2.0|40 2.5|1 a|72 0|11 0.0|21 0.0|73 0",
     shift(1, 0), "10 2.0|20 2.0|40 2.5|1 a|72 0|11 0.0|21 0.0|73 0"},
    {"text without z, moved up", leftText, shift(0, 0, 1), "10 1.0|20 2.0|30 1.0|40 2.5|1 a"},
    {"left text turned: angle comes behind the string", "TEXT|10 0.0|20 0.0|40 2.5|1 a|7 STD|100 AcDbText",
     turn(quarter), "10 0.0|20 0.0|40 2.5|1 a|50 90.0|7 STD|100 AcDbText"},
    {"centred text moves both points", "TEXT|10 1.0|20 2.0|40 2.5|1 a|72 1|11 3.0|21 2.0", shift(1, 1),
     "10 2.0|20 3.0|40 2.5|1 a|72 1|11 4.0|21 3.0"},
    {"text justified only up and down moves both", "TEXT|10 1.0|20 2.0|40 2.5|1 a|11 1.0|21 4.0|73 2",
     shift(1, 1), "10 2.0|20 3.0|40 2.5|1 a|11 2.0|21 5.0|73 2"},
    {"justified text without its point gets one", "TEXT|10 1.0|20 2.0|40 2.5|1 a|72 2", shift(1, 1),
     "10 2.0|20 3.0|40 2.5|1 a|72 2|11 1.0|21 1.0|31 0.0"},
    {"text seen from below", "TEXT|10 1.0|20 2.0|40 2.5|1 a|72 2|11 3.0|21 2.0|210 0|220 0|230 -1",
     shift(1, 0), "10 0.0|20 2.0|40 2.5|1 a|72 2|11 2.0|21 2.0|210 0|220 0|230 -1"},

    // Multiline text and ellipses.
    {"multiline text",
     "MTEXT|10 1.0|20 2.0|40 2.50|41 9.0|71 1|3 a|1 b|7 S|11 1.0|21 0.0|31 0.0|42 3.0|73 1|44 1.0",
     shift(5, 0), "10 6.0|20 2.0|40 2.50|41 9.0|71 1|3 a|1 b|7 S|11 1.0|21 0.0|31 0.0|42 3.0|73 1|44 1.0"},
    {"multiline text by an angle: only that turns", "MTEXT|10 0.0|20 0.0|40 2.5|1 a|7 S|50 300.0|73 1",
     turn(quarter), "10 0.0|20 0.0|40 2.5|1 a|7 S|50 30.0|73 1"},
    {"multiline text by a direction: only that turns", "MTEXT|10 0.0|20 0.0|40 2.5|1 a|11 0.0|21 2.0",
     halfTurn, "10 0.0|20 0.0|40 2.5|1 a|11 0.0|21 -2.0"},
    {"multiline text by neither gets a direction", "MTEXT|10 0.0|20 0.0|40 2.5|1 a|7 S", quarterTurn,
     "10 0.0|20 0.0|40 2.5|1 a|11 0.0|21 1.0|31 0.0|7 S"},
    {"multiline text by both: both turn", "MTEXT|10 0.0|20 0.0|40 2.5|1 a|11 1.0|21 0.0|50 0.0", quarterTurn,
     "10 0.0|20 0.0|40 2.5|1 a|11 0.0|21 1.0|50 90.0"},
    {"multiline text seen from below, by an angle",
     "MTEXT|10 0.0|20 0.0|40 2.5|1 a|50 100.0|210 0|220 0|230 -1", quarterTurn,
     "10 0.0|20 0.0|40 2.5|1 a|50 10.0|210 0|220 0|230 -1"},
    {"multiline text scaled: height and width", "MTEXT|10 1.0|20 0.0|40 2.5|41 9.0|1 a|11 1.0|50 0.0|44 1.5",
     AcGeMatrix3d::scaling(2), "10 2.0|20 0.0|40 5.0|41 18.0|1 a|11 2.0|50 0.0|44 1.5"},
    {"ellipse moved", "ELLIPSE|10 1.0|20 2.0|11 3.0|21 0.0|40 0.5|41 0.0|42 6.28", shift(1, 0, 1),
     "10 2.0|20 2.0|30 1.0|11 3.0|21 0.0|40 0.5|41 0.0|42 6.28"},
    {"ellipse turned", "ELLIPSE|10 1.0|20 0.0|11 3.0|21 0.0|210 0|220 0|230 1.00|40 0.5|41 0.0|42 6.28",
     quarterTurn, "10 0.0|20 1.0|11 0.0|21 3.0|210 0|220 0|230 1.00|40 0.5|41 0.0|42 6.28"},
    {"ellipse scaled", "ELLIPSE|10 1.0|20 0.0|11 3.0|21 0.0|40 0.5", AcGeMatrix3d::scaling(2),
     "10 2.0|20 0.0|11 6.0|21 0.0|40 0.5"},

    // Block references.
    {"insert", "INSERT|2 B|10 1.0|20 2.0|41 2.0|42 2.0|50 0", shift(1, 0),
     "2 B|10 2.0|20 2.0|41 2.0|42 2.0|50 0"},
    {"insert turned: angle comes behind the scales", "INSERT|2 B|10 0.0|20 0.0|41 2.0|42 2.0|43 2.0",
     turn(-quarter), "2 B|10 0.0|20 0.0|41 2.0|42 2.0|43 2.0|50 270.0"},
    {"insert seen from below", "INSERT|2 B|10 1.0|20 2.0|50 10.0|210 0|220 0|230 -1", shift(3, 1, 1),
     "2 B|10 -2.0|20 3.0|30 -1.0|50 10.0|210 0|220 0|230 -1"},
};

TEST(Patches, rewriteOnlyWhatDiffers) {
    for (const PatchCase& each : cases) {
        const auto change = [&](const Drawing& drawing) {
            EXPECT_EQ(move(drawing, DrawingText::firstEntity, each.motion), Acad::eOk) << each.name;
        };
        EXPECT_EQ(groupsAfter(each.snippet, change), tags(each.groups)) << each.name;
    }
}

TEST(Patches, colour) {
    const struct {
        const char* name;
        const char* snippet;
        Adesk::UInt16 colour;
        const char* groups;
    } colours[] = {
        {"as it was", "POINT|62 007|10 0.0|20 0.0", 7, "62 007|10 0.0|20 0.0"},
        {"another", "POINT|62 7|10 0.0|20 0.0", 1, "62      1|10 0.0|20 0.0"},
        {"by layer is what a missing one means", "POINT|10 0.0|20 0.0", 256, "10 0.0|20 0.0"},
        {"none before: behind the layer", "POINT|10 0.0|20 0.0", 1, "62      1|10 0.0|20 0.0"},
        {"of a class that is only kept", "SOLID|62 7|10 0.0", 3, "62      3|10 0.0"},
    };
    for (const auto& each : colours) {
        const auto change = [&](const Drawing& drawing) {
            AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, DrawingText::firstEntity), AcDb::kForWrite};
            EXPECT_EQ(entity->setColorIndex(each.colour), Acad::eOk);
            EXPECT_EQ(entity->setColorIndex(257), Acad::eBadColorIndex);
            EXPECT_EQ(entity->colorIndex(), each.colour);
        };
        EXPECT_EQ(groupsAfter(each.snippet, change), tags(each.groups)) << each.name;
    }
}

TEST(Patches, followTheLineEndsOfTheDrawing) {
    DrawingText text{.entities = {"LINE|10 1.0|20 2.0|11 3.0|21 4.0"}, .lineEnd = "\r\n"};
    const auto drawing = read(text.bytes());
    EXPECT_EQ(move(*drawing, 0x100, shift(0, 0, 1)), Acad::eOk);
    text.entities = {"LINE|10 1.0|20 2.0|30 1.0|11 3.0|21 4.0|31 1.0"};
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

TEST(Patches, attributesMoveWithTheirReference) {
    DrawingText text{.entities = {"INSERT|66 1|2 B|10 1.0|20 2.0", "ATTRIB|10 1.0|20 3.0|40 1.0|1 a|2 T|70 0",
                                  "ATTRIB|10 0.0|20 0.0|40 1.0|1 b|2 U|70 1|72 1|11 5.0|21 5.0|74 2",
                                  "SEQEND", "ATTRIB|10 9.0|20 9.0|40 1.0|1 nobody's|2 T|70 0"}};
    const auto drawing = read(text.bytes());
    EXPECT_EQ(move(*drawing, 0x100, shift(10, 0)), Acad::eOk);
    text.entities = {"INSERT|66 1|2 B|10 11.0|20 2.0", "ATTRIB|10 11.0|20 3.0|40 1.0|1 a|2 T|70 0",
                     "ATTRIB|10 10.0|20 0.0|40 1.0|1 b|2 U|70 1|72 1|11 15.0|21 5.0|74 2", "SEQEND",
                     "ATTRIB|10 9.0|20 9.0|40 1.0|1 nobody's|2 T|70 0"};
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
