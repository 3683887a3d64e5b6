#include "shape/WindowSink.h"
#include "shape/arcs.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

using namespace qx::shape;

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis;

std::string answers(const WindowSink& sink) {
    return sink.allInside() ? (sink.anyTouches() ? "inside" : "inside without touching")
                            : (sink.anyTouches() ? "touches" : "apart");
}

template <class Primitive> struct WindowCase {
    const char* name;
    Primitive primitive;
    const char* answer;
};

// All windows here reach from (0, 0) to (10, 10).
template <class Primitive, std::size_t count>
void check(const WindowCase<Primitive> (&cases)[count], void (Sink::*see)(const Primitive&)) {
    for (const auto& c : cases) {
        WindowSink sink({10, 0, 5}, {0, 10, -5});
        (sink.*see)(c.primitive);
        EXPECT_EQ(answers(sink), c.answer) << c.name;
    }
}

TEST(Window, seesSegments) {
    const WindowCase<Segment> cases[] = {
        {"on the border", {{0, 0, 0}, {0, 10, 0}}, "inside"},
        {"across a corner", {{-1, 2, 0}, {2, -1, 0}}, "touches"},
        {"through a corner point", {{-1, 1, 0}, {1, -1, 0}}, "touches"},
        {"past a corner", {{-1, 0.9, 0}, {0.9, -1, 0}}, "apart"},
        {"ends before the border", {{-5, 5, 0}, {-0.001, 5, 0}}, "apart"},
        {"not finite", {{5, 5, 0}, {INFINITY, 5, 0}}, "apart"},
    };
    check(cases, &Sink::segment);
}

TEST(Window, seesArcs) {
    const auto circle = [](double x, double y, double radius) { return fullCircle({x, y, 0}, X, Y, radius); };
    const WindowCase<EllipticArc> cases[] = {
        {"touching from outside", circle(-2, 5, 2), "touches"},
        {"box overlaps, curve passes the corner", circle(-2, -2, 2.5), "apart"},
        {"the part inside is not drawn", circleArc({5, -1, 0}, X, Y, 2, pi * 0.9, pi * 1.2), "apart"},
        {"drawn part inside only", circleArc({5, 0, 0}, X, Y, 2, 0, pi), "inside"},
        {"flat ellipse right across", ellipticArc({5, 5, 0}, X * 9, Y * 0, 0, fullTurn), "touches"},
        {"steep line of an ellipse on edge", ellipticArc({5, 5, 0}, Y * 9, Y * 0, 0, fullTurn), "touches"},
        {"not finite", circle(5, 5, NAN), "apart"},
    };
    check(cases, &Sink::arc);
}

TEST(Window, seesTextAsFilledBoxes) {
    const auto run = [](double x, double y, const AcGeVector3d& along, const AcGeVector3d& up) {
        return TextRun{{x, y, 0}, along, up, {4, 0, 4, 0, 1, false}, {}, nullptr};
    };
    const WindowCase<TextRun> cases[] = {
        {"inside", run(3, 3, X, Y), "inside"},
        {"window within the text", run(-10, -10, X * 10, Y * 30), "touches"},
        {"slanting past a corner", run(-4, 1.2, X - Y, X * -0.7 - Y * 0.7), "apart"},
        {"mirrored, past a corner", run(0, -2.8, Y - X, X * -0.7 - Y * 0.7), "apart"},
        {"slanting over a corner", run(-3, 3.2, X - Y, X * -0.7 - Y * 0.7), "touches"},
        {"seen on edge, across", run(-1, 5, X * 5, AcGeVector3d::kZAxis), "touches"},
        {"blank", TextRun{{5, 5, 0}, X, Y, {4, 0, 0, 0, 0, true}, {}, nullptr}, "apart"},
        {"not finite", run(NAN, 3, X, Y), "apart"},
    };
    check(cases, &Sink::text);
}

TEST(Window, seesEndlessLines) {
    const WindowCase<Endless> cases[] = {
        {"from far away", {{-1e6, 5, 0}, X * 1e-3}, "touches"},
        {"the other way", {{-1, 5, 0}, -X}, "apart"},
        {"the other way, without ends", {{-1, 5, 0}, -X, true}, "touches"},
        {"from within is never inside", {{5, 5, 0}, X}, "touches"},
        {"through a corner point", {{-1, 1, 0}, X - Y}, "touches"},
        {"past a corner", {{-1, 0.9, 0}, X - Y, true}, "apart"},
        {"along the border", {{0, -3, 0}, Y}, "touches"},
        {"standing upright", {{5, 5, 0}, AcGeVector3d::kZAxis}, "touches"},
        {"standing upright outside", {{5, 11, 0}, AcGeVector3d::kZAxis}, "apart"},
        {"not finite", {{5, 5, 0}, X * INFINITY}, "apart"},
    };
    check(cases, &Sink::endless);
}

TEST(Window, answersForAllPrimitivesTogether) {
    WindowSink sink({0, 0, 0}, {10, 10, 0});
    EXPECT_EQ(answers(sink), "apart") << "nothing seen";
    sink.segment({{1, 1, 0}, {2, 2, 0}});
    EXPECT_EQ(answers(sink), "inside");
    EXPECT_FALSE(sink.isFull());
    sink.segment({{20, 20, 0}, {30, 30, 0}});
    EXPECT_EQ(answers(sink), "touches");
    EXPECT_TRUE(sink.isFull());
}

TEST(WindowLaw, answersAgreeWithManyPointsOfTheArc) {
    for (unsigned seed = 1; seed <= 1500; ++seed) {
        shapes::Random random(seed);
        const EllipticArc arc = random.arc();
        const AcGePoint3d a = random.point(15), b = random.point(15);
        WindowSink sink(a, b);
        sink.arc(arc);
        const AcGePoint3d middle = a + (b - a) / 2;
        double least = INFINITY, most = -INFINITY; // how far out the samples are; negative inside
        for (const AcGePoint3d& p : shapes::samplesOf(arc)) {
            const double out = std::max(std::abs(p.x - middle.x) - std::abs(a.x - b.x) / 2,
                                        std::abs(p.y - middle.y) - std::abs(a.y - b.y) / 2);
            least = std::min(least, out);
            most = std::max(most, out);
        }
        const double step = shapes::sampleDistance(arc);
        ASSERT_TRUE(least >= -1e-9 || sink.anyTouches()) << "seed " << seed;
        ASSERT_FALSE(least > step && sink.anyTouches()) << "seed " << seed;
        ASSERT_FALSE(most > 1e-9 && sink.allInside()) << "seed " << seed;
        ASSERT_TRUE(most >= -step || sink.allInside()) << "seed " << seed;
    }
}

} // namespace
