#include "gemat3d.h"
#include "shape/randomShapes.h"

#include <gtest/gtest.h>

#include <ostream>

void PrintTo(const AcGePoint3d& p, std::ostream* out) { *out << p.x << ',' << p.y << ',' << p.z; }

namespace {

constexpr double pi = std::numbers::pi;

AcGeMatrix3d frame(const AcGeVector3d& x, const AcGeVector3d& y, const AcGeVector3d& z) {
    return AcGeMatrix3d{}.setCoordSystem({1, 2, 3}, x, y, z);
}

TEST(Matrix, mapsPoints) {
    const auto turn = AcGeMatrix3d::rotation(pi / 2, {0, 0, 2});
    const auto move = AcGeMatrix3d::translation({10, 0, 0});
    const struct {
        const char* name;
        AcGeMatrix3d m;
        AcGePoint3d from, to;
    } cases[] = {
        {"third about the diagonal", AcGeMatrix3d::rotation(2 * pi / 3, {1, 1, 1}), {1, 2, 3}, {3, 1, 2}},
        {"about -Z the other way", AcGeMatrix3d::rotation(pi / 2, {0, 0, -1}), {1, 0, 0}, {0, -1, 0}},
        {"about a point", AcGeMatrix3d::rotation(pi, {0, 0, 1}, {2, 1, 9}), {3, 1, 0}, {1, 1, 0}},
        {"no axis, no turn", AcGeMatrix3d::rotation(1, {0, 0, 0}, {2, 1, 9}), {3, 1, 0}, {3, 1, 0}},
        {"the right factor acts first", move * turn, {1, 0, 0}, {10, 1, 0}},
        {"and so the other way round", turn * move, {1, 0, 0}, {0, 11, 0}},
        {"axes and origin", frame({0, 2, 0}, {-1, 0, 0}, {0, 0, 1}), {1, 1, 1}, {0, 4, 4}},
    };
    for (const auto& c : cases)
        EXPECT_PRED2([](const auto& a, const auto& b) { return a.isEqualTo(b); }, c.m * c.from, c.to)
            << c.name;
    EXPECT_TRUE((move * AcGeVector3d(1, 2, 3)).isEqualTo({1, 2, 3})) << "vectors don't travel";
}

TEST(Matrix, turningAboutZLeavesHeightsExactlyAlone) {
    for (int degrees = -720; degrees <= 720; ++degrees) {
        const auto turn = AcGeMatrix3d::rotation(degrees * pi / 180, AcGeVector3d::kZAxis, {1e5, -3e4, 0.3});
        ASSERT_EQ((turn * AcGePoint3d(123.456, 7.8, 0.1)).z, 0.1) << degrees;
    }
}

TEST(Matrix, knowsWhatItKeeps) {
    const struct {
        const char* name;
        AcGeMatrix3d m;
        double det;
        bool isUniform;
    } cases[] = {
        {"rotation", AcGeMatrix3d::rotation(1, {1, 2, 3}, {4, 5, 6}), 1, true},
        {"scaling", AcGeMatrix3d::scaling(-2), -8, true},
        {"uneven scaling", frame({2, 0, 0}, {0, 1, 0}, {0, 0, 1}), 2, false},
        {"shearing", frame({1, 0, 0}, {0.6, 0.8, 0}, {0, 0, 1}), 0.8, false},
        {"flattening", frame({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), 0, false},
    };
    for (const auto& c : cases) {
        EXPECT_NEAR(c.m.det(), c.det, 1e-12) << c.name;
        EXPECT_EQ(c.m.isUniScaledOrtho(), c.isUniform) << c.name;
        EXPECT_EQ(c.m.isSingular(), c.det == 0) << c.name;
        const AcGeMatrix3d expected = c.det == 0 ? c.m * c.m : AcGeMatrix3d::kIdentity;
        EXPECT_TRUE((c.m * c.m.inverse()).isEqualTo(expected)) << c.name;
    }
}

TEST(Matrix, productsAndInversesAgreeWithMappingStepByStep) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        shapes::Random random{seed};
        const AcGeMatrix3d a = random.map();
        const auto b = AcGeMatrix3d::rotation(random.number(-3, 3), random.vector(3), random.point(3));
        const AcGePoint3d p = random.point(3);
        EXPECT_LT(((a * b) * p).distanceTo(a * (b * p)), 1e-12) << "seed " << seed;
        EXPECT_TRUE(std::abs(a.det()) < 0.1 || (a.inverse() * (a * p)).distanceTo(p) < 1e-11) << seed;
    }
}

} // namespace
