#include "objectalign/alignmentLine.h"
#include "tests/objectalign/Sheet.h"

#include <numbers>

namespace qx::tests {
namespace {
using namespace objectalign;

constexpr const char* itself = "itself";

TEST(AlignmentLines, OfWhatIsPicked) {
    const struct {
        const char *name, *picked, *pick, *line; ///< itself, or what is drawn
        double degrees = 0;
    } cases[] = {
        {"downwards points up", "line 0,10 0,0", "0,1", itself, 90},
        {"falling to the right rises to the left", "line 0,0 10,-10", "0,0", itself, 135},
        {"a hair below level points left", "line 0,0 10,-1e-9", "0,0", itself, 180},
        {"too little to tell from level", "line 0,0 10,-1e-300", "0,0", itself, 0},
        {"one end off the ground", "line 10,10 0,0,9", "0,0", "line 10,10 0,0", 45},
        {"the other end", "line 10,10,9 0,0", "0,0", "line 10,10 0,0", 45},
        {"segment of a polyline", "lw 0,0 10,0 10,10", "9,5", "line 10,0 10,10", 90},
        {"the nearest, not the first near enough", "lw 0,0 10,0 10,4 0,4", "5,2.5", "line 10,4 0,4", 0},
        {"not by its carrier", "lw 0,0 10,0 10,10 50,30", "30,1", "line 10,10 50,30", 26.565051},
        {"an open one has none", "lw 0,0 20,0 20,20", "5,4.9", "line 0,0 20,0", 0},
        {"a straight one near an arc", "lw 0,0 b1 10,0 10,10", "5,-5", "line 10,0 10,10", 90},
        {"seen from below, high above", "lw 0,0 10,10 z9 down", "-5,5", "line 0,0 -10,10", 135},
        {"older polyline", "2d 0,0 10,0 10,10 closed z9", "5,5.1", "line 10,10 0,0", 45},
        {"polyline of arcs only", "lw 0,0 b1 10,0 b1 closed", "5,-5", nullptr},
        {"spline-fit", "2d 0,0 0,0 10,0 9,9 spline", "5,0", nullptr},
        {"circle", "circle 0,0 r10", "10,0", nullptr},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        Sheet sheet({each.picked});
        const std::string said = sheet.run([&] {
            ConstructionEntities construction;
            const auto found = analyseAlignmentLine(sheet.id(0), flatPointOf(each.pick), construction);
            ASSERT_EQ(found.has_value(), each.line != nullptr);
            if (!found) return;
            EXPECT_EQ(sheet.drawn(), each.line == itself ? "" : each.line);
            EXPECT_EQ(found->id == sheet.id(0), each.line == itself);
            EXPECT_NEAR(found->angle * 180 / std::numbers::pi, each.degrees, 1e-6);
            EXPECT_TRUE(found->angle >= 0 && found->angle < std::numbers::pi);
            EXPECT_EQ(text(found->pick), each.pick);
            construction.erase();
        });
        EXPECT_EQ(said, each.line ? "" : "\n请选择线段对象");
        EXPECT_TRUE(sheet.hasTheFilesBytes());
    }
}

} // namespace
} // namespace qx::tests
