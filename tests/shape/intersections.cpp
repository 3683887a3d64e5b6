#include "shape/IntersectionSink.h"
#include "shape/TransformSink.h"
#include "shape/arcs.h"
#include "shape/boxText.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>

using namespace qx::shape;

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis, Z = AcGeVector3d::kZAxis;

Segment line(const AcGePoint3d& start, const AcGePoint3d& end) { return {start, end, true, true}; }
Segment line(double x, double y, double endX, double endY) { return line({x, y, 0}, {endX, endY, 0}); }
Segment ray(double x, double y, double endX, double endY) {
    return {{x, y, 0}, {endX, endY, 0}, false, true};
}
EllipticArc extendable(EllipticArc arc) {
    arc.extends = true;
    return arc;
}
EllipticArc circle(double x, double y, double radius) { return fullCircle({x, y, 0}, X, Y, radius); }
EllipticArc arc(double x, double y, double radius, double startDegrees, double endDegrees) {
    return extendable(
        circleArc({x, y, 0}, X, Y, radius, startDegrees * pi / 180, (endDegrees - startDegrees) * pi / 180));
}
EllipticArc ellipse(double a, double b, double start = 0, double sweep = fullTurn) {
    return extendable(ellipticArc({0, 0, 0}, X * a, Y * b, start, sweep));
}

/// "1,2 3,4", or "-".
template <class Points> std::string text(const Points& points) {
    const std::string all = shapes::pointsText(points);
    return all.empty() ? "-" : all.substr(0, all.size() - 1);
}

struct PairCase {
    const char* name;
    Primitive a, b;
    std::string expected; ///< for the four modes, separated by "; "; or once for all
};

std::multiset<std::string> words(const std::string& points) {
    std::istringstream all{points};
    return {std::istream_iterator<std::string>{all}, {}};
}

// Each pair also with its operands swapped: the same points, in an order of their own.
template <std::size_t count> void check(const PairCase (&cases)[count]) {
    for (const PairCase& c : cases) {
        std::istringstream modes{c.expected};
        std::string expected;
        for (int mode = 0; mode < 4; ++mode) {
            std::getline(modes >> std::ws, expected, ';');
            const Operand a{c.a, mode & 1 ? Extent::extended : Extent::asDrawn};
            const Operand b{c.b, mode & 2 ? Extent::extended : Extent::asDrawn};
            EXPECT_EQ(text(intersections(a, b)), expected) << c.name << ", mode " << mode;
            EXPECT_EQ(words(text(intersections(b, a))), words(expected)) << c.name << ", swapped, " << mode;
        }
    }
}

TEST(Intersections, ofStraightCurves) {
    const double near = 3e-9, beyond = 3e-8; // coordinates here are about 10
    const PairCase cases[] = {
        // as drawn; a extended; b extended; both extended, or the same for all
        {"not at its start", ray(0, 0, 1, 0), line(-5, -5, -5, 6), "-"},
        {"gap within the tolerance", line(0, 0, 10, 0), line(10, near, 10, 5), "10,0"},
        {"gap beyond it", line(0, 0, 10, 0), line(10, beyond, 10, 5), "-; -; 10,0; 10,0"},
        {"passing at another height", line(0, 0, 10, 10), line({0, 10, 1}, {10, 0, 1}), "-"},
        {"meeting in space", line({0, 0, 0}, {10, 10, 10}), line({0, 10, 5}, {10, 0, 5}), "5,5,5"},
        {"overlapping", line(0, 0, 10, 0), line(15, 0, 5, 0), "5,0 10,0; 5,0 15,0; 0,0 10,0; -"},
        {"touching end to end", line(0, 0, 5, 0), line(9, 0, 5, 0), "5,0; 5,0 9,0; 0,0 5,0; -"},
        {"in line, apart", line(0, 0, 5, 0), line(6, 0, 9, 0), "-; 6,0 9,0; 0,0 5,0; -"},
        {"endless both ways", Endless{{0, 0, 0}, X * 0.001, true}, line(-7, -1, -7, 1), "-7,0"},
        {"endless one way", Endless{{0, 0, 0}, X * 1e9}, line(-7, -1, -7, 1), "-; -7,0; -; -7,0"},
        {"endless, far away", Endless{{0, 0, 0}, X + Y}, line(1e6, 0, 1e6, 2e6), "1000000,1000000"},
        {"endless, towards each other", Endless{{0, 0, 0}, X}, Endless{{9, 0, 0}, -X},
         "0,0 9,0; 9,0; 0,0; -"},
        {"endless and parallel", Endless{{0, 0, 0}, X}, Endless{{0, 1, 0}, X, true}, "-"},
        {"endless through a circle", Endless{{0, 3, 0}, X}, circle(0, 0, 5), "4,3; -4,3 4,3; 4,3; -4,3 4,3"},
        {"without a direction", Endless{{3, 0, 0}, {}}, line(0, 0, 9, 0), "3,0"},
        {"rays towards each other", ray(0, 0, 1, 0), ray(9, 0, 8, 0), "-; 8,0 9,0; 0,0 1,0; 0,0 9,0"},
    };
    check(cases);
}

TEST(Intersections, ofStraightCurvesAndArcs) {
    const PairCase cases[] = {
        {"right through a circle", line(-10, 3, 10, 3), circle(0, 0, 5), "-4,3 4,3"},
        {"tangent a hair inside", line(-1, 5 - 1e-9, 9, 5 - 1e-9), circle(0, 0, 5), "0,5"},
        {"tangent a hair outside", line(-1, 5 + 1e-9, 9, 5 + 1e-9), circle(0, 0, 5), "0,5"},
        {"no longer tangent", line(-1, 5 + 3e-8, 9, 5 + 3e-8), circle(0, 0, 5), "-"},
        {"tangent where the circle begins", line(5, -5, 5, 7), circle(0, 0, 5), "5,0"},
        {"tangent at the common end", line(5, -5, 5, 0), arc(0, 0, 5, 0, 90), "5,0"},
        {"arc extended", line(-10, 0, 10, 0), arc(0, 0, 5, 30, 120), "-; -; -5,0 5,0; -5,0 5,0"},
        {"arc of a polyline", line(-10, 3, 10, 3), circleArc({0, 0, 0}, X, Y, 5, 0, pi / 2), "4,3"},
        {"through the plane", line({3, 4, -5}, {3, 4, 5}), circle(0, 0, 5), "3,4"},
        {"slanting up to it", line({8, 0, 3}, {5.5, 0, 0.5}), circle(0, 0, 5), "-; 5,0; -; 5,0"},
        {"ellipse without width", line(5, -1, 5, 1), ellipse(10, 0), "5,0"},
        {"part of it", line(5, -1, 5, 1), ellipse(10, 0, pi / 2, pi), "-; -; 5,0; 5,0"},
        {"no radius", line(-1, 0, 1, 0), circle(0, 0, 0), "0,0"},
        {"a point upon the circle", line(3, 4, 3, 4), circle(0, 0, 5), "3,4"},
    };
    check(cases);
}

TEST(Intersections, ofArcs) {
    const PairCase cases[] = {
        {"two circles", circle(0, 0, 5), circle(6, 0, 5), "3,4 3,-4"},
        {"order along a clockwise one", circleArc({0, 0, 0}, X, Y, 5, 0, -fullTurn), circle(6, 0, 5),
         "3,-4 3,4"},
        {"touching from outside", circle(0, 0, 5), circle(8, 0, 3), "5,0"},
        {"nearly touching", circle(0, 0, 5), circle(8 + 1e-7, 0, 3), "-"},
        {"one within the other", circle(0, 0, 5), circle(1, 0, 3), "-"},
        {"the same circle", circle(0, 0, 5), circle(0, 0, 5), "-"},
        {"overlapping arcs", arc(0, 0, 5, 0, 180), arc(0, 0, 5, 90, 270), "0,5 -5,0; 0,5 0,-5; 5,0 -5,0; -"},
        {"arcs that share both ends", arc(0, 0, 5, 0, 180), arc(0, 0, 5, 180, 360),
         "5,0 -5,0; 5,0 -5,0; 5,0 -5,0; -"},
        {"overlapping twice", arc(0, 0, 5, 0, 270), arc(0, 0, 5, 180, 450),
         "5,0 0,5 -5,0 0,-5; 0,5 -5,0; 5,0 0,-5; -"},
        {"drawn apart", arc(0, 0, 5, 100, 200), arc(6, 0, 5, 100, 200), "-; 3,4; -; 3,-4 3,4"},
        {"planes that cross", circle(0, 0, 5), fullCircle({0, 0, 0}, X, Z, 5), "5,0 -5,0"},
        {"linked like a chain", circle(0, 0, 5), fullCircle({5, 0, 0}, X, Z, 5), "-"},
        {"circle and ellipse", circle(0, 0, 5), ellipse(std::sqrt(18), std::sqrt(32)), "3,4 -3,4 -3,-4 3,-4"},
        {"ellipse extended", circle(0, 0, 5), ellipse(5, 3, 1, 1), "-; -; 5,0 -5,0; 5,0 -5,0"},
        {"ellipse that is a circle", arc(0, 0, 5, 0, 90), ellipse(5, 5, pi / 4, pi),
         "3.535534,3.535534 0,5; 3.535534,3.535534 -3.535534,-3.535534; 5,0 0,5; -"},
        {"osculating at the long axis", circle(3.2, 0, 1.8), ellipse(5, 3), "5,0"},
    };
    check(cases);
}

TEST(Intersections, withTextAreThoseWithItsOutline) {
    const auto run = [](const AcGeVector3d& along, const AcGeVector3d& up, bool blank = false) {
        return TextRun{{0, 0, 0}, along, up, {4, 0, 4, 0, 2, blank}, {}, nullptr};
    };
    const PairCase cases[] = {
        {"ends inside", line(1, 9, 1, 1), run(X, Y), "1,2; 1,2 1,0; 1,2; 1,2 1,0"},
        {"along a side", line(-5, 2, 9, 2), run(X, Y), "0,2 4,2"},
        {"turned", line(-1, -9, -1, 9), run(Y, -X), "-1,0 -1,4"},
        {"the text is not extended", line(9, -9, 9, 9), run(X, Y), "-"},
        {"circle around a corner", circle(0, 0, 1), run(X, Y), "1,0 0,1"},
        {"circle across two sides", circle(2, 1, 1.25), run(X, Y), "2.75,2 1.25,2 1.25,0 2.75,0"},
        {"standing text", line({1, 9, 1}, {1, -9, 1}), run(X, Z), "-"},
        {"blank", line(1, 9, 1, -9), run(X, Y, true), "-"},
    };
    check(cases);
    const Operand across{line(1, 9, 1, -9)};
    EXPECT_EQ(text(intersections({run(X, Y)}, across)), "1,0 1,2") << "in order around the text";
}

TEST(Intersections, gatherAlongEitherOperand) {
    const auto gathered = [](IntersectionSink::Order order) {
        IntersectionSink sink({line(10, 0, 0, 0)}, Extent::asDrawn, order);
        sink.segment({{1, 1, 0}, {2, 0, 0}}); // a polyline with one corner upon the line
        sink.segment({{2, 0, 0}, {6, 4, 0}});
        sink.arc(circleArc({7, 4, 0}, X, Y, 1, pi, pi / 2));
        sink.segment({{8, 4, 0}, {8, -1, 0}});
        sink.segment({{8, -1, 0}, {2, 1, 0}}); // and a crossing of its own upon the line
        sink.segment({{2, 1, 0}, {2, -1, 0}});
        AcGePoint3dArray points;
        points.append({9, 9, 9});
        sink.appendTo(points);
        return text(points);
    };
    EXPECT_EQ(gathered(IntersectionSink::Order::alongCurve), "9,9,9 8,0 5,0 2,0");
    EXPECT_EQ(gathered(IntersectionSink::Order::asSeen), "9,9,9 2,0 8,0 5,0");
}

TEST(Intersections, ofPartsOfBlocksAreNotExtended) {
    IntersectionSink sink({line(5, -9, 5, 9)}, Extent::extended, IntersectionSink::Order::asSeen);
    TransformSink part(sink, AcGeMatrix3d::translation({1, 0, 0}));
    part.segment(line(0, 0, 1, 0));
    part.arc(arc(4, 0, 3, -60, 60));
    AcGePoint3dArray points;
    sink.appendTo(points);
    EXPECT_EQ(text(points), "-");
}

TEST(Intersections, ofOddNumbersAreNone) {
    const double odd[] = {NAN, INFINITY, 1e300, -1e300, 1e154, 1e-300, 0};
    for (const double a : odd)
        for (const double b : odd) {
            const Primitive shapes[] = {
                line(a, 0, 0, b),
                line(a, b, a, b),
                circle(a, 0, b),
                arc(0, 0, 1, a, b),
                EllipticArc{{0, 0, 0}, {a, 0, 0}, {0, b, 0}, 1, std::cos(1), std::sin(1)},
                EllipticArc{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, a, b, 0, true},
                TextRun{{a, 0, 0}, X, Y * b, {4, 0, 4, 0, 1, false}, {}, nullptr}};
            for (const Primitive& shape : shapes)
                for (const Primitive& other : shapes)
                    for (const Extent extent : {Extent::asDrawn, Extent::extended})
                        for (const AcGePoint3d& p : intersections({shape, extent}, {other, extent}))
                            EXPECT_TRUE(std::isfinite(p.x + p.y + p.z)) << a << ' ' << b;
        }
}

// ---- laws

/// From 0 at the start to 1 at the end.
AcGePoint3d pointAt(const Primitive& primitive, double t) {
    if (const auto* s = std::get_if<Segment>(&primitive)) return s->start + (s->end - s->start) * t;
    const auto& arc = std::get<EllipticArc>(primitive);
    return arc.at(std::cos(t * arc.sweep), std::sin(t * arc.sweep));
}

// By sampling and then narrowing down around the samples that are nearer than their neighbours: slow, but
// knows nothing of the curve.
double distanceTo(const Primitive& primitive, const AcGePoint3d& p) {
    constexpr int count = 400;
    const auto at = [&](double t) { return p.distanceTo(pointAt(primitive, t)); };
    double least = INFINITY;
    for (int i = 0; i <= count; ++i) {
        double step = 1.0 / count, best = i * step;
        if ((i > 0 && at(best - step) < at(best)) || (i < count && at(best + step) < at(best))) continue;
        for (; step > 1e-14; step /= 2)
            for (const double t : {best - step, best + step})
                if (t >= 0 && t <= 1 && at(t) < at(best)) best = t;
        least = std::min(least, at(best));
    }
    return least;
}

/// Two curves that often meet: mostly in one plane, which lies anywhere in space; the first one simple.
struct RandomPair {
    explicit RandomPair(shapes::Random& random) {
        const AcGeMatrix3d place =
            AcGeMatrix3d::rotation(random.number(0, 7), random.vector(1), random.point(9)) *
            AcGeMatrix3d::translation(random.vector(random.oneIn(4) ? 1e4 : 10));
        isFlat = !random.oneIn(5);
        first = placed(simple(random, isFlat), place);
        second = placed(random.oneIn(2) ? simple(random, isFlat) : Primitive{oval(random)}, place);
    }

    bool isFlat; ///< both in one plane
    Primitive first, second;

private:
    static AcGePoint3d flatPoint(shapes::Random& random, double size) {
        return {random.number(-size, size), random.number(-size, size), 0};
    }
    static Primitive simple(shapes::Random& random, bool isFlat) {
        const AcGePoint3d a = flatPoint(random, 8), b = flatPoint(random, 8);
        if (random.oneIn(2)) return isFlat ? Segment{a, b} : Segment{a, random.point(8)};
        const double sweep = random.oneIn(3) ? fullTurn : random.number(-6, 6);
        const AcGeVector3d y = isFlat ? Y : (Y + Z * random.number(-1, 1)).normal();
        return circleArc(a, X, y, random.number(0.5, 9), random.number(0, 6), sweep);
    }
    static EllipticArc oval(shapes::Random& random) {
        const AcGeVector3d u{random.number(-9, 9), random.number(-9, 9), 0};
        const AcGeVector3d v{random.number(-9, 9), random.number(-9, 9), 0};
        const double sweep = random.oneIn(3) ? fullTurn : random.number(0.1, 6);
        const bool isFull = sweep >= fullTurn;
        return {flatPoint(random, 4),        u, v, sweep, isFull ? 1 : std::cos(sweep),
                isFull ? 0 : std::sin(sweep)};
    }
    static Primitive placed(const Primitive& primitive, const AcGeMatrix3d& m) {
        if (const auto* s = std::get_if<Segment>(&primitive)) return Segment{m * s->start, m * s->end};
        const auto& a = std::get<EllipticArc>(primitive);
        return EllipticArc{m * a.centre, m * a.u, m * a.v, a.sweep, a.cosSweep, a.sinSweep};
    }
};

TEST(IntersectionsLaw, pointsLieOnBothCurvesInOrderAndSwappedAreTheSame) {
    int met = 0;
    for (unsigned seed = 1; seed <= 5000; ++seed) {
        shapes::Random random(seed);
        const RandomPair pair(random);
        const Operand a{pair.first}, b{pair.second};
        const double tolerance = contactTolerance(a, b);
        const Meetings found = intersections(a, b), swapped = intersections(b, a);
        ASSERT_EQ(found.count(), swapped.count()) << "seed " << seed;
        double position = -1e9;
        for (const AcGePoint3d& p : found) {
            ASSERT_LE(distanceTo(pair.first, p), 2 * tolerance) << "seed " << seed;
            ASSERT_LE(distanceTo(pair.second, p), 2 * tolerance) << "seed " << seed;
            ASSERT_GT(positionAlong(a, p, tolerance), position) << "seed " << seed;
            position = positionAlong(a, p, tolerance);
            const auto isSame = [&](const AcGePoint3d& q) { return p.distanceTo(q) <= 4 * tolerance; };
            ASSERT_TRUE(std::any_of(swapped.begin(), swapped.end(), isSame)) << "seed " << seed;
        }
        met += found.count() > 0;
    }
    EXPECT_GT(met, 1000);
}

// Curves in space that are laid through a point of an arc, in any direction and size, planes that are all
// but the same and arcs that are all but straight included.
TEST(IntersectionsLaw, meetingsInSpaceAreFound) {
    for (unsigned seed = 1; seed <= 3000; ++seed) {
        shapes::Random random(seed);
        const double size = std::pow(10, random.number(-6, 8));
        EllipticArc curve = random.arc();
        if (random.oneIn(3))
            curve = arcFromBulge({random.number(-9, 0), 1, 2}, {9, random.number(-9, 9), 2},
                                 std::pow(10, random.number(-7, 2)), Z);
        if (random.oneIn(3)) curve.v *= 1.5;
        const AcGeVector3d tilt = random.vector(1) * std::pow(10, random.number(-12, 0));
        const AcGeVector3d x = (curve.u.normal() + tilt).normal();
        const AcGeVector3d y = (curve.u.crossProduct(curve.v).normal() + tilt).crossProduct(x).normal();
        curve.centre = curve.centre * size;
        curve.u *= size;
        curve.v *= size;
        const double t = curve.sweep * random.number(0, 1);
        const AcGePoint3d p = curve.at(std::cos(t), std::sin(t));
        const AcGePoint3d centre = p - x * (size * random.number(0.3, 9));
        const Primitive through[] = {
            Segment{p - random.vector(9) * size, p},
            fullCircle(centre, x, y, centre.distanceTo(p)),
            circleArc(centre, x, y, centre.distanceTo(p), 0, random.number(0.5, 6)),
        };
        for (const Primitive& other : through) {
            const Operand first{curve}, second{other};
            const Meetings found = intersections(first, second);
            double nearest = INFINITY;
            for (const AcGePoint3d& q : found) nearest = std::min(nearest, p.distanceTo(q));
            // Where the curves part only slowly, the contact is as long as the root of the tolerance.
            const double reach = std::sqrt(contactTolerance(first, second) * 100 * size);
            ASSERT_LE(nearest, reach) << "seed " << seed << ", " << (&other - through) << ": " << text(found);
        }
    }
}

TEST(IntersectionsLaw, tangentsTouchOnce) {
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        shapes::Random random(seed);
        const AcGePoint3d centre = random.point(random.oneIn(3) ? 1e5 : 20);
        const AcGeMatrix3d turn = AcGeMatrix3d::rotation(random.number(0, 6), random.vector(1), centre);
        const AcGeVector3d x = turn * X, y = turn * Y;
        const double angle = random.number(0, fullTurn), radius = random.number(1, 50);
        const AcGeVector3d out = x * std::cos(angle) + y * std::sin(angle);
        const AcGeVector3d along = y * std::cos(angle) - x * std::sin(angle);
        const AcGePoint3d touch = centre + out * radius;
        const double other = random.number(0.3, 60);
        const Primitive tangents[] = {
            Segment{touch - along * other, touch + along * random.number(0, 60)},
            fullCircle(touch + out * other, x, y, other),
            // Flatter or rounder than the circle where they touch, but never alike.
            ellipticArc(touch + out * other, out * other, along * (other + random.number(0.1, 9)), 0,
                        fullTurn),
        };
        const Operand circle{circleArc(centre, x, y, radius, random.number(0, 6), fullTurn)};
        for (const Primitive& tangent : tangents) {
            const Meetings found = intersections(circle, {tangent});
            ASSERT_EQ(found.count(), 1) << "seed " << seed << ", " << (&tangent - tangents);
            ASSERT_LE(found.begin()->distanceTo(touch), 1e-5 * (radius + other)) << "seed " << seed;
        }
    }
}

} // namespace
