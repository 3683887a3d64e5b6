#include "shape/ExtentsSink.h"
#include "shape/TransformSink.h"
#include "shape/arcs.h"
#include "shape/boxText.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

using namespace qx::shape;

namespace {

constexpr double pi = std::numbers::pi;
const AcGeVector3d X = AcGeVector3d::kXAxis, Y = AcGeVector3d::kYAxis, Z = AcGeVector3d::kZAxis;

using shapes::text;

TextRun run(const AcGePoint3d& origin, const AcGeVector3d& along, const AcGeVector3d& up) {
    return {origin, along, up, {3, 0.5, 2.5, -0.25, 1, false}, {}, nullptr};
}

TEST(Extents, ofTextAreThoseOfItsInk) {
    const struct {
        const char* name;
        TextRun run;
        const char* box;
    } cases[] = {
        {"turned by a quarter", run({0, 0, 0}, Y, -X), "-1..0.25 0.5..2.5 0..0"},
        {"oblique", run({0, 0, 0}, X, X + Y), "0.25..3.5 -0.25..1 0..0"},
        {"standing", run({0, 0, 0}, X, Z), "0.5..2.5 0..0 -0.25..1"},
        {"blank", TextRun{{1, 2, 3}, X, Y, {2, 0, 0, 0, 0, true}, {}, nullptr}, "empty"},
    };
    for (const auto& c : cases) {
        ExtentsSink sink;
        sink.text(c.run);
        EXPECT_EQ(text(sink.box()), c.box) << c.name;
    }
}

TEST(Extents, gatherEverythingSeen) {
    ExtentsSink sink;
    EXPECT_EQ(text(sink.box()), "empty");
    EXPECT_EQ(sink.box().min.x, 1e20);
    EXPECT_EQ(sink.box().max.z, -1e20);
    sink.segment({{5, 1, 0}, {-5, 2, 3}});
    sink.segment({{0, NAN, 0}, {0, 0, NAN}});
    sink.arc(circleArc({0, 0, 0}, X, Y, INFINITY, 0, 1));
    EXPECT_EQ(text(sink.box()), "-5..5 0..2 0..3");
    sink.arc(circleArc({0, 0, 0}, X, Y, 10, pi / 3, pi / 3));
    sink.arc(arcFromBulge({3, -4, 0}, {3, -4, 0}, 1, Z)); // between equal points
    EXPECT_EQ(text(sink.box()), "-5..5 -4..10 0..3");
}

// The box of an arc's image against the box of the images of many of its points.
TEST(ExtentsLaw, boxesOfTransformedArcsAreTight) {
    for (unsigned seed = 1; seed <= 1000; ++seed) {
        shapes::Random random(seed);
        const EllipticArc arc = random.arc();
        const AcGeMatrix3d map = random.oneIn(4) ? AcGeMatrix3d{} : random.map();
        ExtentsSink extents;
        TransformSink{extents, map}.arc(arc);
        Box sampled;
        for (const AcGePoint3d& p : shapes::samplesOf(arc)) sampled.add(map * p);
        for (unsigned axis = 0; axis < 3; ++axis) {
            ASSERT_NEAR(extents.box().min[axis], sampled.min[axis], 1e-4) << "seed " << seed;
            ASSERT_NEAR(extents.box().max[axis], sampled.max[axis], 1e-4) << "seed " << seed;
            ASSERT_LE(extents.box().min[axis], sampled.min[axis] + 1e-12) << "seed " << seed;
            ASSERT_GE(extents.box().max[axis], sampled.max[axis] - 1e-12) << "seed " << seed;
        }
    }
}

} // namespace
