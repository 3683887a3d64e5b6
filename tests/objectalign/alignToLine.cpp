#include "objectalign/alignToLine.h"

#include "kernel/classTests.h"
#include "objectalign/angles.h"
#include "tests/objectalign/Scene.h"

#include <gtest/gtest.h>

#include <optional>
#include <span>

namespace qx::tests {
namespace {
using namespace objectalign;

constexpr std::optional<double> unmoved;

/// What becomes of an object that is aligned to a line through the origin.
struct LineCase {
    const char* name;
    std::string snippet;
    std::optional<double> spacing;
    std::string watched;
    const char* expected; ///< the turn, where the watched point has gone and where the object lands
    double angle = 0;
    std::string reference = "0,0";
};

std::string aligned(const LineCase& each) {
    const Scene scene{each.snippet, each.angle};
    std::string result;
    scene.drawing->history().begin("align");
    {
        const AcDbObjectPointer<AcDbEntity> baseLine{scene.baseLineId()};
        const AcGePoint3d reference = pointFrom(each.reference);
        AcGePoint3d landing;
        const int status = alignObjectToBaseLine(scene.objectId(), {reference.x, reference.y}, each.angle,
                                                 each.spacing.value_or(99), each.spacing.has_value(),
                                                 *baseLine.object(), landing);
        result = status == Acad::eOk
                     ? told(scene.watched.motion(), pointFrom(each.watched)) + " lands " + told(landing)
                     : std::to_string(status) + " " + scene.changes();
    }
    return scene.isUndoneToTheBytes() ? result : result + ", not undone";
}

void check(std::span<const LineCase> cases) {
    for (const LineCase& each : cases) EXPECT_EQ(aligned(each), each.expected) << each.name;
}

TEST(Angles, AreComparedWithTheirSevenDecimals) {
    EXPECT_EQ(turnedTheShortWay(1.5707963), 1.5707963);
    EXPECT_EQ(turnedTheShortWay(std::nextafter(1.5707963, 2)), std::nextafter(1.5707963, 2) - 3.1415926);
    EXPECT_EQ(turnedTheShortWay(-6), -6);
    EXPECT_EQ(foldedEdgeAngle(3.1415926), 3.1415926);
    EXPECT_EQ(foldedEdgeAngle(3.1415927), 3.1415927 - 3.1415926);
}

TEST(AlignToLine, Lines) {
    const std::string oblique = "LINE|10 1|20 2|30 5|11 4|21 6|31 7", level = "LINE|10 1|20 0|11 5|21 0";
    const LineCase cases[] = {
        {"the start is nearer", oblique, unmoved, "1,2,5", "-0.9272952 1,2,5 lands 1,0,5"},
        {"the end is nearer: turned far the other way", oblique, unmoved, "4,6,7",
         "2.2142974 4,6,7 lands 4,0,7", 0, "9,9"},
        {"height does not count", "LINE|10 0|20 2|30 90|11 9|21 2", unmoved, "0,2,90",
         "1 0,2,90 lands 0.9093,1.4161,90", 1, "1,2"},
        {"equally near: the end", "LINE|10 0|20 3|11 4|21 3", unmoved, "4,3",
         "-2.1415927 4,3 lands 2.5317,3.9428", 1, "2,7"},
        {"a quarter turn is not taken back", level, unmoved, "1,0", "1.5707963 1,0 lands 0,0", 1.5707963},
        {"anything above is", level, unmoved, "1,0", "-1.5707962 1,0 lands 0,0", 1.5707964},
        {"onto the line and beyond it", oblique, 3, "1,2,5", "-0.9272952 1,-3,5 lands 1,0,5"},
        {"from below", "LINE|10 1|20 -2|11 4|21 -2", 3, "1,-2", "0 1,3 lands 1,0"},
        {"without spacing onto the line", oblique, 0, "1,2,5", "-0.9272952 1,0,5 lands 1,0,5"},
        {"a negative spacing stops short", oblique, -3, "1,2,5", "-0.9272952 1,3,5 lands 1,0,5"},
        {"on the line: to its left", level, 3, "1,0", "0 1,3 lands 1,0"},
        {"as good as on the line", "LINE|10 1|20 5e-11|11 5|21 0", 3, "1,0", "0 1,3 lands 1,0"},
        {"off a line that runs up", level, 3, "1,0", "1.5707963 -3,0 lands 0,0", 1.5707963},
        {"far away it shows that the quarter turn is cut short",
         "LINE|10 800000|20 600000|11 800004|21 600003", 0.5, "800000,600000",
         "-0.6435011 799999.9839,-0.5 lands 799999.9839,0"},
        {"without length", "LINE|10 1|20 2|11 1|21 2", 0, "1,2", "0 1.6116,0.8804 lands 1.6116,0.8804", 0.5},
        {"upright", "LINE|10 1|20 2|30 0|11 1|21 2|31 9", 3, "1,2,9", "0 1,-3,9 lands 1,0,9"},
    };
    check(cases);
}

TEST(AlignToLine, BlocksAndCurvesWithACentre) {
    const std::string ellipse = "ELLIPSE|10 5|20 5|30 2|11 3|21 0|40 0.5";
    const LineCase cases[] = {
        {"block", "INSERT|2 Angle|10 3|20 4|30 1|50 30", 2, "3,4,1", "-0.5235988 3,-2,1 lands 3,0,1"},
        {"past a half turn it ends oblique", "INSERT|2 Angle|10 3|20 4|50 229.18311805232929", unmoved, "3,4",
         "0.8584074 3,4 lands 3,0"},
        {"and may be taken back", "INSERT|2 Angle|10 3|20 0|50 229.18311805232929", unmoved, "3,0",
         "-1.2831852 3,0 lands 0.8758,1.3639", 1},
        {"upside down is just past it", "INSERT|2 Angle|10 3|20 4|50 180", unmoved, "3,4",
         "0.5000001 3,4 lands 3.9934,2.1816", 0.5},
        {"an oblique one is moved all the same", "INSERT|2 Angle|10 3|20 4|50 229.18311805232929", 1, "3,4",
         "0.8584074 3,-1 lands 3,0"},
        {"block from below", "INSERT|2 Angle|10 -3|20 4|50 30|210 0|220 0|230 -1", 2, "3,4",
         "-2.6179939 3,-2 lands 3,0"},
        {"circle: from its edge, and where it lands is on the line", "CIRCLE|10 3|20 5|30 7|40 2", 1, "3,5,7",
         "0 3,-3,7 lands 3,0"},
        {"circle about the line", "CIRCLE|10 3|20 0|40 2", 1, "3,0", "0 3,3 lands 3,0"},
        {"circle, spacing 0: touches from beyond", "CIRCLE|10 3|20 5|40 2", 0, "3,5", "0 3,-2 lands 3,0"},
        {"circle, only turned", "CIRCLE|10 3|20 5|40 2", unmoved, "3,5", "0 3,5 lands -1.3725,2.9989", 2},
        {"ellipse: nearer end, from its minor axis", ellipse, 1, "8,5,2",
         "0.25 9.3274,-0.1985,2 lands 8.7089,2.2237,2", 0.25, "9,5"},
        {"ellipse, the other end", ellipse, 1, "2,5,2", "0 2,-2.5,2 lands 2,0,2", 0, "0,5"},
        {"ellipse that points down", "ELLIPSE|10 5|20 5|11 0|21 -3|40 0.5", unmoved, "5,2",
         "1.5707963 5,2 lands 5,0", 0, "5,0"},
        {"ellipse without axes", "ELLIPSE|10 5|20 5|11 0|21 0|40 0.5", 1, "5,5", "0 5,-1 lands 5,0", 0,
         "5,0"},
    };
    check(cases);
}

// Letters are 2 high. Text that the line still runs through goes on by one such height.
TEST(AlignToLine, Text) {
    const std::string text = "TEXT|10 1|20 2|40 2|1 H", lines = "MTEXT|10 1|20 2|40 2|46 12|71 7|1 H";
    const LineCase cases[] = {
        {"text", text + "|50 30", unmoved, "1,2", "-0.5235988 1,2 lands 1,0"},
        {"a three-quarter turn is taken back", text, unmoved, "1,2", "1.5707963 1,2 lands 0,2", 4.7123889},
        {"above it is not", text, unmoved, "1,2", "-1.5707963 1,2 lands 0,2", 4.7123890},
        {"nearly a full turn", text + "|50 1", unmoved, "1,2", "-0.3006386 1,2 lands 0.3854,-0.1121", 6},
        {"the line runs through it", text, 1, "1,2", "0 1,-3 lands 1,0"},
        {"it is clear by itself", text, 2.5, "1,2", "0 1,-2.5 lands 1,0"},
        {"clear on the far side", "TEXT|10 1|20 -2|40 2|1 H", 1, "1,-2", "0 1,1 lands 1,0"},
        {"spacing 0 leaves it on the line", text, 0, "1,2", "0 1,0 lands 1,0"},
        {"beyond the drawn line counts", "TEXT|10 100|20 2|40 2|1 H", 1, "100,2", "0 100,-3 lands 100,0"},
        {"not in the plane of the line", text + "|30 5", 1, "1,2,5", "0 1,-1,5 lands 1,0,5"},
        {"text from below", "TEXT|10 -1|20 2|40 2|1 H|50 30|210 0|220 0|230 -1", 2.5, "1,2",
         "-2.6179939 1,-2.5 lands 1,0"},
        {"lines of text", lines + "|50 30", unmoved, "1,2", "-0.5235988 1,2 lands 1,0"},
        {"run through: by the height of their letters", lines, 1, "1,2", "0 1,-3 lands 1,0"},
        {"their lower left corner counts", "MTEXT|10 1|20 4|40 2|71 1|1 H", 2.5, "1,2", "0 1,-2.5 lands 1,0"},
        {"lines, three quarters", lines, unmoved, "1,2", "1.5707963 1,2 lands 0,2", 4.7123889},
        {"lines, above them", lines, unmoved, "1,2", "-1.5707963 1,2 lands 0,2", 4.7123890},
        {"lines from below", "MTEXT|10 1|20 2|40 2|71 7|1 H|50 30|210 0|220 0|230 -1", 2.5, "1,2",
         "-2.6179939 1,-2.5 lands 1,0"},
    };
    check(cases);
}

TEST(AlignToLine, Polylines) {
    const struct {
        const char* name;
        const char* vertices;
        const char* base;
        std::optional<double> spacing;
        const char* expected;
        bool isClosed = false;
        const char* reference = "2,4";
    } cases[] = {
        {"nearest vertex, nearer neighbour", "9,9 2,5 5,8", "2,5", 1, "-0.7853982 2,-1 lands 2,0"},
        {"neighbours equally near: the next", "0,6 2,5 4,6", "2,5", unmoved, "-0.4636476 2,5 lands 2,0"},
        {"vertices equally near: the first", "9,9 0,4 4,4", "0,4", unmoved, "0 0,4 lands 0,0"},
        {"an open one wraps around", "2,5 9,9 20,9 1,6", "2,5", unmoved, "-2.3561945 2,5 lands 2,0"},
        {"so does a closed one", "2,5 9,9 20,9 1,6", "2,5", unmoved, "-2.3561945 2,5 lands 2,0", true},
        {"from the last to the first", "3,6 20,9 30,9 2,5", "2,5", unmoved, "-0.7853982 2,5 lands 2,0"},
        {"an edge that points back is folded", "2,5 1,4.9", "2,5", unmoved, "-0.0996687 2,5 lands 2,0", false,
         "3,5"},
        {"exactly back", "2,5 1,5", "2,5", unmoved, "-1e-07 2,5 lands 2,0", false, "3,5"},
        {"upwards is not", "2,5 1,5.1", "2,5", unmoved, "-3.041924 2,5 lands 2,0", false, "3,5"},
        {"doubled vertices have no edge", "2,5 2,5 5,8 2,5", "2,5", unmoved, "-0.7853982 2,5 lands 2,0"},
        {"off the plane", "2,5,4 5,8,4", "2,5,4", 1, "-0.7853982 2,-1,4 lands 2,0,4"},
        {"one vertex", "2,5", "2,5", 1, "364 nothing"},
        {"all in one place", "2,5 2,5 2,5", "2,5", 1, "364 nothing", true},
    };
    for (const auto& each : cases)
        for (const PolylineKind kind : polylineKinds)
            for (const bool fromBelow : {false, true})
                EXPECT_EQ(
                    aligned({each.name, polyline(kind, pointsFrom(each.vertices), each.isClosed, fromBelow),
                             each.spacing, each.base, each.expected, 0, each.reference}),
                    each.expected)
                    << each.name << ", kind " << static_cast<int>(kind) << (fromBelow ? ", from below" : "");

    const LineCase single[] = {
        {"a bulge does not count", "LWPOLYLINE|90 2|70 0|10 2|20 5|42 1|10 5|20 8", unmoved, "2,5",
         "-0.7853982 2,5 lands 2,0", 0, "2,4"},
        {"a spline's frame does not count",
         "POLYLINE|66 1|10 0|20 0|70 4; VERTEX|10 2|20 4|70 16; VERTEX|10 2|20 5|70 8; VERTEX|10 5|20 8|70 8",
         unmoved, "2,5", "-0.7853982 2,5 lands 2,0", 0, "2,4"},
        {"upright edges of one in space have no direction",
         polyline(PolylineKind::spatial, pointsFrom("2,5 2,5,9 5,8")), unmoved, "2,5",
         "-0.7853982 2,5 lands 2,0", 0, "2,4"},
        {"upright in space", polyline(PolylineKind::spatial, pointsFrom("2,5 2,5,9")), 1, "2,5",
         "364 nothing", 0, "2,4"},
    };
    check(single);
}

// A half circle from 1,10 over the top to 5,10 unless the name says otherwise.
TEST(AlignToLine, ArcsStandShortOfTheLineWithTheirConvexSideTowardsIt) {
    const std::string arc = "ARC|10 3|20 10|30 2|40 2", below = "ARC|10 3|20 -10|40 2|50 0|51 180";
    const LineCase cases[] = {
        {"over the line", arc + "|50 0|51 180", unmoved, "3,12,2", "3.1415926 3,8,2 lands 3,0"},
        {"set off", arc + "|50 0|51 180", 1, "3,12,2", "3.1415926 3,1,2 lands 3,0"},
        {"spacing 0", arc + "|50 0|51 180", 0, "3,12,2", "3.1415926 3,0,2 lands 3,0"},
        {"under the line", below, 1, "3,-8", "0 3,-1 lands 3,0"},
        {"negative: beyond the line", below, -1, "3,-8", "0 3,1 lands 3,0"},
        {"a quarter", arc + "|50 0|51 90", 1, "3,10,2", "-2.3561945 3,3,2 lands 3,0"},
        {"three quarters", arc + "|50 0|51 270", 1, "3,10,2", "2.3561944 3,3,2 lands 3,0"},
        {"about the line: to its left", "ARC|10 3|20 0|40 2|50 0|51 180", 1, "3,2",
         "3.1415926 3,1 lands 3,0"},
        {"cut by the line", "ARC|10 3|20 1|40 2|50 0|51 180", 1, "3,3", "3.1415926 3,1 lands 3,0"},
        {"centre nearer than half its radius: turned whichever way it bulges",
         "ARC|10 3|20 -0.5|40 2|50 0|51 180", 1, "3,-0.5", "3.1415926 3,3 lands 3,0"},
        {"half its radius beyond the line: not turned", "ARC|10 3|20 -1|40 2|50 0|51 180", 1, "3,-1",
         "0 3,-3 lands 3,0"},
        {"to a line that runs up", "ARC|10 3|20 1|40 2|50 0|51 180", 1, "3,3", "1.5707963 1,1 lands 0,1",
         1.5707963},
        {"from below", "ARC|10 -3|20 10|30 -2|40 2|50 0|51 90|210 0|220 0|230 -1", 1, "3,10,2",
         "2.3561945 3,3,2 lands 3,0"},
        {"upright: turned only", "ARC|10 3|20 5|30 -10|40 2|50 0|51 180|210 0|220 -1|230 0", 1, "3,10,7",
         "0 3,10,7 lands 3,10,5"},
        {"a whole turn: turned only", arc + "|50 0|51 360", 1, "3,10,2", "0 3,10,2 lands 3,10,2"},
        {"no radius", "ARC|10 3|20 10|40 0|50 0|51 90", 1, "3,10", "0 3,10 lands 3,10"},
    };
    check(cases);
}

TEST(AlignToLine, LeavesOutWhatItDoesNotHandle) {
    for (const char* snippet : {"POINT|10 1|20 2", "HATCH|10 1|20 2", "SPLINE|10 1|20 2", "SOLID|10 1|20 2",
                                "DIMENSION|10 1|20 2", "REGION|10 1", "LWPOLYLINE|90 0|70 0"})
        EXPECT_EQ(aligned({snippet, snippet, 1, {}, "", 1}), "364 nothing") << snippet;
}

TEST(AlignToLine, TextThatDrawsNothing) {
    for (const char* snippet : {"TEXT|10 1|20 2|40 2|50 30|1  ", "MTEXT|10 1|20 2|40 2|50 30|1  ",
                                "MTEXT|10 1|20 2|40 2|50 30|1 "}) {
        const Scene scene{snippet, 0};
        const AcDbObjectPointer<AcDbEntity> baseLine{scene.baseLineId()};
        AcGePoint3d landing;
        EXPECT_EQ(alignObjectToBaseLine(scene.objectId(), {}, 0, 1, true, *baseLine.object(), landing), 0);
        const AcDbObjectPointer<AcDbEntity> object{scene.objectId()};
        const auto* text = kernel::asText(object.object());
        const auto* lines = kernel::asMText(object.object());
        EXPECT_EQ(told(text ? text->position() : lines->location()), "1,-1") << snippet;
        EXPECT_EQ(rounded(text ? text->rotation() : lines->rotation(), 7), "0") << snippet;
    }
}

// Where the perpendicular and the base line don't meet, the origin counts; nothing becomes no number.
TEST(AlignToLine, BaseLinesThatAreMissed) {
    const std::string across = "LINE|10 7|20 0" + tag(11, 7 + 9 * std::cos(1.5707963)) + "|21 9",
                      line = "LINE|10 3|20 4|11 9|21 4", arc = "ARC|10 3|20 4|40 2|50 0|51 90",
                      dot = "LINE|10 7|20 2|11 7|21 2";
    const struct {
        const char* name;
        std::string object, baseLine;
        const char* expected; ///< of the point 3,4; to the angle 0 with spacing 1
    } cases[] = {
        {"line, across", line, across, "0 -0.6,-0.8"},
        {"circle, across", "CIRCLE|10 3|20 4|40 2", across, "0 -1.8,-2.4"},
        {"arc, across: turned only", arc, "LINE|10 7|20 0|11 7|21 9", "0.7853982 3,4"},
        {"line, no length", line, dot, "0 -0.6,-0.8"},
        {"arc, no length", arc, dot, "0.7853982 3,4"},
        {"line, a polyline that goes on", line, "LWPOLYLINE|90 2|70 0|10 7|20 1|10 9|20 1", "0 3,0"},
    };
    for (const auto& each : cases) {
        DrawingText content;
        const Handle object = content.add(each.object), base = content.add(each.baseLine);
        const OpenedDrawing drawing{content};
        const Watched watched{drawing, object};
        const AcDbObjectPointer<AcDbEntity> baseLine{drawing.id(base)};
        AcGePoint3d landing;
        EXPECT_EQ(alignObjectToBaseLine(drawing.id(object), {}, 0, 1, true, *baseLine.object(), landing), 0);
        EXPECT_EQ(told(watched.motion(), AcGePoint3d{3, 4, 0}), each.expected) << each.name;
    }
}
} // namespace
} // namespace qx::tests
