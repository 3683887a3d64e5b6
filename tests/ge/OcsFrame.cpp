#include "ge/OcsFrame.h"

#include <gtest/gtest.h>

#include <random>

using qx::ge::OcsFrame;

namespace {

constexpr double limit = 1.0 / 64;

AcGeVector3d unitWith(double x, double y) { return {x, y, std::sqrt(1 - x * x - y * y)}; }

TEST(OcsFrame, takesItsAxesFromTheNormal) {
    const AcGeVector3d nearLimit = unitWith(limit - 1e-9, 0), beyondLimit = unitWith(limit + 1e-9, 0);
    const struct {
        const char* name;
        AcGeVector3d normal, x, y;
    } cases[] = {
        {"plain", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
        {"mirrored", {0, 0, -1}, {-1, 0, 0}, {0, 1, 0}},
        {"front view", {0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
        {"side view", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {"just within 1/64: from the world's Y", nearLimit, {nearLimit.z, 0, -nearLimit.x}, {0, 1, 0}},
        {"just beyond: from the world's Z", beyondLimit, {0, 1, 0}, {-beyondLimit.z, 0, beyondLimit.x}},
        {"y beyond the limit",
         unitWith(0, -limit - 1e-9),
         {1, 0, 0},
         {0, unitWith(0, limit + 1e-9).z, limit + 1e-9}},
        {"huge normal", {0, 1e300, 0}, {-1, 0, 0}, {0, 0, 1}},
        {"zero normal", {0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
        {"not a number", {NAN, 0, 1}, {1, 0, 0}, {0, 1, 0}},
    };
    for (const auto& c : cases) {
        const OcsFrame frame(c.normal);
        EXPECT_TRUE(frame.x.isEqualTo(c.x))
            << c.name << ": " << frame.x.x << ' ' << frame.x.y << ' ' << frame.x.z;
        EXPECT_TRUE(frame.y.isEqualTo(c.y))
            << c.name << ": " << frame.y.x << ' ' << frame.y.y << ' ' << frame.y.z;
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
        std::mt19937_64 random(seed);
        std::normal_distribution<double> number;
        const auto vector = [&] { return AcGeVector3d(number(random), number(random), number(random)); };
        const OcsFrame frame(vector());
        EXPECT_TRUE(frame.x.crossProduct(frame.y).isEqualTo(frame.z)) << "seed " << seed;
        const AcGePoint3d p = AcGePoint3d::kOrigin + vector();
        EXPECT_LT(frame.toOcs(frame.toWorld(p)).distanceTo(p), 1e-14) << "seed " << seed;
    }
}

} // namespace
