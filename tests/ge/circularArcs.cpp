#include "gearc2d.h"

#include <gtest/gtest.h>

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis, Z = AcGeVector3d::kZAxis;

TEST(CircularArcs, runFromTheirStartToTheirEnd) {
    const AcGePoint3d origin;
    const struct {
        const char* name;
        AcGeCircArc3d arc;
        AcGePoint3d start, end;
        double endAngle;
    } cases[] = {
        {"full circle", {{1, 2, 3}, Z, 2}, {3, 2, 3}, {3, 2, 3}, 2 * pi},
        {"seen from below", {origin, -Z, 2}, {-2, 0, 0}, {-2, 0, 0}, 2 * pi},
        {"quarter the other way", {origin, -Z, X, 2, 0, pi / 2}, {2, 0, 0}, {0, -2, 0}, pi / 2},
        {"over the reference", {origin, Z, Y, 2, 1.5 * pi, pi / 2}, {2, 0, 0}, {-2, 0, 0}, 2.5 * pi},
        {"whole turns aside", {origin, Z, X, 2, 7 * pi, 0.5 * pi}, {-2, 0, 0}, {0, 2, 0}, 8.5 * pi},
        {"standing, long normal", {origin, Y * 9, Z * 5, 2, 0, pi / 2}, {0, 0, 2}, {2, 0, 0}, pi / 2},
        {"slanting reference", {origin, Z, X + Z * 4, 2, 0, pi}, {2, 0, 0}, {-2, 0, 0}, pi},
        {"reference along the normal", {origin, Z, Z, 2, 0, pi}, {2, 0, 0}, {-2, 0, 0}, pi},
        {"no normal", {origin, X * 0, X, 2, 0, pi / 2}, {2, 0, 0}, {0, 2, 0}, pi / 2},
        {"equal angles", {origin, Z, X, 2, pi, pi}, {-2, 0, 0}, {-2, 0, 0}, 3 * pi},
        {"no radius", {{1, 2, 3}, Z, 0}, {1, 2, 3}, {1, 2, 3}, 2 * pi},
    };
    for (const auto& c : cases) {
        EXPECT_LE(c.arc.startPoint().distanceTo(c.start), 1e-14) << c.name;
        EXPECT_LE(c.arc.endPoint().distanceTo(c.end), 1e-14) << c.name;
        EXPECT_DOUBLE_EQ(c.arc.endAng(), c.endAngle) << c.name;
        EXPECT_TRUE(c.arc.normal().isUnitLength() && c.arc.refVec().isUnitLength()) << c.name;
    }
}

TEST(CircularArcs, haveNearestPoints) {
    const AcGeCircArc3d upper{{0, 0, 0}, Z, X, 10, 0, pi}, left{{0, 0, 0}, Z, Y, 10, 0, pi};
    const AcGeCircArc3d circle{{0, 0, 0}, Z, 10}, standing{{0, 0, 0}, Y, X, 10, 0, 2 * pi};
    const struct {
        const char* name;
        AcGeCircArc3d arc;
        AcGePoint3d from, nearest;
    } cases[] = {
        {"outside", circle, {30, 40, 0}, {6, 8, 0}},
        {"on the axis", circle, {0, 0, 5}, {10, 0, 0}},
        {"beside a standing circle", standing, {0, 7, 20}, {0, 0, 10}},
        {"past the start", upper, {8, -3, 0}, {10, 0, 0}},
        {"past the end", upper, {-8, -3, 0}, {-10, 0, 0}},
        {"across the angle of half a turn", left, {-5, 0, 0}, {-10, 0, 0}},
        {"not across it", left, {5, -0.1, 0}, {0, -10, 0}},
        {"no radius", {{1, 2, 3}, Z, 0}, {4, 6, 3}, {1, 2, 3}},
    };
    for (const auto& c : cases) {
        const AcGePoint3d nearest = c.arc.closestPointTo(c.from);
        EXPECT_LE(nearest.distanceTo(c.nearest), 1e-13) << c.name << ": " << nearest.x << ' ' << nearest.y;
        EXPECT_NEAR(c.arc.distanceTo(c.from), c.from.distanceTo(c.nearest), 1e-13) << c.name;
    }
}

TEST(CircularArcs, areHitWithinTheTolerance) {
    AcGeTol wide;
    wide.setEqualPoint(3.0);
    const AcGeCircArc3d half{{0, 0, 0}, Z, X, 100, 0, pi};
    const struct {
        const char* name;
        AcGePoint3d at;
        bool isNear, isExact;
    } cases[] = {
        {"2.9 outside", {0, 102.9, 0}, true, false},
        {"3.1 outside", {0, 103.1, 0}, false, false},
        {"2.9 past the end", {-100, -2.9, 0}, true, false},
        {"3.1 past the end", {-100, -3.1, 0}, false, false},
        {"3.1 above", {0, 100, 3.1}, false, false},
        {"the part that is not drawn", {0, -100, 0}, false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(half.isOn(c.at, wide), c.isNear) << c.name;
        EXPECT_EQ(half.isOn(c.at), c.isExact) << c.name;
    }
}

TEST(CircularArcs, inAPlaneRunEitherWay) {
    const AcGeVector2d up = AcGeVector2d::kYAxis;
    const struct {
        const char* name;
        AcGeCircArc2d arc;
        AcGePoint2d start, end, from, nearest;
    } cases[] = {
        {"unit circle", {}, {1, 0}, {1, 0}, {3, 4}, {0.6, 0.8}},
        {"quarter", {{0, 0}, 2, 0, pi / 2}, {2, 0}, {0, 2}, {9, -1}, {2, 0}},
        {"quarter clockwise", {{0, 0}, 2, 0, pi / 2, up, true}, {0, 2}, {2, 0}, {-9, 1}, {0, 2}},
        {"quarter from above", {{0, 0}, 2, 0, pi / 2, up * 7}, {0, 2}, {-2, 0}, {-3, 4}, {-1.2, 1.6}},
        {"no reference", {{0, 0}, 2, 0, pi / 2, up * 0}, {2, 0}, {0, 2}, {3, 4}, {1.2, 1.6}},
    };
    for (const auto& c : cases) {
        EXPECT_LE(c.arc.startPoint().distanceTo(c.start), 1e-14) << c.name;
        EXPECT_LE(c.arc.endPoint().distanceTo(c.end), 1e-14) << c.name;
        EXPECT_LE(c.arc.closestPointTo(c.from).distanceTo(c.nearest), 1e-14) << c.name;
        EXPECT_TRUE(c.arc.isOn(c.nearest)) << c.name;
        EXPECT_FALSE(c.arc.isOn(c.from)) << c.name;
    }
    EXPECT_TRUE(AcGeCircArc2d({0, 0}, 2, 0, 1, up, true).isClockWise());
    EXPECT_FALSE(AcGeCircArc2d().isClockWise());
}

} // namespace
