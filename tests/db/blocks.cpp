#include "drawings/DrawingText.h"

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
        {{{"B", {unitLine, "SOLID|10 99.0", "WIPEOUT|10 99.0"}}}, "2 B|10 0.0", "1..3 2..3 0..0"},
        {{{"B", {}}}, "2 B|10 7.0", "status 1001"},
        {{{"B", {"TEXT|10 1.0|40 1.0|1   "}}}, "2 B|10 7.0", "status 1001"},
        {{}, "2 B|10 7.0", "status 1001"},
        {oneLine, "2 B|10 0.0|70 2|44 10.0", "status 2"},
    };
    for (const auto& each : cases) {
        const auto drawing =
            read(DrawingText{.entities = {"INSERT|" + each.reference}, .blocks = each.blocks}.bytes());
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
        EXPECT_EQ(extents(*read(text.bytes()), 0x100) != "1..3 2..3 0..0", isShown) << attribute;
    }
}

TEST(BlockReferences, thatContainThemselvesAreDrawnOnce) {
    const std::pair<std::vector<BlockText>, const char*> cases[] = {
        {{{"B", {unitLine, "INSERT|2 B|10 50.0"}}}, "1..3 2..3 0..0"},
        {{{"B", {unitLine, "INSERT|2 C|10 50.0"}}, {"C", {unitLine, "INSERT|2 B|10 50.0"}}},
         "1..53 2..3 0..0"},
    };
    for (const auto& [blocks, expected] : cases) {
        const auto drawing = read(DrawingText{.entities = {"INSERT|2 B|10 0.0"}, .blocks = blocks}.bytes());
        for (int i = 0; i < 3; ++i) EXPECT_EQ(extents(*drawing, 0x100), expected);
        EXPECT_EQ(findings(*drawing), "block \"B\" contains itself; ");
        EXPECT_GT(drawing->findings()[0].line, 1u);
        EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eOk);
    }
}

TEST(BlockReferences, nestOnlySoDeep) {
    for (const int depth : {1, 64, 65, 150}) {
        const auto drawing =
            read(DrawingText{.entities = {"INSERT|2 0|10 0.0"}, .blocks = chain(depth, 1)}.bytes());
        EXPECT_EQ(extents(*drawing, 0x100), depth <= 64 ? "1..3 2..3 0..0" : "status 1001") << depth;
        EXPECT_EQ(drawing->findings().empty(), depth <= 64) << depth;
    }
}

// Two to the power of fifty lines, a hundred times. The box is right all the same, since definitions are
// measured once each; anything else would take years.
TEST(BlockReferences, ofExponentialSizeAreDrawnAsBoxes) {
    const auto drawing = read(
        DrawingText{.entities = std::vector<std::string>(100, "INSERT|2 0|10 0.0"), .blocks = chain(51, 2)}
            .bytes());
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
