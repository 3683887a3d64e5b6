#include "drawings/DrawingText.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

AcGeMatrix3d axes(const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
    return AcGeMatrix3d{}.setCoordSystem({}, x, y, z);
}
const AcGeMatrix3d twice = AcGeMatrix3d::scaling(2);
// Turns without the rounding of a sine, which differs between systems.
const AcGeMatrix3d quarter = axes({0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
const AcGeMatrix3d half = axes({-1, 0, 0}, {0, -1, 0}, {0, 0, 1});
const AcGeMatrix3d mirrorX = axes({-1, 0, 0}, {0, 1, 0}, {0, 0, 1});
const AcGeMatrix3d mirrorY = axes({1, 0, 0}, {0, -1, 0}, {0, 0, 1});
const AcGeMatrix3d zToX = axes({0, 0, -1}, {0, 1, 0}, {1, 0, 0});

DrawingText drawingOf(const std::string& marked, Marked state, const char* lineEnd) {
    DrawingText text{.lineEnd = lineEnd};
    text.addEach(as(state, marked));
    return text;
}

/// The change makes what is marked, and nothing else; undoing it gives the bytes back.
void expectPatch(const std::string& marked, const std::function<void(const Drawing&)>& change) {
    for (const char* lineEnd : {"\n", "\r\n"}) {
        const auto drawing = read(drawingOf(marked, Marked::before, lineEnd));
        step(*drawing, [&] { change(*drawing); });
        EXPECT_EQ(drawing->toBytes(), drawingOf(marked, Marked::after, lineEnd).bytes()) << marked;
        drawing->history().undo();
        EXPECT_EQ(drawing->toBytes(), drawingOf(marked, Marked::before, lineEnd).bytes()) << marked;
    }
}

struct PatchCase {
    AcGeMatrix3d motion;
    const char* marked;
};

const PatchCase cases[] = {
    // Lines and points, in world coordinates.
    {shift(5, 0), "LINE|10 1.000>6.0|20 2.00|30 0|11 +3.0>8.0|21 4|31 0."},
    {shift(1, 0), "LINE|10   1.0>2.0|20 2.0|11 3.0 >4.0|21 4.0"},
    {shift(0.2, 0.1), "LINE|10 0.1>0.30000000000000004|20 1e5>100000.1|11 3.0>3.2|21 4.0>4.1"},
    {shift(0, 0, 7), "LINE|10 1.0|20 2.0|>30 7.0|11 3.0|21 4.0|>31 7.0"},
    {shift(0, 1), "LINE|10 1.0|>20 1.0|>30 0.0|11 3.0|21 4.0>5.0"},
    // Line, a group twice: the last counts.
    {shift(1, 0), "LINE|10 9.0|10 1.0>2.0|20 2.0|11 3.0>4.0|21 4.0"},
    // Line, application groups are nobody's.
    {shift(1, 0), "LINE|102 {X|10 1.0|102 }|10 1.0>2.0|20 2.0|11 3.0>4.0|21 4.0"},
    {shift(1, 0),
     "LINE|10 1.0>2.0|20 2.0|11 3.0>4.0|21 4.0|102 {X|10 9.0|102 {Y|102 A|102 }|10 9.0|102 }|102 }"},
    {half, "LINE|10 1.0>-1.0|20 0.0|11 2.0>-2.0|21 0.0"},
    // Line, an embedded object's groups are its own.
    {shift(1, 0, 1), "LINE|10 1.0>2.0|20 2.0|>30 1.0|11 3.0>4.0|21 4.0|>31 1.0|101 Embedded Object|10 7.0"},
    // Extended data.
    // 1010 stays, 1011 moves, directions stay.
    {shift(5, 0),
     "LINE|10 1.0>6.0|11 3.0>8.0|1001 X|1010 1.0|1020 1.0|1011 1.0>6.0|1021 1.0|1012 1.0|1013 1.0"},
    // 1011 moves and turns, 1012 and 1013 turn.
    {shift(5, 0) * quarter,
     "POINT|10 0.0>5.0|50 0.0>90.0|1001 X|1011 0.0>5.0|1012 0.0>-2.0|1022 2.0>0.0|1013 0.0|1023 0.0"},
    // Behind a 1013 that turns, and behind an embedded object, a 1011 still moves.
    {shift(5, 0) * quarter,
     "POINT|10 0.0>5.0|50 0.0>90.0|1001 X|1013 2.0>0.0|1023 0.0>2.0|1011 1.0>5.0|1021 0.0>1.0"},
    {shift(5, 0), "MTEXT|10 1.0>6.0|40 2.5|1 a|101 Embedded Object|10 7.0|1001 X|1011 0.0>5.0|1021 1.0"},
    // An embedded object says once more where its text is and where the lines run.
    {shift(5, 0) * quarter,
     "MTEXT|10 2.0>5.0|20 0.0>2.0|40 2.5|1 a|11 1.0>0.0|21 0.0>1.0|101 Embedded Object|70 1|10 1.0>0.0"
     "|20 0.0>1.0|30 0.0|11 2.0>5.0|21 0.0>2.0|31 0.0|40 9.0|72 1|73 0|1001 X|1011 0.0>5.0|1040 9.0"},
    {twice, "MTEXT|10 1.0>2.0|20 0.0|40 2.5>5.0|1 a|11 1.0>2.0|101 Embedded Object|10 1.0>2.0|20 0.0"
            "|11 1.0>2.0|21 0.0|40 9.0>18.0|41 0.0|42 1.0>2.0|43 3.0>6.0|71 2|44 9.0>18.0|45 1.0>2.0|46 0.0"},
    {shift(5, 0), "MTEXT|10 1.0>6.0|40 2.5|1 a|101 Embedded Object|11 x|21 1.0|1001 X|1011 0.0>5.0"},
    // Missing groups stand before extended data.
    {shift(0, 0, 1),
     "LINE|10 1.0|20 2.0|>30 1.0|11 3.0|21 4.0|>31 1.0|1001 X|1011 0.0|1021 0.0|1031 0.0>1.0"},
    // Object coordinates.
    {shift(10, 1, 1), "CIRCLE|10 1.0>-9.0|20 2.0>3.0|30 3.0>2.0|40 5.0|210 0|220 0|230 -1.0"},
    // Circle tilted: the direction comes as a triple.
    {zToX, "CIRCLE|10 0.0|20 0.0|40 5.0|>210 1.0|>220 0.0|>230 0.0"},
    // Arc seen from below turns the other way.
    {quarter, "ARC|10 0.0|20 0.0|40 5.0|210 0|220 0|230 -1|50 30.0>300.0|51 100.0>10.0"},
    // Arc without angles moved: none come.
    {shift(1, 0), "ARC|10 0.0>1.0|20 0.0|40 5.0"},
    {shift(0, 0, 3), "LWPOLYLINE|90 1|70 0|>38 3.0|10 1.0|20 1.0"},
    // A group that nothing stands before comes behind the class's marker.
    {shift(1, 0), "CIRCLE|100 AcDbCircle|>10 1.0|>20 0.0|>30 0.0|40 5.0|62 1"},
    {shift(0, 3), "LWPOLYLINE|90 2|70 0|10 1.0|>20 3.0|10 2.0|>20 3.0|42 0.5"},
    // Mirrored and scaled.
    {mirrorX, "CIRCLE|10 1.00|20 2.00|40 5.00|>210 0.0|>220 0.0|>230 -1.0"},
    {mirrorX, "CIRCLE|10 1.00|20 2.00|40 5.00|210 0.00|220 0.0|230 -1.00>1.0"},
    // Arc mirrored across its own x axis: no angle changes.
    {mirrorX, "ARC|10 0.0|20 0.0|40 5.0|>210 0.0|>220 0.0|>230 -1.0|50 -30.0|51 100.0"},
    // Arc mirrored the other way turns by half.
    {mirrorY, "ARC|10 0.0|20 0.0|40 5.0|>210 0.0|>220 0.0|>230 -1.0|50 30.0>210.0|51 100.0>280.0"},
    {twice, "ARC|39 0.5>1.0|10 1.0>2.0|20 0.0|40 5.0>10.0|50 30.00|51 100.0"},
    // Tilted arc scaled: only lengths change.
    {twice, "ARC|10 0.0|20 0.0|40 5.0>10.0|210 0.1|220 0.2|230 0.97467943448089633|50 30.0|51 -1.0"},
    // A normal without direction stays where Z would.
    {twice, "CIRCLE|10 1.0>2.0|20 0.0|40 1.0>2.0|210 0|220 0|230 0"},
    // Thickness mirrored runs against the normal.
    {mirrorX, "LINE|39 2.0>-2.0|10 1.0>-1.0|20 0.0|11 2.0>-2.0|21 0.0|>210 0.0|>220 0.0|>230 -1.0"},
    // Polyline mirrored: bulges stay, the direction follows the vertices.
    {mirrorX, "LWPOLYLINE|90 2|43 0.5|10 1.0|20 1.0|42 0.25|10 2.0|20 1.0|>210 0.0|>220 0.0|>230 -1.0|91 7"},
    {twice, "LWPOLYLINE|90 1|38 1.0>2.0|43 0.5>1.0|10 2.0>4.0|20 1.0>2.0|42 0.25|40 0.0|41 3.0>6.0"},
    {twice, "INSERT|2 B|10 1.0>2.0|20 2.0>4.0|41 0.5>1.0|>42 2.0|>43 2.0"},
    // Insert mirrored: what stands up in it still does.
    {mirrorX, "INSERT|2 B|10 1.0|20 2.0|>43 -1.0|>210 0.0|>220 0.0|>230 -1.0"},
    {shift(5, 0) * twice, "POINT|10 0.0>5.0|20 0.0|1001 X|1011 1.0>7.0|1021 0.0|1012 1.0>2.0|1022 1.0>2.0"},
    // An integer with a point stays.
    {twice, "LINE|62 1.5|10 1.0>2.0|20 2.0>4.0|11 3.0>6.0|21 4.0>8.0"},
    // What a turn does not reach keeps its digits.
    {quarter, "ARC|10 1.0>0.0|20 0.0>1.0|30 0.10000000000000001|40 2.50|50 350.0>80.0|51 1.0>91.0|230 2.0"},
    // Text.
    // Left text, its second point stays.
    {shift(1, 0), "TEXT|10 1.0>2.0|20 2.0|40 2.5|1 a|72 0|11 0.0|21 0.0|73 0"},
    // Left text turned: angle comes behind the string.
    {quarter, "TEXT|10 0.0|20 0.0|40 2.5|1 a|>50 90.0|7 STD|100 AcDbText"},
    {shift(1, 1), "TEXT|10 1.0>2.0|20 2.0>3.0|40 2.5|1 a|72 1|11 3.0>4.0|21 2.0>3.0"},
    // Justified text without its point gets one.
    {shift(1, 1), "TEXT|10 1.0>2.0|20 2.0>3.0|40 2.5|1 a|72 2|>11 1.0|>21 1.0|>31 0.0"},
    // Areas: a fourth corner only where the file has one.
    {shift(1, 0), "SOLID|10 1.0>2.0|20 2.0|11 3.0>4.0|21 2.0|12 1.0>2.0|22 4.0|13 3.0>4.0|23 4.0"},
    {shift(0, 0, 3), "TRACE|10 1.0|20 2.0|>30 3.0|11 3.0|>21 0.0|>31 3.0|12 1.0|22 4.0|>32 3.0"},
    // Rays and construction lines turn, and stay unit vectors.
    {shift(5, 0) * twice, "RAY|10 1.0>7.0|20 2.0>4.0|11 0.6|21 0.80"},
    {quarter, "XLINE|10 1.0>0.0|20 0.0>1.0|11 1.0>0.0|21 0.0>1.0"},
    {quarter, "POINT|10 1.0>0.0|20 0.0>1.0|50 350.0>80.0"},
    {shift(1, 1, 1), "LWPOLYLINE|90 1|70 0|38 2.0>1.0|10 1.0>0.0|20 1.0>2.0|210 0|220 0|230 -1"},
    {shift(1, 1), "TEXT|10 1.0>2.0|20 2.0>3.0|40 2.5|1 a|11 1.0>2.0|21 4.0>5.0|73 2"},
    {shift(1, 0), "TEXT|10 1.0>0.0|20 2.0|40 2.5|1 a|72 2|11 3.0>2.0|21 2.0|210 0|220 0|230 -1"},
    {shift(1, 0), "SOLID|10 1.0>0.0|20 2.0|11 3.0>2.0|12 1.0>0.0|22 4.0|210 0|220 0|230 -1"},
    {mirrorX, "3DFACE|10 1.0>-1.0|20 2.0|11 3.0>-3.0|12 1.0>-1.0|22 4.0|70 5"},
    {shift(1, 1),
     "ATTDEF|10 1.0>2.0|20 2.0>3.0|40 2.5|1 a|3 p|2 T|70 0|73 4|72 1|11 3.0>4.0|21 2.0>3.0|74 1"},
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|50 100.0>10.0|210 0|220 0|230 -1"},
    {quarter,
     "ELLIPSE|10 1.0>0.0|20 0.0>1.0|11 3.0>0.0|21 0.0>3.0|210 0|220 0|230 1.00|40 0.5|41 0.0|42 6.28"},
    {shift(3, 1, 1), "INSERT|2 B|10 1.0>-2.0|20 2.0>3.0|>30 -1.0|50 10.0|210 0|220 0|230 -1"},
    {shift(1, 0), "POLYLINE|66 1|10 0.0|20 0.0|30 2.0|70 0; VERTEX|10 1.00>2.0|20 1.0|30 2.0; VERTEX|10 "
                  "4.0>5.0|20 1.0|30 2.0|42 1.0; SEQEND"},
    {shift(1, 1, 1),
     "POLYLINE|66 1|30 2.0>1.0|70 0|210 0|220 0|230 -1; VERTEX|10 1.0>0.0|20 1.0>2.0|30 2.0>1.0; SEQEND"},
    {mirrorX, "POLYLINE|66 1|30 2.0>-2.0|70 0|>210 0.0|>220 0.0|>230 -1.0; VERTEX|10 1.0|20 1.0|30 "
              "2.0>-2.0|42 0.5; SEQEND"},
    {shift(1, 0, 2), "POLYLINE|66 1|10 0.0|20 0.0|30 0.0|70 8; VERTEX|10 1.0>2.0|20 1.0|30 7.0>9.0|70 32; "
                     "VERTEX|10 4.0>5.0|20 3.0|>30 2.0|70 32; SEQEND"},
    {mirrorX, "POLYLINE|66 1|70 8; VERTEX|10 1.0>-1.0|20 1.0|30 7.0|70 32; SEQEND"},
    {shift(1, 0), "POLYLINE|66 1|70 12; VERTEX|10 1.0>2.0|70 48; VERTEX|10 4.0>5.0|70 40; SEQEND"},
    {shift(1, 0, 1),
     "POLYLINE|66 1|10 0.0|20 0.0|30 0.0|70 16|71 1|72 2; VERTEX|10 1.0>2.0|20 0.0|>30 1.0|70 64; "
     "VERTEX|10 2.0>3.0|20 0.0|>30 1.0|70 64; SEQEND"},
    {shift(1, 0),
     "SPLINE|70 0|71 1|12 1.0|22 0.0|40 0.0|40 0|40 1|40 1.0|41 1|41 2|10 1.0>2.0|20 2.00|10 3.0>4.0|20 4.0"},
    {shift(1, 0),
     "LEADER|71 1|72 0|76 2|10 1.0>2.0|20 2.0|30 0.0|10 3.0>4.0|20 4.0|30 0.0|340 FF|211 1.0|221 "
     "0.0|231 0.0|212 0.0|222 0.0|232 0.0|213 5.0|223 0.0|233 0.0"},
    {mirrorX,
     "HATCH|10 0.0|20 0.0|30 1.0>-1.0|>210 0.0|>220 0.0|>230 -1.0|91 1|92 3|72 1|73 1|93 2|10 1.0|20 "
     "2.0|42 0.5|10 3.0|20 2.0|42 1.0|97 0"},
    // Multiline text.
    {shift(5, 0), "MTEXT|10 1.0>6.0|20 2.0|40 2.50|41 9.0|71 1|3 a|1 b|11 1.0|21 0.0|42 3.0|73 1|44 1.0"},
    // Multiline text by an angle: only that turns.
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|7 S|50 300.0>30.0|73 1"},
    // Multiline text by a direction: only that turns.
    {half, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|11 0.0|21 2.0>-2.0"},
    // Multiline text by neither gets a direction.
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|7 S|>11 0.0|>21 1.0|>31 0.0"},
    // Multiline text by both: both turn.
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|210 0|220 0|230 -1|>11 0.0|>21 1.0|>31 0.0"},
    // World x along the normal is no direction.
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|210 1.0>0.0|220 0.0>1.0|230 0.0"},
    {quarter, "MTEXT|10 0.0|20 0.0|40 2.5|1 a|11 1.0>0.0|21 0.0>1.0|50 0.0>90.0"},
    {twice, "MTEXT|10 1.0>2.0|20 0.0|40 2.5>5.0|41 9.0>18.0|1 a|11 1.0>2.0|50 0.0|44 1.5"},
    // Block references.
    {quarter.inverse(), "INSERT|2 B|10 0.0|20 0.0|41 2.0|42 2.0|43 2.0|>50 270.0"},
    // Old polylines and attributes.
    // Moved up: the header's point is only its height.
    {shift(1, 1, 1),
     "POLYLINE|66 1|10 0.0|20 0.0|30 2.0>3.0|70 0; VERTEX|10 1.0>2.0|20 1.0>2.0|30 2.0>3.0; SEQEND"},
    {shift(0, 0, 3), "POLYLINE|66 1|10 0.0|20 0.0|>30 3.0|70 0; VERTEX|10 1.0|20 1.0|>30 3.0|42 0.5; SEQEND"},
    {twice, "POLYLINE|66 1|30 2.0>4.0|70 0|40 0.5>1.0|41 0.5>1.0; VERTEX|10 1.0>2.0|20 1.0>2.0|30 2.0>4.0|40 "
            "0.1>0.2|41 0.2>0.4|42 1.0; SEQEND"},
    // A tangent turns where there is one.
    {quarter,
     "POLYLINE|66 1|70 2; VERTEX|10 0.0|20 0.0|50 0.0>90.0|70 2; VERTEX|10 0.0|20 0.0|50 0.0|70 0; SEQEND"},
    {twice, "INSERT|2 B|10 1.0>2.0|20 0.0|41 1.0>2.0|42 1.0>2.0|43 1.0>2.0|70 3|44 5.0>10.0"},
    // Control vertices of a spline move, too; faces of a mesh have no place.
    {shift(1, 0), "POLYLINE|66 1|70 4; VERTEX|10 1.0>2.0|70 16; VERTEX|10 4.0>5.0|20 1.0|70 8; SEQEND"},
    {shift(1, 0), "POLYLINE|66 1|70 64; VERTEX|10 1.0>2.0|70 192; VERTEX|10 0.0|20 0.0|70 128|71 1; SEQEND"},
    // Splines through points: these move, tangents turn.
    {quarter, "SPLINE|71 3|12 1.0>0.0|22 0.0>1.0|32 0.0|11 1.0>0.0|21 0.0>1.0|31 5.0|11 3.0>0.0|21 0.0>3.0"},
    {twice, "SPLINE|71 3|12 1.0|22 0.0|11 1.0>2.0|21 0.0|11 3.0>6.0|21 0.0"},
    // Spline without heights lifted: they come.
    {shift(0, 0, 2), "SPLINE|71 3|11 1.0|21 0.0|>31 2.0|11 3.0|>31 2.0"},
    {twice, "LEADER|72 0|10 1.0>2.0|20 0.0|30 0.0|211 1.0|221 0.0|231 0.0|213 5.0>10.0|223 0.0|233 0.0"},
    {quarter, "LEADER|72 0|10 1.0>0.0|20 0.0>1.0|30 0.0|>211 0.0|>221 1.0|>231 0.0|340 FF"},
    {quarter, "LEADER|72 0|10 1.0>0.0|20 0.0>1.0|30 0.0|211 1.0>0.0|221 0.0>1.0|231 0.0|213 5.0>0.0|223 "
              "0.0>5.0|233 0.0"},
    // What all entities may have before a hatch's own groups is not its boundary.
    {shift(1, 0), "HATCH|92 2|310 AB|100 AcDbHatch|10 0.0|20 0.0|30 0.0|91 1|92 2|93 1|10 1.0>2.0|20 1.0"},
    // Hatches: the elevation point moves in z only; boundary, pattern base and seeds move.
    {shift(1, 0, 2),
     "HATCH|10 0.0|20 0.0|30 0.0>2.0|2 X|91 1|92 1|93 2|72 1|10 1.0>2.0|20 0.0|11 3.0>4.0|21 "
     "0.0|72 2|10 1.0>2.0|20 1.0|40 2.0|50 0|51 90|73 1|97 0|75 0|76 1|52 30|41 2|77 0|78 1|53 "
     "30|43 1.0>2.0|44 0|45 1|46 2|79 1|49 0.5|98 1|10 1.0>2.0|20 0.0"},
    {quarter,
     "HATCH|10 0.0|20 0.0|30 0.0|91 1|92 1|93 2|72 2|10 1.0>0.0|20 0.0>1.0|40 2.0|50 0>90.0|51 "
     "300>390.0|73 1|72 2|10 0.0|20 0.0|40 2.0|50 10>-80.0|51 90>0.0|73 0|72 3|10 0.0|20 0.0|11 "
     "1.0>0.0|21 0.0>1.0|40 0.5|50 10|51 20|73 1|97 0|75 0|76 1|52 350>80.0|41 2|53 350>80.0|43 "
     "1.0>0.0|44 0.0>1.0|45 2.0>0.0|46 0.0>2.0|79 0|47 0.1|98 0|450 1|460 0.0>1.5707963267948966|461 "
     "0.0|470 LINEAR"},
    {twice,
     "HATCH|10 0.0|20 0.0|30 0.0|91 1|92 1|72 2|10 1.0>2.0|20 0.0|40 2.0>4.0|50 0|51 90|73 0|72 4|94 1|40 "
     "0|40 0|40 1|40 1|10 1.0>2.0|20 0.0|10 3.0>6.0|20 0.0|42 1|42 1|97 0|97 0|75 0|41 2>4.0|45 1>2.0|46 "
     "0|49 0.5>1.0"},
    // Attributes move with their reference, but not those of none.
    {shift(10, 0), "INSERT|66 1|2 B|10 1.0>11.0|20 2.0; ATTRIB|10 1.0>11.0|20 3.0|40 1.0|1 a|2 T|70 0; "
                   "ATTRIB|10 0.0>10.0|20 0.0|40 1.0|1 b|2 U|70 1|72 1|11 5.0>15.0|21 5.0|74 2; SEQEND; "
                   "ATTRIB|10 9.0|20 9.0|40 1.0|1 nobody's|2 T|70 0"},
};

TEST(Patches, rewriteOnlyWhatDiffers) {
    for (const PatchCase& each : cases)
        expectPatch(each.marked, [&](const Drawing& drawing) {
            EXPECT_EQ(move(drawing, DrawingText::firstEntity, each.motion), Acad::eOk) << each.marked;
        });
}

TEST(Patches, colour) {
    const std::pair<Adesk::UInt16, const char*> colours[] = {
        {7, "POINT|62 007|10 0.0|20 0.0"},     {1, "POINT|62 7>     1|10 0.0|20 0.0"},
        {256, "POINT|10 0.0|20 0.0"}, // by layer is what a missing one means
        {1, "POINT|>62      1|10 0.0|20 0.0"}, {3, "HATCH|62 7>     3|10 0.0"},
    };
    for (const auto& [colour, marked] : colours)
        expectPatch(marked, [&](const Drawing& drawing) {
            AcDbObjectPointer<AcDbEntity> entity{idOf(drawing, DrawingText::firstEntity), AcDb::kForWrite};
            EXPECT_EQ(entity->setColorIndex(colour), Acad::eOk);
            EXPECT_EQ(entity->setColorIndex(257), Acad::eBadColorIndex);
            EXPECT_EQ(entity->colorIndex(), colour);
        });
}

} // namespace
