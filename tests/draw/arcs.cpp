#include "shape/arcs.h"
#include "../shape/randomShapes.h"
#include "draw/SvgPen.h"
#include "pathPoints.h"
#include "shape/ExtentsSink.h"

#include <gtest/gtest.h>

using namespace qx::draw;
using namespace qx::shape;

namespace {

std::string drawn(const EllipticArc& arc, const PictureFrame& frame) {
    SvgPen pen{frame};
    pen.arc(arc);
    std::string svg;
    pen.putElements(svg, "");
    return pictures::pathIn(svg);
}

PictureFrame frameOf(const EllipticArc& arc) {
    ExtentsSink extents;
    extents.arc(arc);
    return PictureFrame{extents.box()};
}

/// How far, in pixels, the drawn path and the arc's own points are from each other at most.
double deviation(const EllipticArc& arc, const PictureFrame& frame, const pictures::PathPoints& path) {
    std::vector<AcGePoint2d> samples;
    constexpr int count = 700;
    for (int i = 0; i <= count; ++i) {
        const double t = arc.sweep * i / count;
        samples.push_back(frame.toPicture(arc.at(std::cos(t), std::sin(t))));
    }
    double worst = 0;
    for (const AcGePoint2d& each : samples) worst = std::max(worst, pictures::distance(each, path.points));
    for (const AcGePoint2d& each : path.points) worst = std::max(worst, pictures::distance(each, samples));
    return worst;
}

void expectSame(const EllipticArc& arc, const std::string& name) {
    const PictureFrame frame = frameOf(arc);
    const std::string text = drawn(arc, frame);
    const pictures::PathPoints path{text};
    ASSERT_TRUE(path.isUnderstood) << name << ": " << text;
    EXPECT_EQ(path.moves, 1u) << name;
    EXPECT_LT(path.points.front().distanceTo(frame.toPicture(arc.start())), 0.001) << name;
    EXPECT_LT(path.points.back().distanceTo(frame.toPicture(arc.isClosed() ? arc.start() : arc.end())), 0.001)
        << name;
    EXPECT_LT(deviation(arc, frame, path), 0.15) << name << ": " << text;
}

constexpr double pi = std::numbers::pi;
const AcGePoint3d here{10, -7, 3};
const AcGeVector3d x{1, 0, 0}, y{0, 1, 0};

TEST(SvgArcs, PassWhereTheArcDoes) {
    const struct {
        const char* name;
        EllipticArc arc;
    } cases[] = {
        {"just under a half", circleArc(here, x, y, 900, 0.3, pi - 1e-4)},
        {"clockwise three quarters", circleArc(here, x, y, 2, 1, -1.5 * pi)},
        {"part of an ellipse, clockwise", ellipticArc(here, {8, 3, 0}, {1.5, -4, 0}, 2, 4)},
        {"axes that are not perpendicular", ellipticArc(here, {8, 3, 0}, {7, 4, 0}, 1, 5)},
        {"circle on edge", fullCircle(here, {0.6, 0.8, 0}, {0, 0, 1}, 5)},
        {"one to ten thousand", ellipticArc(here, {10000, 4000, 0}, {-0.4, 1, 0}, 0.2, 6)},
        {"nearly straight", arcFromBulge(here, here + x * 100, 1e-5, {0, 0, 1})},
        {"as straight as arcs may be", arcFromBulge(here, here + x * 100, 2e-8, {0, 0, 1})},
        {"tiny, far out", fullCircle({4e6, 3e6, 0}, x, y, 1e-3)},
    };
    for (const auto& c : cases) expectSame(c.arc, c.name);
}

TEST(SvgArcs, PassWhereAnyArcDoes) {
    shapes::Random random{20};
    for (int i = 0; i < 150; ++i) expectSame(random.arc(), "number " + std::to_string(i));
}

TEST(SvgArcs, SpendLittleOnTheUsual) {
    const struct {
        const char* name;
        EllipticArc arc;
        std::size_t pieces;
    } cases[] = {
        {"circle", fullCircle(here, x, y, 5), 4},
        {"turned quarter", circleArc(here, x, y, 5, 0.7, pi / 2), 1},
    };
    for (const auto& c : cases)
        EXPECT_EQ(pictures::PathPoints{drawn(c.arc, frameOf(c.arc))}.arcs, c.pieces) << c.name;
}

TEST(SvgArcs, LeaveOutWhatIsNoPlace) {
    const PictureFrame frame{Box{{0, 0, 0}, {1, 1, 0}}};
    const double nan = std::numeric_limits<double>::quiet_NaN(),
                 infinite = std::numeric_limits<double>::infinity();
    EXPECT_EQ(drawn(fullCircle({nan, 0, 0}, x, y, 1), frame), "");
    EXPECT_EQ(drawn(fullCircle(here, x, y, infinite), frame), "");
    EXPECT_EQ(drawn(fullCircle(here, x, y, nan), frame), "");
    EXPECT_EQ(drawn(fullCircle(here, x, y, 1e16), frame), "");
}

} // namespace
