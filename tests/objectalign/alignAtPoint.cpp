#include "objectalign/alignAtPoint.h"

#include "tests/objectalign/Scene.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>

namespace qx::tests {
namespace {
using namespace objectalign;

constexpr std::optional<double> untied;
const AcGePoint3d origin;

/// The object's turn and where the point `watched` has gone, or the status.
struct PointCase {
    const char* name;
    std::string snippet;
    std::optional<double> spacing;
    const char* watched;
    const char* expected;
    double angle = 0;
};

std::string aligned(const PointCase& each, const std::function<int(const Scene&)>& align) {
    const Scene scene{each.snippet, each.angle};
    scene.drawing->history().begin("align");
    const int status = align(scene);
    const std::string result = status == Acad::eOk ? told(scene.watched.motion(), pointFrom(each.watched))
                                                   : std::to_string(status) + " " + scene.changes();
    return scene.isUndoneToTheBytes() ? result : result + ", not undone";
}

/// At the middle of the line.
std::string onLine(const PointCase& each) {
    return aligned(each, [&](const Scene& scene) {
        return alignObjectToGivenLine(scene.objectId(), each.angle, each.spacing.value_or(99),
                                      each.spacing.has_value(), origin, origin + scene.along,
                                      scene.baseLineId());
    });
}

/// On top of a circle of radius 20, or at its left for a quarter turn.
std::string onCircle(const PointCase& each) {
    return aligned(each, [&](const Scene& scene) {
        const AcGePoint3d centre =
            origin + AcGeVector3d{scene.along}.rotateBy(-std::numbers::pi / 2, {0, 0, 1}) * 20;
        return alignObjectToGivenCircle(scene.objectId(), each.angle, each.spacing.value_or(99),
                                        each.spacing.has_value(), origin, centre, 20);
    });
}

const std::string oblique = "LINE|10 1|20 2|11 4|21 6";

// What touches the line in the end is turned by a half turn.
TEST(AlignAtPoint, OfALine) {
    const std::string overTwo = "TEXT|10 3|20 4|40 2|1 H";
    const PointCase cases[] = {
        {"line: its middle; on the line it turns", oblique, untied, "1,2", "2.2142974 2.5,0"},
        {"set off to the left", oblique, 3, "1,2", "-0.9272952 -2.5,3"},
        {"set off to the right", oblique, -3, "1,2", "-0.9272952 -2.5,-3"},
        {"spacing 0 does not turn", oblique, 0, "1,2", "-0.9272952 -2.5,0"},
        {"its end is nearer in space", "LINE|10 1|20 0|30 9|11 4|21 4|31 0", 3, "4,4", "2.2142974 -2.5,3"},
        {"equally near: the end", "LINE|10 3|20 4|11 -3|21 4", 3, "3,4", "1 -0.9035,4.1453", 1},
        {"a quarter turn stays", "LINE|10 1|20 0|11 5|21 0", 3, "1,0", "1.5707963 -3,-2", 1.5707963},
        {"more is taken back", "LINE|10 1|20 0|11 5|21 0", 3, "1,0", "-1.5707962 -3,2", 1.5707964},
        {"z stays", "LINE|10 1|20 2|30 5|11 4|21 6|31 7", 3, "1,2,5", "-0.9272952 -2.5,3,5"},
        {"without length", "LINE|10 1|20 2|11 1|21 2", 3, "1,2", "0 0,3"},
        {"block: its insertion point", "INSERT|2 Angle|10 3|20 4|50 30", 3, "3,4", "-0.5235988 0,3"},
        {"block through the line turns about it", "INSERT|2 Down|10 3|20 4", 3, "3,-1", "3.1415926 0,8"},
        {"block clear of the line", "INSERT|2 Down|10 3|20 4", 6, "3,-1", "0 0,1"},
        {"block ends on the line", "INSERT|2 Down|10 3|20 4", 5, "3,-1", "3.1415926 0,10"},
        {"block stands on the line", "INSERT|2 Angle|10 3|20 4", untied, "7,4", "3.1415926 -4,0"},
        {"block, spacing 0", "INSERT|2 Angle|10 3|20 4", 0, "7,4", "0 4,0"},
        {"block past a half turn", "INSERT|2 Angle|10 3|20 4|50 229.18311805232929", 9, "3,4",
         "0.8584074 0,9"},
        {"text: the middle of its baseline", overTwo, 1, "3,4", "0 -0.75,1"},
        {"text that hangs through the line", overTwo, -1, "3,4", "3.1415926 0.75,-1"},
        {"text beyond it", overTwo, -2.5, "3,4", "0 -0.75,-2.5"},
        {"text on the line", overTwo, untied, "3,4", "3.1415926 0.75,0"},
        {"turned text", overTwo + "|50 90", 1, "3,4", "-1.5707963 -0.75,1"},
        {"centred text", "TEXT|10 0|20 0|40 2|1 H|72 1|11 3|21 4", 1, "3,4", "0 0.1,1"},
        {"text that runs backwards", overTwo + "|71 2", 1, "3,4", "0 0.75,1"},
        {"text from below", "TEXT|10 -3|20 4|40 2|1 H|50 30|210 0|220 0|230 -1", 3, "3,4",
         "-2.6179939 -0.75,3"},
        {"text, past three quarters", overTwo, 3, "3,4", "-1.5707963 3,0.75", 4.7123890},
        {"lines of text: the middle of their lower edge", "MTEXT|10 3|20 4|40 2|71 7|1 H", 1, "3,4",
         "0 -0.85,1"},
        {"arc: its apex", "ARC|10 3|20 10|40 2|50 0|51 180", 1, "3,10", "3.1415926 0,3"},
        {"arc from under the line: through it and turned", "ARC|10 3|20 -10|40 2|50 0|51 180", 1, "3,-10",
         "3.1415926 0,3"},
        {"arc that touches", "ARC|10 3|20 10|40 2|50 0|51 180", untied, "3,10", "-1e-07 0,-2"},
        {"arc, spacing 0", "ARC|10 3|20 10|40 2|50 0|51 180", 0, "3,10", "3.1415926 0,2"},
        {"circle: its centre, from its edge", "CIRCLE|10 3|20 4|30 5|40 2", 1, "3,4,5", "0 0,3,5"},
        {"circle on the line", "CIRCLE|10 3|20 4|40 2", untied, "3,4", "0 0,0"},
        {"ellipse: its centre, from its edge", "ELLIPSE|10 3|20 4|11 0|21 5|40 0.4", 1, "3,4",
         "-1.5707963 0,3"},
        {"one vertex", "LWPOLYLINE|90 1|70 0|10 1|20 1", 1, "1,1", "364 nothing"},
        {"a kind that is not handled", "HATCH|10 1|20 1", 1, "1,1", "364 nothing"},
    };
    for (const PointCase& each : cases) EXPECT_EQ(onLine(each), each.expected) << each.name;
}

TEST(AlignAtPoint, OfALineByTheEdgeOfAPolyline) {
    const struct {
        const char* name;
        const char* vertices;
        const char* expected; ///< of the first vertex, spacing 90
    } cases[] = {
        {"nearest vertex, nearer neighbour", "3,4 6,8 30,40", "-0.9272952 -2.5,90"},
        {"the one before is nearer", "3,4 30,40 6,8", "-0.9272952 -2.5,90"},
        {"neighbours equally near: the lower one, which has the rank", "3,4 10,0 50,50 0,10",
         "-2.6224466 4.0311,90"},
        {"a neighbour as near as the vertex has no rank", "3,4 4,3 9,12", "-0.9272952 -5,90"},
        {"neither has one", "3,4 4,3 0,5", "-2.3561945 0.7071,90"},
    };
    for (const auto& each : cases)
        for (const PolylineKind kind : polylineKinds)
            for (const bool fromBelow : {false, true})
                EXPECT_EQ(onLine({each.name, polyline(kind, pointsFrom(each.vertices), false, fromBelow), 90,
                                  "3,4", each.expected}),
                          each.expected)
                    << each.name << ", kind " << static_cast<int>(kind) << (fromBelow ? ", from below" : "");
}

// The circle lies under the point; what reaches into it is turned by a half turn.
TEST(AlignAtPoint, OfACircle) {
    const PointCase cases[] = {
        {"line on the tangent: contact is not inside", oblique, untied, "1,2", "-0.9272952 -2.5,0"},
        {"set off outward", oblique, 3, "1,2", "-0.9272952 -2.5,3"},
        {"inward: all of it is inside", oblique, -3, "1,2", "2.2142974 2.5,-3"},
        {"inward, with its ends outside", "LINE|10 1|20 0|11 31|21 0", -1, "1,0", "3.1415926 15,-1"},
        {"just outside all the way", "LINE|10 1|20 0|11 31|21 0", 0.001, "1,0", "0 -15,0.001"},
        {"block that reaches in", "INSERT|2 Down|10 3|20 4", 3, "3,-1", "3.1415926 0,8"},
        {"block that touches from outside", "INSERT|2 Down|10 3|20 4", 5, "3,-1", "0 0,0"},
        {"block deep inside", "INSERT|2 Angle|10 3|20 4", -9, "7,4", "3.1415926 -4,-9"},
        {"block, spacing 0", "INSERT|2 Down|10 3|20 4", 0, "3,-1", "0 0,-5"},
        {"block on the tangent that hangs in", "INSERT|2 Down|10 3|20 4", untied, "3,-1", "3.1415926 0,5"},
        {"block on the tangent that stands up", "INSERT|2 Angle|10 3|20 4", untied, "7,4", "0 4,0"},
        {"text on the tangent", "TEXT|10 3|20 4|40 2|1 H", untied, "3,4", "0 -0.75,0"},
        {"text inside", "TEXT|10 3|20 4|40 2|1 H", -5, "3,4", "3.1415926 0.75,-5"},
        {"arc with its apex on it", "ARC|10 3|20 10|40 2|50 0|51 180", untied, "3,10", "3.1415926 0,2"},
        {"arc that bulges in from its chord", "ARC|10 3|20 -10|40 2|50 0|51 180", untied, "3,-10",
         "3.1415926 0,2"},
        {"circle: from its edge", "CIRCLE|10 3|20 4|40 2", 1, "3,4", "0 0,3"},
        {"at the left of the circle, outward", "INSERT|2 Angle|10 3|20 4", 3, "7,4", "1.5707963 -3,4",
         1.5707963},
        {"a kind that is not handled", "POINT|10 1|20 1", 1, "1,1", "364 nothing"},
    };
    for (const PointCase& each : cases) EXPECT_EQ(onCircle(each), each.expected) << each.name;
}

// To which side the spacing goes is a matter of the curve rather than of the angle.
TEST(AlignAtPoint, TheSideOfTheSpacing) {
    const struct {
        const char* name;
        const char* curve;
        AcGePoint3d second;   ///< the first is the origin
        const char* expected; ///< of a block, spacing 3, angle 0
    } cases[] = {
        {"from start to end", "LINE|10 -9|20 0|11 9|21 0", {-1, 0, 0}, "0,3"},
        {"a line that runs back", "LINE|10 9|20 0|11 -9|21 0", {1, 0, 0}, "0,-3"},
        {"a line aslant", "LINE|10 0|20 0|11 3|21 4", {1, 0, 0}, "-2.4,1.8"},
        {"no length: by the second point", "LINE|10 9|20 0|30 1|11 9|21 0|31 5", {0, 1, 5}, "-3,0"},
        {"no line: by the second point", "LWPOLYLINE|90 2|70 0|10 -9|20 0|10 9|20 0", {-1, 0, 0}, "0,-3"},
        {"neither: to the left of the x axis", "CIRCLE|10 0|20 0|40 1", {0, 0, 7}, "0,3"},
    };
    for (const auto& each : cases) {
        DrawingText content = withBlocks();
        const Handle object = content.add("INSERT|2 Angle|10 3|20 4"), curve = content.add(each.curve);
        const OpenedDrawing drawing{content};
        EXPECT_EQ(
            alignObjectToGivenLine(drawing.id(object), 0, 3, true, origin, each.second, drawing.id(curve)),
            0);
        const AcDbObjectPointer<AcDbBlockReference> block{drawing.id(object)};
        EXPECT_EQ(told(block->position()), each.expected) << each.name;
    }
}

TEST(AlignAtPoint, ACurveThatIsRefusedStopsTheStep) {
    const Scene scene{oblique, 0};
    ASSERT_EQ(erase(*scene.drawing, scene.baseLine), Acad::eOk);
    const std::string before = scene.drawing->toBytes();
    const auto align = [&](AcDbObjectId curve) {
        return alignObjectToGivenLine(scene.objectId(), 1, 3, true, origin, {1, 0, 0}, curve);
    };
    EXPECT_EQ(align(scene.baseLineId()), Acad::eWasErased);
    EXPECT_EQ(align(AcDbObjectId::kNull), Acad::eNullObjectId);
    EXPECT_EQ(scene.drawing->toBytes(), before);
}

TEST(AlignAtPoint, AtTheCentreOfTheCircleNothingIsLost) {
    const Scene scene{oblique, 0};
    EXPECT_EQ(alignObjectToGivenCircle(scene.objectId(), 0, 3, true, origin, origin, 0), 0);
    EXPECT_EQ(told(scene.watched.motion().image({2.5, 4, 0})), "0,0");
}
} // namespace
} // namespace qx::tests
