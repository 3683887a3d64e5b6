#include "shape/arcs.h"
#include "shape/boxText.h"

#include <gtest/gtest.h>

#include <array>

using namespace qx::shape;

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis, Z = AcGeVector3d::kZAxis;

TEST(Arcs, runFromTheirStartInTheirDirection) {
    const struct {
        const char* name;
        EllipticArc arc;
        const char* points; ///< start, middle and end
    } cases[] = {
        {"quarter", circleArc({1, 0, 0}, X, Y, 2, 0, pi / 2), "3,0 2.414214,1.414214 1,2 "},
        {"clockwise", circleArc({0, 0, 0}, X, Y, 1, 0, -pi), "1,0 0,-1 -1,0 "},
        {"mirrored plane", circleArc({0, 0, 0}, -X, Y, 1, 0, pi), "-1,0 0,1 1,0 "},
        {"full turn", circleArc({0, 0, 5}, X, Y, 1, pi / 2, fullTurn), "0,1,5 0,-1,5 0,1,5 "},
        {"more than a turn", circleArc({0, 0, 0}, X, Y, 1, 0, 7), "1,0 -1,0 1,0 "},
        {"ellipse", ellipticArc({0, 0, 0}, X * 4, Y, pi / 2, pi), "0,1 -4,0 0,-1 "},
    };
    for (const auto& c : cases) {
        const AcGePoint3d middle = c.arc.at(std::cos(c.arc.sweep / 2), std::sin(c.arc.sweep / 2));
        EXPECT_EQ(shapes::pointsText(std::array{c.arc.start(), middle, c.arc.end()}), c.points) << c.name;
        EXPECT_EQ(c.arc.isClosed(), c.arc.sweep == fullTurn) << c.name;
    }
}

TEST(Arcs, bulgesBowToTheRightOfACounterClockwiseChord) {
    const double big = std::tan(3 * pi / 8), small = std::tan(pi / 8); // 270 and 90 degrees
    const struct {
        const char* name;
        AcGePoint3d end; // from the origin
        double bulge;
        AcGeVector3d normal;
        AcGePoint3d middle;
    } cases[] = {
        {"half circle clockwise", {2, 0, 0}, -1, Z, {1, 1, 0}},
        {"half circle seen from below", {2, 0, 0}, 1, -Z, {1, 1, 0}},
        {"quarter", {2, 0, 0}, small, Z, {1, -small, 0}},
        {"three quarters", {2, 0, 0}, big, Z, {1, -big, 0}},
        {"in a standing plane", {0, 0, 4}, 0.5, X, {0, 1, 2}},
        {"hardly bent", {2, 0, 0}, 1e-5, Z, {1, -1e-5, 0}},
        {"all but closed", {2e-5, 0, 0}, 1e5, Z, {1e-5, -1, 0}},
    };
    for (const auto& c : cases) {
        const EllipticArc arc = arcFromBulge({0, 0, 0}, c.end, c.bulge, c.normal);
        const double rounding = 1e-15 * arc.u.length();
        EXPECT_LE(arc.start().distanceTo({0, 0, 0}), rounding) << c.name;
        EXPECT_LE(arc.end().distanceTo(c.end), 4 * rounding) << c.name;
        const AcGePoint3d middle = arc.at(std::cos(arc.sweep / 2), std::sin(arc.sweep / 2));
        EXPECT_LE(middle.distanceTo(c.middle), 1e-14 + 4 * rounding) << c.name;
        EXPECT_NEAR(arc.sweep, 4 * std::atan(std::abs(c.bulge)), 1e-15) << c.name;
        EXPECT_NEAR(arc.cosSweep, std::cos(arc.sweep), 1e-14) << c.name;
        EXPECT_NEAR(arc.sinSweep, std::sin(arc.sweep), 1e-14) << c.name;
    }
    EXPECT_TRUE(isStraight(0) && isStraight(-1e-9) && isStraight(NAN) && !isStraight(-1e-7));
}

TEST(Arcs, sweepIsTheCounterClockwiseWay) {
    const struct {
        const char* name;
        double start, end, sweep;
    } cases[] = {
        {"across zero", 6, 1, fullTurn - 5},
        {"equal angles: a full turn", 2, 2, fullTurn},
        {"zero to a rounded full turn", 0, 6.283185307179587, fullTurn},
        {"beyond a turn", 1, 2 + 2 * fullTurn, 1},
    };
    for (const auto& c : cases) EXPECT_NEAR(sweepBetween(c.start, c.end), c.sweep, 1e-14) << c.name;
    EXPECT_TRUE(circleArc({}, X, Y, 1, 0, sweepBetween(0, 6.283185307179587)).isClosed());
}

} // namespace
