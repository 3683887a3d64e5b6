#include "objectalign/curvePicks.h"
#include "objectalign/tangent.h"
#include "tests/objectalign/Sheet.h"

#include <numbers>
#include <sstream>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

TEST(CurvePicks, ReachThreeUnitsSeenFromAbove) {
    const struct {
        const char *curve, *on, *off;
    } cases[] = {
        {"line 0,0 10,0", "5,2.99 5,-2.9 -2.9,0 12.9,0", "5,3.01 -3.1,0 12.2,2.2"},
        {"line 0,0,50 10,0,90", "5,2.9 0,0", "5,3.1"},
        {"line 4,4,0 4,4,90", "4,4 6,6", "7,6"},
        {"circle 0,0 r10", "12.9,0 7.1,0 0,-12.9", "13.1,0 6.9,0 0,0"},
        {"circle 20,0,7 r10 down", "-10,0 -32.9,0", "10,0 -33.1,0"},
        {"arc 0,0 r10 a0..90", "8,8 9.1,9.1 5.1,5.1 10,0.1", "9.3,9.3 4.8,4.8 10,-0.5 -0.5,10 -7,-7"},
        {"arc 0,0 r2 a0..90", "", "0,0"},
        {"arc 0,0,30 r10 a0..90", "8,8", "9.3,9.3"},
        {"arc 20,0,5 r10 a0..90 down", "-27,7", "-13,7 27,7"},
        {"3d 0,0 10,0", "", "5,0 0,0"},
        {"ELLIPSE|10 0|20 0|11 10|21 0|40 0.5|41 0|42 6.283185307179586", "", "10,0"},
    };
    for (const auto& each : cases)
        for (const bool isOn : {true, false}) {
            Sheet sheet({each.curve});
            std::istringstream points{isOn ? each.on : each.off};
            const std::string said = sheet.run([&] {
                for (std::string point; points >> point;)
                    EXPECT_EQ(isPointOnCurve(sheet.id(0), flatPointOf(point)), isOn) << each.curve << point;
            });
            EXPECT_EQ(said, "") << each.curve;
        }
}

/// What stands for the segment, as drawn; the flag must agree.
std::string standIn(Sheet& sheet, std::size_t index, const AcGePoint2d& point, bool isOlder) {
    const auto lookUp = isOlder ? polyline2dSegmentAt : polylineSegmentAt;
    const SegmentStandIn found = lookUp(sheet.id(index), point);
    EXPECT_EQ(found.id.isNull(), sheet.drawn().empty());
    EXPECT_EQ(found.isStraight, !sheet.drawn().starts_with("circle"));
    return sheet.drawn();
}

TEST(CurvePicks, SegmentsOfBothFlatPolylines) {
    const struct {
        const char *name, *polyline, *point, *standIn;
    } cases[] = {
        {"within reach", "0,0 10,0", "5,2.9", "line 0,0 10,0"},
        {"the first near enough wins, not the nearest", "0,0 10,0 10,4 0,4", "5,2.5", "line 0,0 10,0"},
        {"a shared vertex belongs to the lower index", "0,0 10,0 10,10", "10,0", "line 0,0 10,0"},
        {"closing segment", "0,0 20,0 20,20 closed", "10,10", "line 20,20 0,0"},
        {"an open polyline has none", "0,0 20,0 20,20", "10,10", ""},
        {"arc within reach, a whole circle", "0,0 b1 10,0", "5,-7.9", "circle 5,0 r5"},
        {"the arc's other side", "0,0 b1 10,0", "5,5", ""},
        {"an arc's end belongs to it", "0,0 b1 10,0 30,0", "10,0", "circle 5,0 r5"},
        {"high above, brought down", "0,0 10,0 z9", "5,2.9", "line 0,0 10,0"},
        {"seen from below", "0,0 10,0 z9 down", "-5,0", "line 0,0 -10,0"},
        {"arc seen from below", "0,0 b1 10,0 z9 down", "-5,-5", "circle -5,0 r5"},
    };
    for (const bool isOlder : {false, true})
        for (const auto& each : cases) {
            SCOPED_TRACE((isOlder ? "2d: " : "lw: ") + std::string{each.name});
            Sheet sheet({(isOlder ? "2d " : "lw ") + std::string{each.polyline}});
            const AcGePoint2d point = flatPointOf(each.point);
            EXPECT_EQ(sheet.run([&] {
                EXPECT_EQ(isPointOnCurve(sheet.id(0), point), each.standIn[0] != 0);
                EXPECT_EQ(standIn(sheet, 0, point, isOlder), each.standIn);
            }),
                      "");
            EXPECT_TRUE(sheet.isUndoneToTheBytes());
        }
}

TEST(CurvePicks, NoSegmentOfAnythingElse) {
    Sheet sheet({"lw 0,0 10,0", "2d 0,0 10,0", "3d 0,0 10,0", "line 0,0 10,0", "2d 0,0 0,0 10,0 9,9 spline"});
    sheet.run([&] {
        for (const std::size_t i : {1, 2, 3, 4}) EXPECT_EQ(standIn(sheet, i, {5, 0}, false), "") << i;
        for (const std::size_t i : {0, 2, 3, 4}) EXPECT_EQ(standIn(sheet, i, {5, 0}, true), "") << i;
        EXPECT_FALSE(isPointOnCurve(sheet.id(4), {5, 0})) << "spline-fit";
    });
}

TEST(CurvePicks, DirectionOfALine) {
    const struct {
        const char *line, *point, *ends;
        double degrees;
        const char* foot;
        const char* said = "";
    } cases[] = {
        {"line 0,0 10,0", "4,2", "0,0 10,0", 0, "4,0"},
        {"line 10,0 0,0", "4,2", "0,0 10,0", 180, "4,0"},
        {"line 0,10 0,0", "3,4", "0,10 0,0", 270, "0,4"},
        {"line 0,0 0,10", "3,4", "0,10 0,0", 90, "0,4"},
        {"line 0,0 10,-10", "10,0", "0,0 10,-10", 315, "5,-5"},
        {"line 0,0 10,0", "50,3", "0,0 10,0", 0, "50,0"},
        {"line 0,0,5 3,4,90", "-4,3", "0,0,5 3,4,90", 53.130102, "0,0"},
        {"line 4,4,1 4,4,1", "9,9", "4,4,1 4,4,1", 0, "4,4"},
        {"circle 0,0 r10", "1,2", "3,4 5,6", -90, "1,2", "\n请选择线段对象"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.line);
        Sheet sheet({each.line});
        AcGePoint2d point = flatPointOf(each.point);
        AcGePoint3d first{3, 4, 0}, second{5, 6, 0};
        double angle = -std::numbers::pi / 2;
        EXPECT_EQ(sheet.run([&] { lineDirectionAt(sheet.id(0), point, first, second, angle); }), each.said);
        EXPECT_EQ(text(first) + " " + text(second), each.ends);
        EXPECT_NEAR(angle * 180 / std::numbers::pi, each.degrees, 1e-6);
        EXPECT_EQ(text(point), each.foot);
    }
}

TEST(Tangents, AreDrawnFromThePointOnTheCurve) {
    const char *noTangent = "\n该点不是切点", *none = "";
    const struct {
        const char *curve, *picked, *drawn;
        double degrees = 0;
        const char* centre = "0,0";
        const char* said = "";
    } cases[] = {
        {"circle 0,0 r10", "5,0", "line 10,0 10,-10", 270},
        {"circle 0,0 r10", "20,0", "line 10,0 10,-10", 270},
        {"circle 0,0 r10", "0,10", "line 0,10 10,10"},
        {"circle 1,2 r10", "31,42", "line 7,10 15,4", 323.130102, "1,2"},
        {"arc 0,0 r10 a0..90", "0,-5", "line 0,-10 -10,-10", 180},
        {"circle 20,0,7 r10 down", "-15,0", "line -10,0 -10,-10", 270, "-20,0,-7"},
        {"circle 0,0 r10", "1e-6,0", "line 10,0 10,-10", 270},
        {"circle 0,0 r10", "0,0", none},
        {"line 0,0 10,0", "5,0", none, 0, "0,0", noTangent},
        {"lw 0,0 b1 10,0", "5,-5", none, 0, "0,0", noTangent},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(std::string{each.curve} + " at " + each.picked);
        Sheet sheet({each.curve});
        Tangent tangent;
        EXPECT_EQ(sheet.run([&] { tangent = tangentAt(sheet.id(0), flatPointOf(each.picked)); }), each.said);
        EXPECT_EQ(sheet.drawn(), each.drawn);
        EXPECT_EQ(tangent.curve.isNull(), each.drawn == none);
        EXPECT_EQ(tangent.line.isNull(), each.drawn == none);
        EXPECT_TRUE(each.drawn == none || tangent.radius == 10);
        EXPECT_EQ(text(tangent.point), text(tangent.lineStart));
        // On top the angle may be a hair below the full turn.
        EXPECT_NEAR(std::remainder(tangent.angle * 180 / std::numbers::pi - each.degrees, 360), 0, 1e-5);
        EXPECT_TRUE(tangent.angle >= 0 && tangent.angle < 2 * std::numbers::pi);
        EXPECT_EQ(text(tangent.centre), each.centre);
        EXPECT_TRUE(sheet.isUndoneToTheBytes());
    }
}

TEST(Tangents, NothingIsSaidOfACurveThatIsGone) {
    Sheet sheet({"circle 0,0 r10"});
    EXPECT_EQ(sheet.run([&] {
        erase(sheet.drawing(), sheet.at(0));
        EXPECT_TRUE(tangentAt(sheet.id(0), {5, 0}).curve.isNull());
    }),
              "");
}

} // namespace
} // namespace qx::tests
