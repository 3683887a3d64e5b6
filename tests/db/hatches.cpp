#include "dbhatch.h"
#include "drawings/DrawingText.h"

using namespace drawings;

namespace {

const std::string square = "|92 1|93 4|72 1|10 0.0|20 0.0|11 4.0|21 0.0|72 1|10 4.0|20 0.0|11 4.0|21 4.0|72 1"
                           "|10 4.0|20 4.0|11 0.0|21 4.0|72 1|10 0.0|20 4.0|11 0.0|21 0.0|97 0";

TEST(Hatches, areTheirBoundary) {
    const std::string polyline = "|92 7|72 1|73 1|93 2|10 0.0|20 0.0|42 1.0|10 4.0|20 0.0|42 0.0|97 0";
    const struct {
        std::string groups;
        const char* extents;
        int loops;
    } cases[] = {
        {"30 2.0|91 1" + square, "0..4 0..4 2..2", 1},
        {"91 77" + square, "0..4 0..4 0..0", 1}, // counts are not believed
        // Behind the marker paths need no number before them; the same codes before it mean something else.
        {"92 8|310 00|100 AcDbHatch|10 0.0|20 0.0|30 2.0" + square, "0..4 0..4 2..2", 1},
        {"92 8|310 00|30 2.0|91 1" + square, "0..4 0..4 2..2", 1},
        {"91 2" + square + polyline, "0..4 -2..4 0..0", 2},
        {"210 0|220 0|230 -1|91 1" + polyline, "-4..0 -2..0 0..0", 1},
        {"91 0|75 0|76 1|98 1|10 9.0|20 9.0", "status 1001", 0},
        // Pattern, seeds and gradient are no boundary.
        {"91 1" + square + "|75 0|76 1|52 0|41 1|78 1|53 0|43 9|44 9|45 9|46 9|79 0|98 1|10 9.0|20 9.0",
         "0..4 0..4 0..0", 1},
        // Arcs, clockwise ones count the other way round.
        {"91 1|92 1|72 2|10 0.0|20 0.0|40 2.0|50 0|51 90|73 1", "0..2 0..2 0..0", 1},
        {"91 1|92 1|72 2|10 0.0|20 0.0|40 2.0|50 0|51 90|73 0", "0..2 -2..0 0..0", 1},
        {"91 1|92 1|72 2|10 0.0|20 0.0|40 2.0|50 0|51 360|73 0", "-2..2 -2..2 0..0", 1},
        // Ellipses, by angles and not by parameters: 45 degrees is where x = y.
        {"91 1|92 1|72 3|10 0.0|20 0.0|11 4.0|21 0.0|40 0.5|50 0|51 45|73 1", "1.78885..4 0..1.78885 0..0",
         1},
        {"91 1|92 1|72 3|10 0.0|20 0.0|11 4.0|21 0.0|40 0.5|50 0|51 90|73 0", "0..4 -2..0 0..0", 1},
        {"91 1|92 1|72 4|94 1|73 0|74 0|95 4|96 2|40 0|40 0|40 1|40 1|10 1.0|20 2.0|10 3.0|20 7.0|97 0",
         "1..3 2..7 0..0", 1},
        {"91 1|92 1|72 9|10 1.0|20 2.0", "status 1001", 1},
        {"91 1|92 1e99|72 1e99|10 1.0|20 2.0", "status 1001", 1},
    };
    for (const auto& each : cases) {
        const auto drawing = read({.entities = {"HATCH|10 0|20 0|" + each.groups}});
        EXPECT_EQ(extents(*drawing, 0x100), each.extents) << each.groups;
        AcDbObjectPointer<AcDbHatch> hatch{idOf(*drawing, 0x100)};
        EXPECT_EQ(hatch->numLoops(), each.loops) << each.groups;
    }
}

TEST(Hatches, thatCannotBeUsedAreKept) {
    const std::pair<std::string, const char*> cases[] = {
        {"91 1|92 1|72 4|94 3|40 0|10 0.0|20 0.0", "a spline in the hatch's boundary makes no curve"},
        {"10 0|20 0|30 0" + square, "the hatch does not say where its boundary begins (91)"},
        {"10 0|20 0|30 0|75 0|76 1|98 1|10 1.0|20 1.0", "the hatch does not say where its boundary"},
    };
    for (const auto& [groups, sentence] : cases) {
        const DrawingText text{.entities = {"HATCH|" + groups}};
        const auto drawing = read(text);
        EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eNotApplicable) << groups;
        ASSERT_EQ(drawing->findings().size(), 1u) << groups;
        EXPECT_TRUE(drawing->findings()[0].sentence.starts_with(sentence)) << groups;
        EXPECT_EQ(drawing->toBytes(), text.bytes());
    }
}

} // namespace
