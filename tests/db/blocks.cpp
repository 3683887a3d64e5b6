#include "drawings/DrawingText.h"
#include "shape/ExtentsSink.h"

#include <chrono>

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string unitLine = "LINE|10 1.0|20 2.0|11 3.0|21 3.0";

const std::vector<BlockText> oneLine{{"B", {unitLine}}};

/// Blocks named "0", "1", ... of which each holds `copies` references to the next, the last one a line.
std::vector<BlockText> chain(int length, int copies) {
    std::vector<BlockText> blocks;
    for (int i = 0; i + 1 < length; ++i) {
        BlockText block{std::to_string(i), {}};
        for (int copy = 0; copy < copies; ++copy)
            block.entities.push_back("INSERT|2 " + std::to_string(i + 1) + "|10 " + std::to_string(copy) +
                                     "|20 0.0");
        blocks.push_back(block);
    }
    blocks.push_back({std::to_string(length - 1), {unitLine}});
    return blocks;
}

std::string findings(const Drawing& drawing) {
    std::string text;
    for (const auto& finding : drawing.findings()) text += finding.sentence + "; ";
    return text;
}

TEST(BlockReferences, reachAsFarAsWhatTheyShow) {
    const BlockText based{"B", {unitLine}, "10 1.0|20 2.0|30 3.0"};
    const struct {
        std::vector<BlockText> blocks;
        std::string reference;
        const char* extents;
    } cases[] = {
        {{{"Door", {unitLine}}}, "2 dOOR|10 0.0", "1..3 2..3 0..0"},
        {{{"\xC3\xC5\x95\x5C", {unitLine}}}, "2 \xC3\xC5\x95\x5C|10 0.0", "1..3 2..3 0..0"},
        {{based}, "2 B|10 5.0|41 2.0|42 3.0", "5..9 0..3 -3..-3"},
        {oneLine, "2 B|10 0.0|41 -1.0|50 90.0", "-3..-2 -3..-1 0..0"},
        {oneLine, "2 B|10 -5.0|30 1.0|210 0.0|220 0.0|230 -1.0", "2..4 2..3 -1..-1"},
        {{{"B", {"CIRCLE|10 0.0|40 1.0"}}}, "2 B|10 0.0|41 2.0|42 3.0|50 90.0", "-3..3 -2..2 0..0"},
        {{{"B", {"MTEXT|10 5.0|20 5.0|40 2.0|1 H", "ELLIPSE|11 4.0|40 0.5"}}},
         "2 B|41 2|42 2",
         "-8..13 -4..10 0..0"},
        {{{"B", {"INSERT|2 C|10 10.0|41 2.0|42 2.0", unitLine}}, {"C", {unitLine}, "10 1.0|20 0.0"}},
         "2 B|10 100.0",
         "101..114 2..6 0..0"},
        // A turn in a stretch.
        {{{"B", {"INSERT|2 C|10 0.0|50 45.0"}}, {"C", {"LINE|10 0.0|11 1.0|21 1.0"}}},
         "2 B|10 0.0|42 3.0",
         "0..0 0..4.24264 0..0"},
        // What is invisible counts for nothing, nor do classes that are only kept.
        {{{"B",
           {unitLine, "POINT|60 1|10 99.0", "POINT|8 OFF|10 99.0", "POINT|8 FROZEN|10 99.0",
            "POINT|8 LOCKED|10 5.0"}}},
         "2 B|10 0.0",
         "1..5 0..3 0..0"},
        {{{"B", {unitLine, "REGION|10 99.0", "WIPEOUT|10 99.0"}}}, "2 B|10 0.0", "1..3 2..3 0..0"},
        {{{"B", {}}}, "2 B|10 7.0", "status 1001"},
        {{{"B", {"TEXT|10 1.0|40 1.0|1   "}}}, "2 B|10 7.0", "status 1001"},
        {{}, "2 B|10 7.0", "status 1001"},
        // Stretched: a circle in a turned block becomes an ellipse, a bulge a part of one, text leans.
        {{{"B", {"INSERT|2 C|10 0.0|50 45.0|41 2.0"}}, {"C", {"CIRCLE|10 0.0|40 1.0"}}},
         "2 B|10 0.0|42 3.0",
         "-1.58114..1.58114 -4.74342..4.74342 0..0"},
        {{{"B", {"LWPOLYLINE|90 2|10 0.0|20 0.0|42 1.0|10 4.0|20 0.0"}}},
         "2 B|41 2|42 3|50 90.0",
         "0..6 0..8 0..0"},
        {{{"B", {"TEXT|10 0.0|20 0.0|40 1.0|1 H|50 45.0"}}},
         "2 B|41 2",
         "-1.27279..1.06066 0.0707107..1.23744 0..0"},
        {{{"B", {"ARC|10 0.0|40 1.0|50 0.0|51 90.0"}}}, "2 B|41 -2|42 0.5", "-2..0 0..0.5 0..0"},
        {{{"B", {"CIRCLE|10 0.0|40 1.0", "TEXT|40 1.0|1 H"}}}, "2 B|41 0|42 0|43 0|10 5.0", "5..5 0..0 0..0"},
        {{{"B", {"CIRCLE|10 0.0|40 1.0"}}}, "2 B|41 0|10 5.0", "5..5 -1..1 0..0"},
        // Rows and columns run along the turned insertion, as far apart as they say, whatever the scale.
        {oneLine, "2 B|10 0.0|70 2|71 3|44 10.0|45 -5.0", "1..13 -8..3 0..0"},
        {oneLine, "2 B|10 0.0|41 2.0|42 2.0|70 2|44 10.0", "2..16 4..6 0..0"},
        {oneLine, "2 B|10 0.0|70 2|71 2|44 10.0|45 5.0|50 90.0", "-8..-2 1..13 0..0"},
        {oneLine, "2 B|10 0.0|70 2|44 10.0|210 0|220 0|230 -1", "-13..-1 2..3 0..0"},
        {oneLine, "2 B|10 0.0|70 -4|71 0|44 10.0", "1..3 2..3 0..0"},
        {{{"B", {}}}, "2 B|10 0.0|70 2", "status 1001"},
    };
    for (const auto& each : cases) {
        const auto drawing = read({.entities = {"INSERT|" + each.reference}, .blocks = each.blocks});
        const std::string foundBefore = findings(*drawing);
        EXPECT_EQ(extents(*drawing, 0x100), each.extents) << each.reference;
        EXPECT_EQ(findings(*drawing), foundBefore) << each.reference;
    }
}

TEST(BlockReferences, showTheirAttributes) {
    const std::pair<std::string, bool> cases[] = {
        {"10 100.0|40 1.0|1 H|2 T|70 0", true},       {"10 100.0|40 1.0|1 H|2 T|70 1", false},
        {"60 1|10 100.0|40 1.0|1 H|2 T|70 0", false}, {"8 OFF|10 100.0|40 1.0|1 H|2 T|70 0", false},
        {"10 100.0|40 1.0|1  |2 T|70 0", false},
    };
    for (const auto& [attribute, isShown] : cases) {
        DrawingText text{.entities = {"INSERT|66 1|2 B|10 0.0", "ATTRIB|" + attribute, "SEQEND", unitLine}};
        text.blocks = oneLine;
        EXPECT_EQ(extents(*read(text), 0x100) != "1..3 2..3 0..0", isShown) << attribute;
    }
}

TEST(BlockReferences, thatContainThemselvesAreDrawnOnce) {
    const std::pair<std::vector<BlockText>, const char*> cases[] = {
        {{{"B", {unitLine, "INSERT|2 B|10 50.0"}}}, "1..3 2..3 0..0"},
        {{{"B", {unitLine, "INSERT|2 C|10 50.0"}}, {"C", {unitLine, "INSERT|2 B|10 50.0"}}},
         "1..53 2..3 0..0"},
    };
    for (const auto& [blocks, expected] : cases) {
        const auto drawing = read({.entities = {"INSERT|2 B|10 0.0"}, .blocks = blocks});
        for (int i = 0; i < 3; ++i) EXPECT_EQ(extents(*drawing, 0x100), expected);
        EXPECT_EQ(findings(*drawing), "block \"B\" contains itself; ");
        EXPECT_GT(drawing->findings()[0].line, 1u);
        EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eOk);
    }
}

TEST(BlockReferences, nestOnlySoDeep) {
    for (const int depth : {1, 64, 65, 150}) {
        const auto drawing = read({.entities = {"INSERT|2 0|10 0.0"}, .blocks = chain(depth, 1)});
        EXPECT_EQ(extents(*drawing, 0x100), depth <= 64 ? "1..3 2..3 0..0" : "status 1001") << depth;
        EXPECT_EQ(drawing->findings().empty(), depth <= 64) << depth;
    }
}

TEST(BlockReferences, inCountlessRowsAreDrawnByTheirCorners) {
    const std::string many = "|70 32767|71 99999|44 1.0|45 2.0", all = "1..32769 2..65535 0..0";
    const std::pair<std::vector<BlockText>, std::string> cases[] = {
        {oneLine, all},
        {{{"B", {"INSERT|2 C" + many}}, {"C", {unitLine}}}, "1..65535 2..131067 0..0"},
        {{{"B", {}}}, "status 1001"},
    };
    for (const auto& [blocks, expected] : cases) {
        const auto drawing = read({.entities = {"INSERT|2 B" + many}, .blocks = blocks});
        EXPECT_EQ(extents(*drawing, 0x100), expected);
        qx::shape::ExtentsSink drawn;
        drawing->liveEntity(drawing->find(0x100))->shape(drawn);
        EXPECT_EQ(drawn.box().isEmpty() ? "status 1001" : shapes::text(drawn.box()), expected);
        EXPECT_NE(findings(*drawing).find("stands in too many rows and columns"), std::string::npos);
        EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), expected == "status 1001" ? "empty" : expected);
    }
}

TEST(BlockReferences, inRowsShowTheirAttributesInEachCell) {
    const auto drawing =
        read({.entities = {"INSERT|66 1|2 B|70 3|44 10.0", "ATTRIB|10 0.0|40 1.0|1 H|2 T|70 0", "SEQEND"},
              .blocks = oneLine});
    EXPECT_EQ(extents(*drawing, 0x100), "0.1..23 0..3 0..0");
    EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), "0.1..23 0..3 0..0");
    EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eOk);
    EXPECT_EQ(extents(*drawing, 0x100), "1.1..24 0..3 0..0");
    const AcDbObjectPointer<AcDbBlockReference> reference{idOf(*drawing, 0x100)};
    EXPECT_EQ(reference->isA(), AcDbMInsertBlock::desc());
}

// Two to the power of fifty lines, a hundred times. The box is right all the same, since definitions are
// measured once each; anything else would take years.
TEST(BlockReferences, ofExponentialSizeAreDrawnAsBoxes) {
    const auto drawing =
        read({.entities = std::vector<std::string>(100, "INSERT|2 0|10 0.0"), .blocks = chain(51, 2)});
    const auto begin = std::chrono::steady_clock::now();
    for (std::uint64_t i = 0; i < 100; ++i)
        ASSERT_EQ(extents(*drawing, DrawingText::firstEntity + i), "1..53 2..3 0..0") << i;
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
    EXPECT_EQ(findings(*drawing).find("block \"0\" is too large to be drawn in full"), 0u)
        << findings(*drawing);
    EXPECT_EQ(move(*drawing, DrawingText::firstInBlocks + 100, shift(7, 0)), Acad::eOk);
    EXPECT_EQ(extents(*drawing, DrawingText::firstEntity), "8..60 2..3 0..0") << "the innermost line moved";
}

} // namespace
