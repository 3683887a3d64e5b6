#include "geline3d.h"
#include "gelnsg2d.h"
#include "gelnsg3d.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

namespace {

constexpr double far = 1e7;

AcGeLine2d line(double x1, double y1, double x2, double y2) {
    return {AcGePoint2d{x1, y1}, AcGePoint2d{x2, y2}};
}
AcGeLineSeg2d seg(double x1, double y1, double x2, double y2) {
    return {AcGePoint2d{x1, y1}, AcGePoint2d{x2, y2}};
}

TEST(Lines2d, meetInOnePointOrNot) {
    const struct {
        const char* name;
        AcGeLinearEnt2d a, b;
        bool meet;
        AcGePoint2d at;
    } cases[] = {
        {"crossing lines", line(0, 0, 1, 1), line(4, 0, 4, 9), true, {4, 4}},
        {"one segment ends before", seg(0, 0, 1, 1), line(4, 0, 4, 9), false, {}},
        {"end upon segment", seg(0, 0, 4, 0), seg(4, -1, 4, 1), true, {4, 0}},
        {"within the tolerance of an end", seg(0, 0, 4, 0), seg(4 + 9e-11, -1, 4 + 9e-11, 1), true, {4, 0}},
        {"beyond the tolerance", seg(0, 0, 4, 0), seg(4 + 2e-10, -1, 4 + 2e-10, 1), false, {}},
        {"parallel", line(0, 0, 1, 1), line(1, 0, 2, 1), false, {}},
        {"the same line", line(0, 0, 1, 1), line(2, 2, 5, 5), false, {}},
        {"hardly turned", line(0, 0, 1, 0), line(0, -1, 1, -1 + 1e-9), true, {1e9, 0}},
        {"degenerate upon the line", line(0, 0, 1, 1), line(2, 2, 2, 2), false, {}},
        {"short but not degenerate", line(0, 0, 1e-13, 0), line(5, -1, 5, 1), true, {5, 0}},
        {"not finite", line(0, 0, INFINITY, 1), line(5, -1, 5, 1), false, {}},
    };
    for (const auto& c : cases) {
        AcGePoint2d at{-7, -7};
        EXPECT_EQ(c.a.intersectWith(c.b, at), c.meet) << c.name;
        const AcGePoint2d expected = c.meet ? c.at : AcGePoint2d{-7, -7};
        EXPECT_LE(at.distanceTo(expected), 1e-7 * std::abs(expected.x) + 1e-9) << c.name << ": " << at.x;
        EXPECT_EQ(c.b.intersectWith(c.a, at), c.meet) << c.name << ", swapped";
        // The same in a tilted plane of space, once together and once at different heights.
        const auto tilted = [](const AcGeLinearEnt2d& l, double height) {
            const AcGePoint3d p{l.pointOnLine().x, l.pointOnLine().y, l.pointOnLine().x + height};
            return AcGeLine3d{p, AcGeVector3d{l.direction().x, l.direction().y, l.direction().x}};
        };
        if (c.a.isOn(c.a.pointOnLine() + c.a.direction() * 1e9) &&
            c.b.isOn(c.b.pointOnLine() + c.b.direction() * 1e9)) {
            AcGePoint3d found;
            EXPECT_EQ(tilted(c.a, 0).intersectWith(tilted(c.b, 0), found), c.meet) << c.name;
            EXPECT_FALSE(tilted(c.a, 0).intersectWith(tilted(c.b, 0.5), found)) << c.name << ", apart";
        }
    }
}

TEST(Lines3d, meetWithinTheirEndsOnly) {
    const AcGeLineSeg3d a{AcGePoint3d{0, 0, 0}, AcGePoint3d{2, 2, 2}};
    const struct {
        const char* name;
        AcGePoint3d start, end;
        bool meet;
    } cases[] = {
        {"crossing", {2, 0, 1}, {0, 2, 1}, true},
        {"at its end", {2, 2, 0}, {2, 2, 5}, true},
        {"passing at the tolerance", {2, 0, 1 + 1e-10}, {0, 2, 1 + 1e-10}, true},
        {"passing a little apart", {2, 0, 1 + 2e-10}, {0, 2, 1 + 2e-10}, false},
        {"past its end", {4, 0, 3}, {0, 4, 3}, false},
        {"along it", {1, 1, 1}, {3, 3, 3}, false},
    };
    for (const auto& c : cases) {
        const AcGeLineSeg3d b{c.start, c.end};
        AcGePoint3d at;
        EXPECT_EQ(a.intersectWith(b, at), c.meet) << c.name;
        EXPECT_EQ(b.intersectWith(a, at), c.meet) << c.name << ", swapped";
        EXPECT_TRUE(!c.meet || (a.distanceTo(at) <= 2e-10 && b.distanceTo(at) <= 2e-10)) << c.name;
    }
    AcGePoint3d at;
    const AcGeLine3d p{AcGePoint3d{far, far, far}, AcGePoint3d{far + 1, far + 3, far + 0.1}};
    const AcGeLine3d q{p.pointOnLine() + p.direction() * 0.7, AcGeVector3d{0.1, -1, 0.3}};
    EXPECT_TRUE(p.intersectWith(q, at)) << "the rounding of large coordinates";
}

TEST(Lines2d, haveNearestPoints) {
    const struct {
        const char* name;
        AcGeLinearEnt2d curve;
        AcGePoint2d from, nearest;
        bool isOn;
    } cases[] = {
        {"behind a line's point", line(0, 0, 1, 0), {-9, 0}, {-9, 0}, true},
        {"beside a segment", seg(0, 0, 10, 0), {9, 4}, {9, 0}, false},
        {"before its start", seg(0, 0, 10, 0), {-3, -4}, {0, 0}, false},
        {"within the tolerance past the end", seg(0, 0, 10, 0), {10 + 9e-11, 0}, {10, 0}, true},
        {"beyond it", seg(0, 0, 10, 0), {10 + 2e-10, 0}, {10, 0}, false},
        {"of no length", seg(1, 1, 1, 1), {4, 5}, {1, 1}, false},
        {"line through equal points", line(1, 1, 1, 1), {1, 1}, {1, 1}, true},
    };
    AcGeTol wide;
    wide.setEqualPoint(5);
    for (const auto& c : cases) {
        EXPECT_TRUE(c.curve.closestPointTo(c.from).isEqualTo(c.nearest)) << c.name;
        EXPECT_DOUBLE_EQ(c.curve.distanceTo(c.from), c.from.distanceTo(c.nearest)) << c.name;
        EXPECT_EQ(c.curve.isOn(c.from), c.isOn) << c.name;
        EXPECT_TRUE(c.curve.isOn(c.from, wide)) << c.name;
    }
}

TEST(Lines2d, havePerpendicularLines) {
    const struct {
        const char* name;
        AcGeLinearEnt2d curve;
        AcGePoint2d through;
        AcGeVector2d direction;
    } cases[] = {
        {"of a line", line(0, 0, 3, 4), {7, 1}, {-0.8, 0.6}},
        {"of a segment, away from it", seg(0, 0, 2, 0), {50, 3}, {0, 1}},
        {"of none", line(2, 2, 2, 2), {7, 1}, {0, 0}},
    };
    for (const auto& c : cases) {
        AcGeLine2d perp;
        c.curve.getPerpLine(c.through, perp);
        EXPECT_TRUE(perp.pointOnLine().isEqualTo(c.through)) << c.name;
        EXPECT_TRUE(perp.direction().isEqualTo(c.direction)) << c.name;
        EXPECT_FALSE(perp.isParallelTo(c.curve)) << c.name;
    }
}

TEST(Segments, keepTheirEnds) {
    AcGeLineSeg2d flat;
    flat.set(AcGePoint2d{1e7, 0.1}, AcGePoint2d{0.3, 1e-7});
    const AcGePoint2d start = flat.startPoint(), end = flat.endPoint();
    EXPECT_TRUE(start.x == 1e7 && start.y == 0.1 && end.x == 0.3 && end.y == 1e-7) << "to the bit";
    const AcGeLineSeg3d steep{AcGePoint3d{1, 2, 3}, AcGeVector3d{2, 4, 4}};
    EXPECT_TRUE(steep.endPoint().isEqualTo({3, 6, 7}));
    EXPECT_TRUE(steep.midPoint().isEqualTo({2, 4, 5}));
    EXPECT_DOUBLE_EQ(steep.length(), 6);
    EXPECT_TRUE(steep.direction().isEqualTo(AcGeVector3d{1, 2, 2} / 3));
    EXPECT_TRUE(AcGeLineSeg2d{}.midPoint().isEqualTo({0.5, 0}));
    EXPECT_EQ(AcGeLineSeg3d(AcGePoint3d{1, 2, 3}, AcGePoint3d{1, 2, 3}).length(), 0);
}

TEST(Mirroring, isHalfATurnAboutTheLine) {
    AcGeTol tol;
    tol.setEqualPoint(1e-12);
    tol.setEqualVector(1e-12);
    for (unsigned seed = 1; seed <= 100; ++seed) {
        shapes::Random random{seed};
        const AcGePoint3d origin = random.point(2);
        const AcGeVector3d along = random.vector(2);
        const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring(AcGeLine3d{origin, along});
        EXPECT_TRUE(mirror.isEqualTo(AcGeMatrix3d::rotation(std::numbers::pi, along, origin), tol)) << seed;
    }
    const AcGePoint3d image =
        AcGeMatrix3d::mirroring(AcGeLine3d{AcGePoint3d{3, 0, 0}, AcGeVector3d{0, 2, 0}}) *
        AcGePoint3d{5, 7, 1};
    EXPECT_TRUE(image.x == 1 && image.y == 7 && image.z == -1) << "to the bit about a main axis";
    const AcGeLine3d none{AcGePoint3d{1, 2, 3}, AcGePoint3d{1, 2, 3}};
    EXPECT_TRUE(AcGeMatrix3d::mirroring(none) == AcGeMatrix3d::kIdentity);
}

} // namespace
