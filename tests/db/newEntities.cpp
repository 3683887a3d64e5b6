#include "drawings/DrawingText.h"

#include "dbsymtb.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

constexpr double quarter = std::numbers::pi / 2;
const std::string line = "LINE|10 1.0|20 1.0|11 2.0|21 1.0";

/// Appends to a block; the new entity's handle.
Handle append(const Drawing& drawing, std::unique_ptr<AcDbEntity> entity,
              Handle block = DrawingText::modelSpace) {
    AcDbObjectPointer<AcDbBlockTableRecord> record{idOf(drawing, block), AcDb::kForWrite};
    AcDbObjectId id;
    EXPECT_EQ(record->appendAcDbEntity(id, entity.get()), Acad::eOk);
    EXPECT_TRUE(entity->isWriteEnabled());
    EXPECT_EQ(entity.release()->close(), Acad::eOk);
    return id.handle().value();
}

std::unique_ptr<AcDbEntity> newLine() {
    return std::make_unique<AcDbLine>(AcGePoint3d{0, 0, 0}, AcGePoint3d{1.5, 2, 0});
}

std::string inserted(std::string bytes, std::size_t at, const std::string& what) {
    return bytes.insert(at, what);
}

/// Where the section of entities ends.
std::size_t endOfEntities(const std::string& bytes) {
    return bytes.rfind("  0", bytes.find("ENDSEC", bytes.find("ENTITIES")));
}

TEST(NewEntities, areWrittenBehindTheOthers) {
    const AcGePoint3d centre{1, 2, 3};
    const AcGeVector3d up = AcGeVector3d::kZAxis;
    const std::pair<AcDbEntity*, std::string> cases[] = {
        {newLine().release(), "LINE|Line|10 0.0|20 0.0|30 0.0|11 1.5|21 2.0|31 0.0"},
        {new AcDbCircle{centre, up, 4}, "CIRCLE|Circle|10 1.0|20 2.0|30 3.0|40 4.0"},
        {new AcDbCircle{centre, -up, 4},
         "CIRCLE|Circle|10 -1.0|20 2.0|30 -3.0|40 4.0|210 -0.0|220 -0.0|230 -1.0"},
        {new AcDbArc{centre, 4, quarter, 2 * quarter},
         "ARC|Circle|10 1.0|20 2.0|30 3.0|40 4.0|100 AcDbArc|50 90.0|51 180.0"},
    };
    for (const auto& [made, groups] : cases) {
        const std::size_t bar = groups.find('|');
        DrawingText text{.entities = {line}, .lineEnd = made == cases[0].first ? "\r\n" : "\n"};
        const auto drawing = read(text);
        append(*drawing, std::unique_ptr<AcDbEntity>{made});
        text.handSeed = "1001";
        const std::string head = "0 " + groups.substr(0, bar) + "|5 1000|330 1F|100 AcDbEntity|8 0|100 AcDb";
        const std::string expected = text.bytes();
        EXPECT_EQ(drawing->toBytes(), inserted(expected, endOfEntities(expected),
                                               tags(head + groups.substr(bar + 1), text.lineEnd)));
    }
}

TEST(NewEntities, takeHandlesFromTheSeed) {
    const struct {
        const char* seed;
        Handle first, second;
        const char* seedAfterTwo;
        const char* otherHandle = "100";
    } cases[] = {
        {"1000", 0x1000, 0x1001, "1002"},
        {"abc", 0xABC, 0xABD, "ABE"},
        {"50", 0x405, 0x406, "407"},
        {"x", 0x405, 0x406, "407"},
        {"0", 0x405, 0x406, "407"},
        // Where none are left behind the others, those that nobody has: 1 and 2 are taken.
        {"FFFFFFFFFFFFFFFD", 0xFFFFFFFFFFFFFFFD, 0xFFFFFFFFFFFFFFFE, "FFFFFFFFFFFFFFFF"},
        {"FFFFFFFFFFFFFFFE", 0xFFFFFFFFFFFFFFFE, 3, "FFFFFFFFFFFFFFFF"},
        {"FFFFFFFFFFFFFFFF", 3, 4, "FFFFFFFFFFFFFFFF"},
        {"FFFFFFFFFFFFFFFF", 4, 5, "FFFFFFFFFFFFFFFF", "3"},
        {"1000", 3, 4, "1000", "FFFFFFFFFFFFFFFF"},
        {"1", 3, 4, "5", "FFFFFFFFFFFFFFFE"},
    };
    for (const auto& each : cases) {
        const DrawingText text{.entities = {line + "|5 " + each.otherHandle},
                               .blocks = {{"B", {line, line, line, line, line}}},
                               .handSeed = each.seed};
        const auto drawing = read(text);
        EXPECT_EQ(append(*drawing, newLine()), each.first);
        EXPECT_EQ(append(*drawing, newLine()), each.second);
        EXPECT_EQ(drawing->find(each.first)->kind, qx::db::Kind::line);
        EXPECT_EQ(read(drawing->toBytes())->headerValue("$HANDSEED", 5), each.seedAfterTwo);
    }
}

TEST(NewEntities, raiseTheSeedOnlyWhenTheyAreSaved) {
    const DrawingText text{.entities = {line}};
    const auto drawing = read(text);
    step(*drawing, [&] { erase(*drawing, append(*drawing, newLine())); });
    EXPECT_EQ(drawing->toBytes(), text.bytes()) << "appended and erased again";
    EXPECT_EQ(append(*drawing, newLine()), 0x1001u) << "a handle is never given twice";
    EXPECT_EQ(read(drawing->toBytes())->headerValue("$HANDSEED", 5), "1002");
}

TEST(NewEntities, lieOnTheCurrentLayer) {
    const std::pair<std::string, Acad::ErrorStatus> cases[] = {
        {"\xCD\xBC\x95\x5C", Acad::eOk}, // GBK, its second byte a backslash
        {"LOCKED", Acad::eOnLockedLayer},
        {"unknown to the table", Acad::eOk},
    };
    for (const auto& [layer, reopening] : cases) {
        const auto drawing = read({.currentLayer = layer});
        EXPECT_EQ(move(*drawing, append(*drawing, newLine()), shift(1, 0)), reopening) << layer;
        const std::string expected = tags("100 AcDbEntity|8 " + layer + "|100 AcDbLine");
        EXPECT_NE(drawing->toBytes().find(expected), std::string::npos) << layer;
    }
}

TEST(NewEntities, areChangedLikeAnyOther) {
    const auto drawing = read({.entities = {line}});
    const Handle handle = append(*drawing, newLine());
    EXPECT_EQ(move(*drawing, handle, AcGeMatrix3d::rotation(-quarter, AcGeVector3d::kZAxis) * shift(0, 0, 1)),
              Acad::eOk);
    {
        AcDbObjectPointer<AcDbEntity> entity{idOf(*drawing, handle), AcDb::kForWrite};
        entity->setColorIndex(1);
        EXPECT_EQ(entity->ownerId().handle().value(), DrawingText::modelSpace);
    }
    EXPECT_EQ(extents(*drawing, handle), "0..2 -1.5..0 1..1");
    EXPECT_TRUE(drawing->isSelectable(drawing->find(handle)));
    const auto again = read(drawing->toBytes());
    EXPECT_EQ(extents(*again, handle), "0..2 -1.5..0 1..1");
    AcDbObjectPointer<AcDbEntity> written{idOf(*again, handle)};
    EXPECT_EQ(written->colorIndex(), 1);
}

/// The compact tags of a new line on layer 0.
std::string newLineTags(const std::string& handle, const std::string& owner, const std::string& flag = "") {
    return "0 LINE|5 " + handle + owner + "|100 AcDbEntity" + flag +
           "|8 0|100 AcDbLine|10 0.0|20 0.0|30 0.0|11 1.5|21 2.0|31 0.0";
}

TEST(NewEntities, inPaperSpaceSayThatTheyAre) {
    DrawingText text{.entities = {line}};
    const auto drawing = read(text);
    append(*drawing, newLine(), DrawingText::paperSpace);
    append(*drawing, newLine());
    text.handSeed = "1002";
    const std::string expected = text.bytes();
    EXPECT_EQ(drawing->toBytes(),
              inserted(expected, endOfEntities(expected),
                       tags(newLineTags("1001", "|330 1F") + "|" + newLineTags("1000", "|330 1E", "|67 1"))));
    const auto again = read(drawing->toBytes());
    EXPECT_TRUE(again->isSelectable(again->find(0x1001)));
    EXPECT_FALSE(again->isSelectable(again->find(0x1000)));
}

TEST(NewEntities, inABlockStandBeforeItsEnd) {
    for (const bool isLayout : {false, true}) {
        DrawingText text{.entities = {"INSERT|2 B|10 10.0|20 0.0"}};
        text.blocks = {{isLayout ? "*Paper_Space0" : "B", {line}}, {"C", {line}}};
        const auto drawing = read(text);
        append(*drawing, newLine(), DrawingText::firstBlock);
        EXPECT_EQ(extents(*drawing, 0x100), isLayout ? "status 1001" : "10..12 0..2 0..0");
        const std::string saved = drawing->toBytes();
        const std::string expected = newLineTags("1000", "|330 30", isLayout ? "|67 1" : "") + "|0 ENDBLK";
        EXPECT_NE(saved.find(tags(expected)), std::string::npos) << saved;
        EXPECT_EQ(read(saved)->toBytes(), saved);
        EXPECT_EQ(extents(*read(saved), 0x1000), "0..1.5 0..2 0..0");
    }
}

TEST(NewEntities, getASectionWhereThereIsNone) {
    const std::string header = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC";
    const std::string objects = "|0 SECTION|2 OBJECTS|0 DICTIONARY|5 C|0 ENDSEC";
    const std::string tables = "|0 SECTION|2 TABLES|0 TABLE|2 BLOCK_RECORD|0 BLOCK_RECORD|5 1F|2 *Model_Space"
                               "|0 ENDTAB|0 ENDSEC";
    const std::string blocks = "|0 SECTION|2 BLOCKS|0 BLOCK|2 *Model_Space|0 ENDBLK|0 ENDSEC";
    const struct {
        std::string before, after; ///< of the new section
        const char* owner;
    } cases[] = {
        {header + tables + blocks, objects, "|330 1F"},
        {header + tables, "", "|330 1F"},
        {header + objects + tables, "", "|330 1F"},
        {header, "", ""},
    };
    for (const auto& each : cases) {
        const auto drawing = read(tags(each.before + each.after + "|0 EOF"));
        const std::string bytes = drawing->toBytes();
        AcDbEntity* entity = newLine().release();
        const Handle handle = drawing->append(drawing->modelSpace(), entity)->handle;
        entity->close();
        const std::string saved = drawing->toBytes();
        EXPECT_EQ(saved, tags(each.before + "|0 SECTION|2 ENTITIES|" + newLineTags(hex(handle), each.owner) +
                              "|0 ENDSEC" + each.after + "|0 EOF"));
        const auto again = read(saved);
        EXPECT_TRUE(again->isSelectable(again->find(handle))) << each.before;
        ASSERT_EQ(erase(*drawing, handle), Acad::eOk);
        EXPECT_EQ(drawing->toBytes(), bytes) << "no section for what is erased again";
    }
}

TEST(NewEntities, areRefusedByABlockThatIsOnlyNamed) {
    const std::string named = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC|0 SECTION|2 TABLES|0 TABLE"
                              "|2 BLOCK_RECORD|0 BLOCK_RECORD|5 30|2 B|0 ENDTAB|0 ENDSEC";
    const auto defined = read(tags(named + "|0 SECTION|2 BLOCKS|0 BLOCK|2 B|0 ENDBLK|0 ENDSEC|0 EOF"));
    append(*defined, newLine(), 0x30);
    EXPECT_EQ(defined->toBytes().find("ENTITIES"), std::string::npos)
        << "what is in a block needs no section";
    const auto drawing = read(tags(named + "|0 EOF"));
    AcDbObjectPointer<AcDbBlockTableRecord> block{idOf(*drawing, 0x30), AcDb::kForWrite};
    const auto entity = newLine();
    EXPECT_EQ(block->appendAcDbEntity(entity.get()), Acad::eNotApplicable);
    EXPECT_TRUE(entity->objectId().isNull());
}

} // namespace
