#include "objectalign/curvePicks.h"
#include "tests/objectalign/Sheet.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

TEST(CurvePicks, ReachThreeUnitsSeenFromAbove) {
    const struct {
        const char* name;
        const char* curve;
        std::vector<AcGePoint2d> on, off;
    } cases[] = {
        {"line",
         "line 0,0 10,0",
         {{5, 2.9}, {5, -2.9}, {-2.9, 0}, {12.9, 0}},
         {{5, 3.1}, {-3.1, 0}, {12.2, 2.2}}},
        {"line high above", "line 0,0,50 10,0,90", {{5, 2.9}, {0, 0}}, {{5, 3.1}}},
        {"upright line", "line 4,4,0 4,4,90", {{4, 4}, {6, 6}}, {{7, 6}}},
        {"line on a locked layer", "line 0,0 10,0 LOCKED", {{5, 2.9}}, {{5, 3.1}}},
        {"circle", "circle 0,0 r10", {{12.9, 0}, {7.1, 0}, {0, -12.9}}, {{13.1, 0}, {6.9, 0}, {0, 0}}},
        {"small circle from its centre", "circle 0,0 r2.5", {{0, 0}}, {{5.6, 0}}},
        {"circle seen from below", "circle 20,0,7 r10 down", {{-10, 0}, {-32.9, 0}}, {{10, 0}, {-33.1, 0}}},
        {"arc", "arc 0,0 r10 a0..90", {{8, 8}, {9.1, 9.1}, {5.1, 5.1}}, {{9.3, 9.3}, {4.8, 4.8}}},
        {"arc past its ends or opposite",
         "arc 0,0 r10 a0..90",
         {{10, 0.1}},
         {{10, -0.5}, {-0.5, 10}, {-7, -7}}},
        {"arc over the start of angles", "arc 0,0 r10 a270..90", {{10, 0}, {7, -7}}, {{-10, 0}, {-7, 7}}},
        {"arc from its centre", "arc 0,0 r2 a0..90", {}, {{0, 0}}},
        {"arc high above", "arc 0,0,30 r10 a0..90", {{8, 8}}, {{9.3, 9.3}}},
        {"arc seen from below", "arc 20,0,5 r10 a0..90 down", {{-27, 7}}, {{-13, 7}, {27, 7}}},
        {"polyline in space", "3d 0,0 10,0", {}, {{5, 0}, {0, 0}}},
        {"other kinds", "ELLIPSE|10 0|20 0|11 10|21 0|40 0.5|41 0|42 6.283185307179586", {}, {{10, 0}}},
    };
    for (const auto& each : cases) {
        Sheet sheet({each.curve});
        const AcDbObjectId id = sheet.id(sheet.at(0));
        const std::string said = sheet.run([&] {
            for (const auto& point : each.on)
                EXPECT_TRUE(isPointOnCurve(id, point)) << each.name << text(point);
            for (const auto& point : each.off)
                EXPECT_FALSE(isPointOnCurve(id, point)) << each.name << text(point);
        });
        EXPECT_EQ(said, "") << each.name;
    }
}

struct SegmentCase {
    const char* name;
    const char* polyline; ///< without its kind
    const char* point;
    const char* standIn;
};

const SegmentCase segmentCases[] = {
    {"within reach", "0,0 10,0", "5,2.9", "line 0,0 10,0"},
    {"out of reach", "0,0 10,0", "5,3.1", ""},
    {"past the end", "0,0 10,0 10,20", "-2.9,0", "line 0,0 10,0"},
    {"the first near enough wins, not the nearest", "0,0 10,0 10,4 0,4", "5,2.5", "line 0,0 10,0"},
    {"a shared vertex belongs to the lower index", "0,0 10,0 10,10", "10,0", "line 0,0 10,0"},
    {"the first vertex belongs to the first", "0,0 10,0 10,10 closed", "0,0", "line 0,0 10,0"},
    {"second segment", "0,0 10,0 10,10", "10,5", "line 10,0 10,10"},
    {"closing segment", "0,0 20,0 20,20 closed", "10,10", "line 20,20 0,0"},
    {"an open polyline has none", "0,0 20,0 20,20", "10,10", ""},
    {"arc, a whole circle", "0,0 b1 10,0", "5,-5", "circle 5,0 r5"},
    {"arc within reach", "0,0 b1 10,0", "5,-7.9", "circle 5,0 r5"},
    {"arc out of reach", "0,0 b1 10,0", "5,-8.1", ""},
    {"the arc's other side", "0,0 b1 10,0", "5,5", ""},
    {"an arc's end belongs to it", "0,0 b1 10,0 30,0", "10,0", "circle 5,0 r5"},
    {"a straight one before the arc", "-20,0 0,0 b1 10,0", "0,0", "line -20,0 0,0"},
    {"turned clockwise", "0,0 b-1 10,0", "5,5", "circle 5,0 r5"},
    {"a vertex twice is no segment", "0,0 0,0 10,0", "0,0", "line 0,0 10,0"},
    {"one vertex", "0,0 closed", "0,0", ""},
    {"high above, brought down", "0,0 10,0 z9", "5,2.9", "line 0,0 10,0"},
    {"arc high above", "0,0 b1 10,0 z9", "5,-5", "circle 5,0 r5"},
    {"seen from below", "0,0 10,0 z9 down", "-5,0", "line 0,0 -10,0"},
    {"arc seen from below", "0,0 b1 10,0 z9 down", "-5,-5", "circle -5,0 r5"},
    {"arc seen from below, other side", "0,0 b1 10,0 down", "-5,5", ""},
};

/// What stands for the segment, as drawn; the flag must agree.
std::string standIn(Sheet& sheet, Handle handle, const AcGePoint2d& point, bool isOlder, const char* name) {
    const auto lookUp = isOlder ? polyline2dSegmentAt : polylineSegmentAt;
    const SegmentStandIn found = lookUp(sheet.id(handle), point);
    EXPECT_EQ(found.id.isNull(), sheet.drawn().empty()) << name;
    EXPECT_EQ(found.isStraight, !sheet.drawn().starts_with("circle")) << name;
    return sheet.drawn();
}

TEST(CurvePicks, SegmentsOfBothFlatPolylines) {
    for (const bool isOlder : {false, true})
        for (const SegmentCase& each : segmentCases) {
            const std::string name = (isOlder ? "2d: " : "lw: ") + std::string{each.name};
            Sheet sheet({(isOlder ? "2d " : "lw ") + std::string{each.polyline}});
            const std::string said = sheet.run([&] {
                EXPECT_EQ(isPointOnCurve(sheet.id(sheet.at(0)), pointOf(each.point)), each.standIn[0] != 0)
                    << name;
                EXPECT_EQ(standIn(sheet, sheet.at(0), pointOf(each.point), isOlder, name.c_str()),
                          each.standIn)
                    << name;
            });
            EXPECT_EQ(said, "") << name;
            EXPECT_TRUE(sheet.isUndoneToTheBytes()) << name;
        }
}

TEST(CurvePicks, NoSegmentOfAnythingElse) {
    Sheet sheet({"lw 0,0 10,0", "2d 0,0 10,0", "3d 0,0 10,0", "line 0,0 10,0", "2d 0,0 0,0 10,0 9,9 spline",
                 "lw 0,0 10,0"});
    sheet.run([&] {
        erase(sheet.drawing(), sheet.at(5));
        for (const std::size_t i : {1, 2, 3, 4, 5})
            EXPECT_EQ(standIn(sheet, sheet.at(i), {5, 0}, false, "lookup"), "") << i;
        for (const std::size_t i : {0, 2, 3, 4, 5})
            EXPECT_EQ(standIn(sheet, sheet.at(i), {5, 0}, true, "2d lookup"), "") << i;
        EXPECT_FALSE(isPointOnCurve(sheet.id(sheet.at(4)), {5, 0})) << "spline-fit";
        EXPECT_FALSE(isPointOnCurve(sheet.id(sheet.at(5)), {5, 0})) << "erased";
        EXPECT_FALSE(isPointOnCurve(AcDbObjectId::kNull, {5, 0}));
        EXPECT_TRUE(polylineSegmentAt(AcDbObjectId::kNull, {5, 0}).id.isNull());
    });
}

TEST(CurvePicks, AnyRequestMayBeRefused) {
    for (const bool isOlder : {false, true})
        for (int k = 0;; ++k) {
            Sheet sheet({isOlder ? "2d 0,0 10,0" : "lw 0,0 10,0"});
            std::string drawn;
            sheet.run([&] {
                sheet.refuse(k);
                drawn = standIn(sheet, sheet.at(0), {5, 0}, isOlder, "refused");
            });
            EXPECT_EQ(drawn, sheet.refused() ? "" : "line 0,0 10,0") << k;
            EXPECT_EQ(sheet.drawing().openCount(), 0u) << k;
            if (!sheet.refused()) break;
            EXPECT_TRUE(sheet.hasTheFilesBytes()) << k;
        }
}

TEST(CurvePicks, DirectionOfALine) {
    const struct {
        const char* name;
        const char* line;
        const char* point;
        const char* ends;
        double degrees;
        const char* foot;
    } cases[] = {
        {"rightwards", "line 0,0 10,0", "4,2", "0,0 10,0", 0, "4,0"},
        {"leftwards: ends in order, angle its own", "line 10,0 0,0", "4,2", "0,0 10,0", 180, "4,0"},
        {"downwards: from top to bottom", "line 0,10 0,0", "3,4", "0,10 0,0", 270, "0,4"},
        {"upwards: from top to bottom", "line 0,0 0,10", "3,4", "0,10 0,0", 90, "0,4"},
        {"slanted downwards", "line 0,0 10,-10", "10,0", "0,0 10,-10", 315, "5,-5"},
        {"a hair from upright", "line 0.001,0 0,-10", "9,-5", "0,-10 0.001,0", 270, "0.0005,-4.9991"},
        {"past the end the line goes on", "line 0,0 10,0", "50,3", "0,0 10,0", 0, "50,0"},
        {"heights don't count", "line 0,0,5 3,4,90", "-4,3", "0,0,5 3,4,90", 53.130102, "0,0"},
        {"no length", "line 4,4,1 4,4,1", "9,9", "4,4,1 4,4,1", 0, "4,4"},
    };
    for (const auto& each : cases) {
        Sheet sheet({each.line});
        AcGePoint2d point = pointOf(each.point);
        AcGePoint3d first, second;
        double angle = -1;
        sheet.run([&] {
            EXPECT_EQ(lineDirectionAt(sheet.id(sheet.at(0)), point, first, second, angle), Acad::eOk)
                << each.name;
        });
        EXPECT_EQ(text(first) + " " + text(second), each.ends) << each.name;
        EXPECT_NEAR(angle * 180 / std::numbers::pi, each.degrees, 0.01) << each.name;
        EXPECT_EQ(text(point), each.foot) << each.name;
    }
}

TEST(CurvePicks, DirectionOfNoLine) {
    Sheet sheet({"circle 0,0 r10", "line 0,0 10,0"});
    AcGePoint2d point{1, 2};
    AcGePoint3d first{3, 4, 5}, second{6, 7, 8};
    double angle = -1;
    const auto directionAt = [&](std::size_t i) {
        return lineDirectionAt(sheet.id(sheet.at(i)), point, first, second, angle);
    };
    EXPECT_EQ(sheet.run([&] { EXPECT_EQ(directionAt(0), Acad::eOk); }), "\n请选择线段对象");
    EXPECT_EQ(sheet.run([&] {
        erase(sheet.drawing(), sheet.at(1));
        EXPECT_EQ(directionAt(1), Acad::eWasErased);
    }),
              "");
    EXPECT_EQ(text(point) + text(first) + text(second), "1,23,4,56,7,8");
    EXPECT_EQ(angle, -1);
}

} // namespace
} // namespace qx::tests
