#include "objectalign/tangent.h"
#include "tests/objectalign/Sheet.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {
using namespace objectalign;

TEST(Tangents, AreDrawnFromThePointOnTheCurve) {
    const struct {
        const char* name;
        const char* curve;
        const char* picked;
        const char* drawn;
        double degrees;
        const char* centre;
        double radius = 10;
    } cases[] = {
        {"picked inside", "circle 0,0 r10", "5,0", "line 10,0 10,-10", 270, "0,0"},
        {"picked outside", "circle 0,0 r10", "20,0", "line 10,0 10,-10", 270, "0,0"},
        {"picked on it, on top", "circle 0,0 r10", "0,10", "line 0,10 10,10", 0, "0,0"},
        {"to the left", "circle 0,0 r10", "-3,0", "line -10,0 -10,10", 90, "0,0"},
        {"aslant", "circle 1,2 r10", "31,42", "line 7,10 15,4", 323.130102, "1,2"},
        {"arc", "arc 0,0 r10 a0..90", "0,5", "line 0,10 10,10", 0, "0,0"},
        {"arc where there is none of it", "arc 0,0 r10 a0..90", "0,-5", "line 0,-10 -10,-10", 180, "0,0"},
        {"high above", "circle 0,0,7 r10", "5,0", "line 10,0 10,-10", 270, "0,0,7"},
        {"seen from below", "circle 20,0,7 r10 down", "-15,0", "line -10,0 -10,-10", 270, "-20,0,-7"},
        {"arc seen from below", "arc 20,0,7 r10 a0..90 down", "-20,1", "line -20,10 -10,10", 0, "-20,0,-7"},
        {"almost the centre", "circle 0,0 r10", "1e-6,0", "line 10,0 10,-10", 270, "0,0"},
        {"by a quarter turn that is cut short", "circle 0,0 r1e6", "1,0",
         "line 1000000,0 999999.9732,-1000000", 270, "0,0", 1e6},
    };
    for (const auto& each : cases) {
        Sheet sheet({each.curve});
        Tangent tangent;
        std::string drawn;
        const std::string said = sheet.run([&] {
            tangent = tangentAt(sheet.id(sheet.at(0)), pointOf(each.picked));
            drawn = sheet.drawn();
        });
        EXPECT_EQ(said, "") << each.name;
        EXPECT_EQ(drawn, each.drawn) << each.name;
        EXPECT_EQ("line " + text(tangent.lineStart) + " " + text(tangent.lineEnd), each.drawn) << each.name;
        EXPECT_EQ(sheet.form(tangent.line.handle().value()), drawn.substr(5)) << each.name;
        EXPECT_EQ(text(tangent.point), text(tangent.lineStart)) << each.name;
        // On top the angle may be a hair below the full turn.
        EXPECT_NEAR(std::remainder(tangent.angle * 180 / std::numbers::pi - each.degrees, 360), 0, 1e-5)
            << each.name;
        EXPECT_TRUE(tangent.angle >= 0 && tangent.angle < 2 * std::numbers::pi) << each.name;
        EXPECT_EQ(text(tangent.centre), each.centre) << each.name;
        EXPECT_EQ(tangent.radius, each.radius) << each.name;
        EXPECT_TRUE(tangent.curve == sheet.id(sheet.at(0))) << each.name;
        EXPECT_TRUE(sheet.isUndoneToTheBytes()) << each.name;
    }
}

TEST(Tangents, ThereAreNone) {
    constexpr const char* noTangent = "\n该点不是切点";
    const struct {
        const char* name;
        const char* curve;
        const char* picked;
        bool isErased;
        const char* said;
    } cases[] = {
        {"line", "line 0,0 10,0", "5,0", false, noTangent},
        {"polyline", "lw 0,0 b1 10,0", "5,-5", false, noTangent},
        {"ellipse", "ELLIPSE|10 0|20 0|11 10|21 0|40 0.5|41 0|42 6.28", "10,0", false, noTangent},
        {"the centre", "circle 3,4 r10", "3,4", false, ""},
        {"the centre of an arc", "arc 3,4 r10 a0..90", "3,4", false, ""},
        {"erased", "circle 0,0 r10", "5,0", true, ""},
    };
    for (const auto& each : cases) {
        Sheet sheet({each.curve});
        const std::string said = sheet.run([&] {
            if (each.isErased) erase(sheet.drawing(), sheet.at(0));
            const Tangent tangent = tangentAt(sheet.id(sheet.at(0)), pointOf(each.picked));
            EXPECT_TRUE(tangent.curve.isNull() && tangent.line.isNull()) << each.name;
            EXPECT_EQ(sheet.drawn(), "") << each.name;
        });
        EXPECT_EQ(said, each.said) << each.name;
    }
}

} // namespace
} // namespace qx::tests
