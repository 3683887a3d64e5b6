// The same curve as Bézier curves and as what is known otherwise has to give the same answers.
#include "shape/Bezier.h"
#include "shape/ExtentsSink.h"
#include "shape/IntersectionSink.h"
#include "shape/NearestSink.h"
#include "shape/Spline.h"
#include "shape/TransformSink.h"
#include "shape/WindowSink.h"
#include "shape/boxText.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

using namespace qx::shape;

namespace {

/// A quarter or less of an arc, exactly.
Bezier pieceOf(const EllipticArc& arc, double from, double to) {
    const double half = (to - from) / 2, middle = from + half;
    Bezier curve;
    curve.degree = 2;
    const auto at = [&](double t, double factor) {
        return arc.centre + (arc.u * std::cos(t) + arc.v * std::sin(t)) * factor;
    };
    curve.points[0] = {at(from, 1), 1};
    curve.points[1] = {at(middle, 1 / std::cos(half)), std::cos(half)};
    curve.points[2] = {at(to, 1), 1};
    return curve;
}

void show(const EllipticArc& arc, Sink& sink) {
    for (int i = 0; i < 4; ++i) sink.bezier(pieceOf(arc, arc.sweep * i / 4, arc.sweep * (i + 1) / 4));
}

TEST(BezierLaw, isLikeTheArcThatItIs) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        shapes::Random random{seed};
        const EllipticArc arc = random.arc();
        const AcGePoint3d from = random.point(15), corner = random.point(12), opposite = random.point(12);
        ExtentsSink box, arcBox;
        NearestSink nearest{from}, arcNearest{from};
        WindowSink window{corner, opposite}, arcWindow{corner, opposite};
        for (Sink* each :
             {static_cast<Sink*>(&arcBox), static_cast<Sink*>(&arcNearest), static_cast<Sink*>(&arcWindow)})
            each->arc(arc);
        for (Sink* each :
             {static_cast<Sink*>(&box), static_cast<Sink*>(&nearest), static_cast<Sink*>(&window)})
            show(arc, *each);
        for (unsigned axis = 0; axis < 3; ++axis) {
            ASSERT_NEAR(box.box().min[axis], arcBox.box().min[axis], 1e-9) << "seed " << seed;
            ASSERT_NEAR(box.box().max[axis], arcBox.box().max[axis], 1e-9) << "seed " << seed;
        }
        ASSERT_NEAR(nearest.distance(), arcNearest.distance(), 1e-5) << "seed " << seed;
        ASSERT_EQ(window.anyTouches(), arcWindow.anyTouches()) << "seed " << seed;
        ASSERT_EQ(window.allInside(), arcWindow.allInside()) << "seed " << seed;
    }
}

TEST(Bezier, isMetLikeTheArcThatItIs) {
    const EllipticArc circle{{1, 2, 0}, {5, 0, 0}, {0, 5, 0}, fullTurn, 1, 0};
    const struct {
        const char* name;
        Operand operand;
        const char* points;
    } cases[] = {
        {"through its middle", {Segment{{-9, 2, 0}, {9, 2, 0}}}, "-4,2 6,2 "},
        {"touching", {Segment{{-9, 7, 0}, {9, 7, 0}}}, "1,7 "},
        {"too short", {Segment{{-3, 2, 0}, {5, 2, 0}}}, ""},
        {"extended", {Segment{{-3, 2, 0}, {5, 2, 0}, true, true}, Extent::extended}, "-4,2 6,2 "},
        {"another height", {Segment{{-9, 2, 1}, {9, 2, 1}}}, ""},
        {"a circle", {EllipticArc{{7, 2, 0}, {5, 0, 0}, {0, 5, 0}, fullTurn, 1, 0}}, "4,6 4,-2 "},
        {"an equal circle", {circle}, "6,2 1,7 -4,2 1,-3 "}, // where its pieces end
    };
    for (const auto& each : cases) {
        IntersectionSink sink{each.operand, Extent::asDrawn, IntersectionSink::Order::alongCurve};
        show(circle, sink);
        AcGePoint3dArray points;
        sink.appendTo(points);
        EXPECT_EQ(shapes::pointsText(points), each.points) << each.name;
    }
}

/// Cox and de Boor's definition, straight from the book.
double basis(const std::vector<double>& knots, std::size_t i, int degree, double t) {
    const auto p = static_cast<std::size_t>(degree);
    if (p == 0) return knots[i] <= t && t < knots[i + 1] ? 1 : 0;
    const double left = knots[i + p] - knots[i], right = knots[i + p + 1] - knots[i + 1];
    return (left > 0 ? (t - knots[i]) / left * basis(knots, i, degree - 1, t) : 0) +
           (right > 0 ? (knots[i + p + 1] - t) / right * basis(knots, i + 1, degree - 1, t) : 0);
}

class Pieces final : public Sink {
public:
    void segment(const Segment&) override {}
    void arc(const EllipticArc&) override {}
    void text(const TextRun&) override {}
    void bezier(const Bezier& curve) override { all.push_back(curve); }
    std::vector<Bezier> all;
};

TEST(SplineLaw, isTheSumOfItsBasis) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        shapes::Random random{seed};
        const int degree = static_cast<int>(random.number(1, 6));
        const std::size_t count = static_cast<std::size_t>(degree) + 1 + seed % 7;
        std::vector<double> knots{random.number(-5, 5)};
        while (knots.size() < count + static_cast<std::size_t>(degree) + 1)
            knots.push_back(knots.back() + (random.oneIn(3) ? 0 : random.number(0.1, 3)));
        std::vector<WeightedPoint> points;
        for (std::size_t i = 0; i < count; ++i)
            points.push_back({random.point(9), seed % 2 ? 1 : random.number(0.2, 4)});
        Pieces pieces;
        std::size_t knot = 0, point = 0;
        drawSpline(
            degree, count, [&] { return knots[knot++]; }, [&] { return points[point++]; }, pieces);
        EXPECT_TRUE(knot == knots.size() - 1 && point == count) << "the last knot is nobody's";
        std::size_t piece = 0;
        for (auto i = static_cast<std::size_t>(degree); i < count; ++i) {
            if (!(knots[i] < knots[i + 1])) continue;
            for (const double t : {0.0, 0.3, 0.9}) {
                const double at = knots[i] + t * (knots[i + 1] - knots[i]);
                AcGeVector3d sum;
                double weights = 0;
                for (std::size_t k = 0; k < count; ++k) {
                    const double share = points[k].weight * basis(knots, k, degree, at);
                    sum += points[k].point.asVector() * share;
                    weights += share;
                }
                const AcGePoint3d expected = AcGePoint3d::kOrigin + sum / weights;
                ASSERT_LE(pieces.all.at(piece).at(t).distanceTo(expected), 1e-9) << "seed " << seed;
            }
            ++piece;
        }
        EXPECT_EQ(piece, pieces.all.size()) << "seed " << seed;
    }
}

/// Curvature to the left of a joint less that to the right, both as second derivatives by the chords' length.
AcGeVector3d jump(const Bezier& before, const Bezier& after) {
    const double a = before.start().distanceTo(before.end()), b = after.start().distanceTo(after.end());
    const auto second = [](const Bezier& c, std::size_t i) {
        return (c.points[i].point - c.points[i + 1].point) - (c.points[i + 1].point - c.points[i + 2].point);
    };
    const AcGeVector3d slopes = (before.points[3].point - before.points[2].point) / a -
                                (after.points[1].point - after.points[0].point) / b;
    return second(before, 1) / (a * a) - second(after, 0) / (b * b) + slopes;
}

TEST(ThroughPoints, isSmooth) {
    for (const bool isClosed : {false, true})
        for (const bool returns : {false, true}) {
            std::vector<AcGePoint3d> points{{0, 0, 0}, {4, 1, 0}, {4, 1, 0}, {5, 6, 2}, {-3, 4, 1}};
            if (returns) points.push_back(points[0]);
            const auto derivatives = derivativesThrough(points, {{0, 2, 0}, {}, isClosed});
            Pieces pieces;
            drawThrough(
                [&](auto&& visit) {
                    for (std::size_t i = 0; i < points.size(); ++i) visit(points[i], derivatives[i]);
                    if (isClosed) visit(points[0], derivatives[0]);
                },
                pieces);
            const auto& all = pieces.all;
            ASSERT_EQ(all.size(), isClosed || returns ? 4u : 3u);
            for (std::size_t i = 1; i < all.size() + isClosed; ++i)
                EXPECT_LE(jump(all[i - 1], all[i % all.size()]).length(), 1e-12) << isClosed << returns << i;
            if (isClosed) continue;
            const AcGeVector3d start = all[0].points[1].point - all[0].points[0].point;
            EXPECT_LE((start.normal() - AcGeVector3d::kYAxis).length(), 1e-12);
            const auto last = all.back().points;
            EXPECT_LE(((last[3].point - last[2].point) - (last[2].point - last[1].point)).length(), 1e-12);
        }
}

TEST(Bezier, ofHostileNumbersComesToAnEnd) {
    for (const double large : {double{INFINITY}, double{NAN}, 1e300}) {
        Bezier curve;
        curve.degree = Bezier::mostDegree;
        for (std::size_t i = 0; i < curve.controls().size(); ++i)
            curve.points[i] = {{i % 2 ? large : 0, i % 3 ? -large : 1, 0}, i % 2 ? 1e-9 : 1};
        ExtentsSink box;
        NearestSink nearest{{1, 1, 1}};
        WindowSink window{{-1, -1, 0}, {1, 1, 0}};
        IntersectionSink meeting{
            {Segment{{-9, 0, 0}, {9, 0, 0}}}, Extent::asDrawn, IntersectionSink::Order::asSeen};
        for (Sink* each : {static_cast<Sink*>(&box), static_cast<Sink*>(&nearest),
                           static_cast<Sink*>(&window), static_cast<Sink*>(&meeting)})
            each->bezier(curve);
        EXPECT_FALSE(window.allInside());
    }
}

} // namespace
