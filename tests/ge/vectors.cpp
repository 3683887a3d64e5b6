#include "geassign.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr double pi = std::numbers::pi;

TEST(Points, areEqualUpToAndIncludingTheTolerance) {
    AcGeTol wide;
    wide.setEqualPoint(3.0);
    const struct {
        const char* name;
        AcGePoint3d a, b;
        AcGeTol tol;
        bool areEqual;
    } cases[] = {
        {"at the default tolerance", {0, 0, 0}, {1e-10, 0, 0}, {}, true},
        {"just beyond it", {0, 0, 0}, {1.0000001e-10, 0, 0}, {}, false},
        {"distance counts, not coordinates", {0, 0, 0}, {8e-11, 8e-11, 0}, {}, false},
        {"a widened copy, inclusive", {1, 1, 0}, {4, 1, 0}, wide, true},
        {"not a number", {NAN, 0, 0}, {NAN, 0, 0}, {}, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.a.isEqualTo(c.b, c.tol), c.areEqual) << c.name;
        if (c.a.z == c.b.z) {
            EXPECT_EQ(AcGePoint2d(c.a.x, c.a.y).isEqualTo({c.b.x, c.b.y}, c.tol), c.areEqual) << c.name;
        }
    }
    EXPECT_EQ(wide.equalVector(), 1e-12) << "widening points leaves vectors alone";
}

TEST(Vectors, relateWithinTheVectorTolerance) {
    const struct {
        const char* name;
        AcGeVector3d a, b;
        bool areEqual, areParallel, areCodirectional, arePerpendicular;
    } cases[] = {
        {"difference beyond it", {0, 1.1e-12, 0}, {0, 0, 0}, false, false, false, false},
        {"opposite direction", {1, 2, 3}, {-2, -4, -6}, false, true, false, false},
        {"long, hardly turned", {1e6, 0, 0}, {1e6, 1e-7, 0}, false, true, true, false},
        {"turned too far", {1, 0, 0}, {1, 2e-12, 0}, false, false, false, false},
        {"right angle", {0, 0, 5}, {3, 4, 0}, false, false, false, true},
        {"nearly a right angle", {1, 0, 0}, {2e-12, 1, 0}, false, false, false, false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.a.isEqualTo(c.b), c.areEqual) << c.name;
        EXPECT_EQ(c.a.isParallelTo(c.b), c.areParallel) << c.name;
        EXPECT_EQ(c.a.isCodirectionalTo(c.b), c.areCodirectional) << c.name;
        EXPECT_EQ(c.a.isPerpendicularTo(c.b), c.arePerpendicular) << c.name;
        if (c.a.z != 0 || c.b.z != 0) continue;
        const AcGeVector2d a(c.a.x, c.a.y), b(c.b.x, c.b.y);
        EXPECT_EQ(a.isEqualTo(b), c.areEqual) << c.name;
        EXPECT_EQ(a.isParallelTo(b), c.areParallel) << c.name;
        EXPECT_EQ(a.isPerpendicularTo(b), c.arePerpendicular) << c.name;
    }
}

TEST(Vectors, normalizeAndKeepZero) {
    const struct {
        const char* name;
        AcGeVector2d given, expected;
        AcGe::ErrorCondition flag;
    } cases[] = {
        {"zero stays", {0, 0}, {0, 0}, AcGe::k0This},
        {"at the tolerance stays", {0, 1e-12}, {0, 1e-12}, AcGe::k0This},
        {"above it has a direction", {0, -2e-12}, {0, -1}, AcGe::kOk},
    };
    for (const auto& c : cases) {
        AcGe::ErrorCondition flag{};
        const AcGeVector2d flat = AcGeVector2d{c.given}.normalize(AcGeTol{}, flag);
        EXPECT_EQ(flag, c.flag) << c.name;
        const AcGeVector3d steep = AcGeVector3d(0, c.given.x, c.given.y).normal();
        EXPECT_LE((flat - c.expected).length(), 1e-16) << c.name;
        EXPECT_LE((steep - AcGeVector3d{0, c.expected.x, c.expected.y}).length(), 1e-16) << c.name;
    }
}

TEST(Vectors, haveAnglesFromZeroToBelowAFullTurn) {
    const std::pair<AcGeVector2d, double> cases[] = {
        {{0, 0}, 0},          {{2, 0}, 0},    {{-1, 0}, pi},         {{-1, -0.0}, pi},
        {{1, -1}, 1.75 * pi}, {{1, -0.0}, 0}, {{1, -1e-20}, 2 * pi},
    };
    for (const auto& [v, angle] : cases) {
        EXPECT_DOUBLE_EQ(v.angle(), angle);
        EXPECT_TRUE(v.angle() < 2 * pi && !std::signbit(v.angle())) << angle;
    }
}

TEST(Vectors, haveAnglesBetweenThem) {
    const struct {
        const char* name;
        AcGeVector3d a, b, axis;
        double plain, about;
    } cases[] = {
        {"quarter left", {1, 0, 0}, {0, 5, 0}, {0, 0, 1}, pi / 2, pi / 2},
        {"quarter right", {1, 0, 0}, {0, -5, 0}, {0, 0, 1}, pi / 2, 1.5 * pi},
        {"seen from below", {1, 0, 0}, {0, 5, 0}, {0, 0, -2}, pi / 2, 1.5 * pi},
        {"opposite", {1, 0, 0}, {-1, 0, 0}, {0, 0, 1}, pi, pi},
        {"with a zero vector", {1, 0, 0}, {0, 0, 0}, {0, 0, 1}, 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(c.a.angleTo(c.b), c.plain) << c.name;
        EXPECT_DOUBLE_EQ(c.a.angleTo(c.b, c.axis), c.about) << c.name;
        EXPECT_DOUBLE_EQ(AcGeVector2d(c.a.x, c.a.y).angleTo({c.b.x, c.b.y}), c.plain) << c.name;
    }
    EXPECT_LT(AcGeVector3d(1, 0, 0).angleTo({1, -1e-20, 0}, {0, 0, 1}), 2 * pi);
}

} // namespace
