#include "shape/NearestSink.h"
#include "shape/arcs.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

#include <functional>

using namespace qx::shape;

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis, Z = AcGeVector3d::kZAxis;

EllipticArc ellipse(double start, double sweep) { return ellipticArc({0, 0, 0}, X * 5, Y * 3, start, sweep); }

struct NearestCase {
    const char* name;
    AcGePoint3d from;
    std::function<void(Sink&)> draw;
    AcGePoint3d foot; ///< z not a number: two are possible
};

std::function<void(Sink&)> segment(const AcGePoint3d& a, const AcGePoint3d& b) {
    return [=](Sink& sink) { sink.segment({a, b}); };
}
std::function<void(Sink&)> arc(const EllipticArc& a) {
    return [=](Sink& sink) { sink.arc(a); };
}
std::function<void(Sink&)> text(const AcGeVector3d& along, const AcGeVector3d& up) {
    return [=](Sink& sink) { sink.text({{1, 1, 4}, along, up, {4, 0, 4, 0, 1, false}, {}, nullptr}); };
}

std::function<void(Sink&)> endless(bool goesBothWays, const AcGeVector3d& along) {
    return [=](Sink& sink) { sink.endless({{1, 1, 0}, along, goesBothWays}); };
}

TEST(Nearest, findsTheFoot) {
    const NearestCase cases[] = {
        {"beside a segment", {3, 5, 0}, segment({0, 0, 0}, {10, 0, 10}), {3, 0, 3}},
        {"of no length", {3, 4, 0}, segment({1, 1, 0}, {1, 1, 0}), {1, 1, 0}},
        {"heights don't count", {0, 1, 100}, segment({-1, 0, 7}, {1, 0, 7}), {0, 0, 7}},
        {"beside a ray", {1e6, 5, 0}, endless(false, X * 0.1), {1e6, 1, 0}},
        {"behind a ray", {-3, 4, 0}, endless(false, X), {1, 1, 0}},
        {"beside a line without ends", {-3, 4, 0}, endless(true, X + Z), {-3, 1, -4}},
        {"above a ray that stands upright", {3, 4, 0}, endless(false, Z), {1, 1, 0}},
        {"arc turned away", {0, -50, 0}, arc(circleArc({0, 0, 0}, X, Y, 10, 0, pi * 0.75)), {10, 0, 0}},
        {"on the long axis inside", {1, 0, 0}, arc(ellipse(0, pi)), {1.5625, 2.849753, 0}},
        {"centre of an ellipse", {0, 0, 0}, arc(ellipse(pi, pi)), {0, -3, 0}},
        {"ellipse seen on edge", {2, 1, 0}, arc(fullCircle({0, 0, 0}, X, Z, 10)), {2, 0, NAN}},
        {"arc shrunk to a point", {3, 4, 0}, arc(fullCircle({1, 1, 0}, X, Y, 0)), {1, 1, 0}},
        {"inside mirrored text", {-1, 1.5, 0}, text(-X, Y), {-1, 1.5, 4}},
        {"text seen on edge", {9, 1, 0}, text(X, Z), {5, 1, NAN}},
    };
    for (const auto& c : cases) {
        NearestSink sink(c.from);
        c.draw(sink);
        const AcGePoint3d& foot = sink.foot();
        EXPECT_NEAR(std::hypot(foot.x - c.foot.x, foot.y - c.foot.y), 0, 1e-6) << c.name;
        EXPECT_TRUE(foot.z == c.foot.z || std::isnan(c.foot.z)) << c.name;
        EXPECT_DOUBLE_EQ(sink.distance(), std::hypot(foot.x - c.from.x, foot.y - c.from.y)) << c.name;
    }
}

TEST(Nearest, keepsTheBestWithinItsLimit) {
    NearestSink sink({0, 0, 0}, 5);
    segment({6, -1, 0}, {6, 1, 0})(sink);
    arc(fullCircle({0, 0, 0}, X, Y, 6))(sink);
    EXPECT_FALSE(sink.hasFoot());
    EXPECT_EQ(sink.distance(), 5);
    segment({4, -1, 0}, {4, 1, 0})(sink);
    segment({-4, -1, 0}, {-4, 1, 0})(sink);
    EXPECT_TRUE(sink.hasFoot() && sink.foot().isEqualTo({4, 0, 0})) << "the first of two equally near";
    EXPECT_FALSE(sink.isFull());
    segment({-4, 0, 0}, {4, 0, 0})(sink);
    EXPECT_TRUE(sink.isFull());
}

TEST(Nearest, passesOverWhatIsNotFiniteOrBlank) {
    NearestSink sink({0, 0, 0});
    for (const double odd : {static_cast<double>(NAN), static_cast<double>(INFINITY), 1e300}) {
        segment({odd, 0, 0}, {-odd, -odd, 0})(sink);
        arc(EllipticArc{{odd, 1, 0}, {odd, 3, 0}, {1, odd, 0}, 1, std::cos(1), std::sin(1)})(sink);
        arc(EllipticArc{{1, 1, 0}, {1, 0, 0}, {0, 1, 0}, odd, odd, odd})(sink);
        text({odd, 0, 0}, {0, odd, 0})(sink);
    }
    sink.text({{0, 0, 0}, X, Y, {2, 0, 0, 0, 0, true}, {}, nullptr});
    EXPECT_FALSE(std::isnan(sink.distance()));
    EXPECT_FALSE(std::isnan(sink.foot().x));
}

// Never farther than the nearest of many points of the arcs, and always a point of one.
TEST(NearestLaw, arcsAreAsNearAsTheirPoints) {
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        shapes::Random random(seed);
        const EllipticArc arcs[] = {random.arc(), random.arc()};
        const AcGePoint3d from = random.oneIn(3) ? arcs[0].centre + random.vector(1) : random.point(25);
        NearestSink sink(from);
        double nearest = INFINITY, offCurve = INFINITY, step = 0;
        for (const EllipticArc& arc : arcs) sink.arc(arc);
        for (const EllipticArc& arc : arcs) {
            step = std::max(step, shapes::sampleDistance(arc));
            for (const AcGePoint3d& p : shapes::samplesOf(arc)) {
                nearest = std::min(nearest, std::hypot(p.x - from.x, p.y - from.y));
                offCurve = std::min(offCurve, p.distanceTo(sink.foot()));
            }
        }
        ASSERT_LE(sink.distance(), nearest + 1e-9) << "seed " << seed;
        ASSERT_LE(offCurve, step) << "seed " << seed;
    }
}

} // namespace
