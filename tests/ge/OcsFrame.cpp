#include "ge/OcsFrame.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

using qx::ge::OcsFrame;

namespace {

constexpr double limit = 1.0 / 64;

AcGeVector3d unitWith(double x, double y) { return {x, y, std::sqrt(1 - x * x - y * y)}; }

TEST(OcsFrame, takesItsAxesFromTheNormal) {
    const AcGeVector3d nearLimit = unitWith(limit - 1e-9, 0), beyondLimit = unitWith(limit + 1e-9, 0);
    const AcGeVector3d yBeyond = unitWith(0, -limit - 1e-9);
    const struct {
        const char* name;
        AcGeVector3d normal, x, y;
    } cases[] = {
        {"plain", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {"mirrored", {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
        {"front view", {0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
        {"just within 1/64: from the world's Y", nearLimit, {nearLimit.z, 0, -nearLimit.x}, {0, 1, 0}},
        {"just beyond: from the world's Z", beyondLimit, {0, 1, 0}, {-beyondLimit.z, 0, beyondLimit.x}},
        {"y beyond the limit", yBeyond, {1, 0, 0}, {0, yBeyond.z, limit + 1e-9}},
        {"huge normal", {0, 1e300, 0}, {-1, 0, 0}, {0, 0, 1}},
        {"zero normal", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        {"not a number", {NAN, 0, 1}, {1, 0, 0}, {0, 1, 0}},
    };
    for (const auto& c : cases) {
        const OcsFrame frame(c.normal);
        EXPECT_TRUE(frame.x.isEqualTo(c.x) && frame.y.isEqualTo(c.y)) << c.name;
    }
}

TEST(OcsFrame, changesNoBitOfUnmirroredCoordinates) {
    const OcsFrame frame(AcGeVector3d(0, 0, 1));
    const AcGePoint3d p(0.1, -1e300, INFINITY);
    EXPECT_EQ(frame.toWorld(p).x, p.x);
    EXPECT_EQ(frame.toOcs(p).y, p.y);
    EXPECT_EQ(frame.toWorld(p).z, p.z);
}

TEST(OcsFrame, isRightHandedAndGoesThereAndBack) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        shapes::Random random{seed};
        const OcsFrame frame(random.vector(1));
        EXPECT_TRUE(frame.x.crossProduct(frame.y).isEqualTo(frame.z)) << "seed " << seed;
        const AcGePoint3d p = random.point(1);
        EXPECT_LT(frame.toOcs(frame.toWorld(p)).distanceTo(p), 1e-14) << "seed " << seed;
    }
}

} // namespace
