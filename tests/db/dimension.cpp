#include "dbdim.h"
#include "drawings/DrawingText.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string content = "LINE|10 1.0|20 2.0|11 3.0|21 3.0";
const Handle dimension = DrawingText::firstEntity, line = DrawingText::firstInBlocks;

DrawingText with(const std::string& groups, std::vector<std::string> inBlock = {content}) {
    return {.entities = {"DIMENSION|2 *D1" + groups}, .blocks = {{"*D1", std::move(inBlock)}}};
}

TEST(Dimensions, moveWithWhatTheyShow) {
    const AcGeMatrix3d quarter = AcGeMatrix3d{}.setCoordSystem({}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
    const struct {
        AcGeMatrix3d motion;
        std::string groups, line;
    } cases[] = {
        {shift(1, 0), "|10 1.0>2.0|20 0.0|11 2.0>3.0|21 0.0|70 32|42 7.0|13 3.0>4.0|14 4.0>5.0",
         "LINE|10 1.0>2.0|20 2.0|11 3.0>4.0|21 3.0"},
        {shift(1, 0), "|10 1.0>2.0|11 2.0>1.0|12 5.0>4.0|70 2|210 0|220 0|230 -1|15 9.0>10.0|16 8.0>7.0",
         "LINE|10 1.0>2.0|20 2.0|11 3.0>4.0|21 3.0"},
        // No insertion point of the block, and no turned text: zeros.
        {shift(1, 0), "|10 1.0>2.0|12 0.0|22 0.0|70 33|53 0.0", "LINE|10 1.0>2.0|20 2.0|11 3.0>4.0|21 3.0"},
        {quarter,
         "|10 1.0>0.0|20 0.0>1.0|70 0|53 10.0>100.0|51 5.0>95.0|100 AcDbAlignedDimension|13 "
         "1.0>0.0|23 0.0>1.0|>50 90.0",
         "LINE|10 1.0>-2.0|20 2.0>1.0|11 3.0>-3.0|21 3.0"},
        {quarter, "|10 1.0>0.0|20 0.0>1.0|70 102|>51 90.0|100 AcDbOrdinateDimension|13 1.0>0.0|23 0.0>1.0",
         "LINE|10 1.0>-2.0|20 2.0>1.0|11 3.0>-3.0|21 3.0"},
        {quarter, "|10 1.0>0.0|20 0.0>1.0|70 1|53 0.0",
         "LINE|8 LOCKED|10 1.0>-2.0|20 2.0>1.0|11 3.0>-3.0|21 3.0"},
    };
    for (const auto& each : cases) {
        const std::string before =
            with(as(Marked::before, each.groups), {as(Marked::before, each.line)}).bytes();
        const auto drawing = read(before);
        const std::string box = extents(*drawing, dimension),
                          opening = shapes::text(drawing->extentsAtOpening());
        EXPECT_EQ(box, "1..3 2..3 0..0");
        step(*drawing, [&] { EXPECT_EQ(move(*drawing, dimension, each.motion), Acad::eOk); });
        EXPECT_EQ(drawing->toBytes(),
                  with(as(Marked::after, each.groups), {as(Marked::after, each.line)}).bytes());
        EXPECT_EQ(extents(*drawing, dimension), extents(*read(drawing->toBytes()), dimension));
        EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), opening);
        EXPECT_EQ(drawing->history().changedByLast(1), std::vector{drawing->find(dimension)});
        drawing->history().undo();
        EXPECT_EQ(drawing->toBytes(), before);
        EXPECT_EQ(extents(*drawing, dimension), box);
    }
}

TEST(Dimensions, standStillAsAWhole) {
    const std::string groups = "|10 1.0|70 1";
    DrawingText twice = with(groups), inserted = with(groups), nested = with(groups);
    twice.add("DIMENSION|2 *d1|10 1.0|70 1");
    inserted.add("INSERT|2 *D1|10 0.0");
    nested.blocks[0].entities.push_back("DIMENSION|2 *D2|10 1.0");
    nested.blocks.push_back({"*D2", {content}});
    const std::pair<DrawingText, Acad::ErrorStatus> cases[] = {
        {twice, Acad::eNotApplicable},
        {inserted, Acad::eNotApplicable},
        {nested, Acad::eNotApplicable},
        {with(groups, {content, "REGION|10 1.0"}), Acad::eNotApplicable},
        {with(groups, {content, "LINE|10 x"}), Acad::eNotApplicable},
        {with(groups, {content, "LINE|10 9e14"}), Acad::eInvalidInput},
        {with("|10 9e14|70 1"), Acad::eInvalidInput},
    };
    for (const auto& [text, status] : cases) {
        const auto drawing = read(text);
        EXPECT_FALSE(step(*drawing, [&] {
            EXPECT_EQ(move(*drawing, dimension, shift(2e14, 0)), status) << text.blocks[0].entities.back();
        }));
        EXPECT_EQ(drawing->toBytes(), text.bytes());
    }
    const auto drawing = read(with(groups));
    const AcDbObjectPointer<AcDbLine> open{idOf(*drawing, line)};
    EXPECT_EQ(move(*drawing, dimension, shift(1, 0)), Acad::eSubentitiesStillOpen);
}

TEST(Dimensions, withoutABlockOfTheirOwnAreOnlyKept) {
    DrawingText text = with("|10 1.0");
    for (const char* name : {"DIMENSION|10 1.0", "DIMENSION|2 *D7|10 1.0", "DIMENSION|2 B|10 1.0",
                             "DIMENSION|2 *Model_Space|10 1.0"})
        text.add(name);
    text.blocks.push_back({"B", {content}});
    const auto drawing = read(text);
    EXPECT_TRUE(drawing->isSelectable(drawing->find(dimension)));
    for (Handle each = dimension + 1; each <= dimension + 4; ++each) {
        EXPECT_FALSE(drawing->isSelectable(drawing->find(each)));
        EXPECT_EQ(extents(*drawing, each), "status 2");
        EXPECT_EQ(move(*drawing, each, shift(1, 0)), Acad::eNotApplicable);
    }
}

} // namespace
