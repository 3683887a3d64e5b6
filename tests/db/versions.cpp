#include "drawings/DrawingText.h"

using namespace drawings;
using qx::db::Drawing;
using qx::db::Finding;
using qx::db::Record;

namespace {

const std::string line = "|0 LINE|8 0|10 1.0|20 1.0|30 0.0|11 2.0|21 1.0|31 0.0";
const std::string newLine = "|8 0|10 0.0|20 0.0|30 0.0|11 1.5|21 2.0|31 0.0";

std::string variables(const std::string& more) { return "0 SECTION|2 HEADER" + more + "|0 ENDSEC"; }
std::string section(const std::string& name, const std::string& more) {
    return "|0 SECTION|2 " + name + more + "|0 ENDSEC";
}

std::string findings(const Drawing& drawing) {
    std::string text;
    for (const Finding& each : drawing.findings()) {
        text += (text.empty() ? "" : "; ") + std::to_string(each.line) + ": ";
        text += each.sentence.substr(0, each.sentence.find(", this is the first"));
    }
    return text;
}

int selectableIn(const Drawing& drawing) {
    int count = 0;
    drawing.forEachInModelSpace([&](Record* each) { count += drawing.isSelectable(each); });
    return count;
}

void appendLine(Drawing& drawing) {
    AcDbEntity* entity = new AcDbLine{{0, 0, 0}, {1.5, 2, 0}};
    drawing.append(drawing.modelSpace(), entity);
    entity->close();
}

TEST(Versions, areReadAndGetNewObjectsInTheirOwnForm) {
    const std::string markers = "|100 AcDbEntity|8 0|100 AcDbLine" + newLine.substr(4);
    const struct {
        std::string header, added;
    } cases[] = {
        {"|9 $ACADVER|1 AC1006|9 $HANDLING|70 0|9 $HANDSEED|5 0", newLine},
        {"|9 $ACADVER|1 AC1009|9 $HANDLING|70 1", "|5 1" + newLine},
        {"|9 $ACADVER|1 AC1009", newLine},
        {"|9 $ACADVER|1 AC2.10", newLine},
        {"|9 $ACADVER|1 AC1012", "|5 1" + markers},
        {"|9 $ACADVER|1 AC1032", "|5 1" + markers},
        {"", newLine},
    };
    for (const auto& [header, added] : cases) {
        const std::string before = variables(header) + "|0 SECTION|2 ENTITIES" + line;
        const std::string after = "|0 LINE|67 1|10 0.0|11 1.0|0 ENDSEC|0 EOF";
        const auto drawing = read(tags(before + after));
        EXPECT_EQ(selectableIn(*drawing), 1) << header;
        appendLine(*drawing);
        const std::size_t end = after.find("|0 ENDSEC");
        EXPECT_EQ(drawing->toBytes(),
                  tags(before + after.substr(0, end) + "|0 LINE" + added + after.substr(end)));
        EXPECT_EQ(selectableIn(*read(drawing->toBytes())), 2) << header;
    }
}

// In R12 a block is named by its BLOCK alone, and owns what stands between that and its end.
TEST(Versions, blocksNeedNoRecords) {
    const std::string blocks =
        section("BLOCKS", "|0 BLOCK|2 $MODEL_SPACE|0 ENDBLK|0 BLOCK|2 B|10 1.0|20 1.0" + line + "|0 ENDBLK");
    const std::string insert =
        section("ENTITIES", "|0 INSERT|5 9|8 0|66 1|2 b|10 5.0|20 5.0|0 ATTRIB|8 0|0 SEQEND");
    for (const std::string& order : {blocks + insert, insert + blocks}) {
        const auto drawing = read(tags(variables("|9 $ACADVER|1 AC1009") + order + "|0 EOF"));
        EXPECT_EQ(extents(*drawing, 9), "5..6 5..5 0..0");
        EXPECT_EQ(drawing->findBlock("*MODEL_SPACE"), drawing->modelSpace());
        EXPECT_EQ(selectableIn(*drawing), 1);
        EXPECT_FALSE(drawing->groupDictionary());
        AcDbDictionary* groups = nullptr;
        EXPECT_EQ(drawing->database().getGroupDictionary(groups, AcDb::kForRead), Acad::eKeyNotFound);
    }
}

TEST(Versions, oddFilesAreReadWithFindings) {
    const std::string unsaid = "the drawing does not say its version; it is read like one of R12 (AC1009)";
    const std::string noHandle = "1 entity has no handle; no script and no group can name it";
    const std::string entity = "|0 LINE|5 A|8 0|10 1.0|11 2.0";
    const std::string entities = section("ENTITIES", entity), r12 = variables("|9 $ACADVER|1 AC1009");
    const std::string pages = "|9 $ACADVER|1 AC1015|9 $DWGCODEPAGE|3 ";
    const std::string end = "|0 EOF", start = entities.substr(1);
    const struct {
        std::string compact, expected;
    } cases[] = {
        {start + end, "0: " + unsaid},
        {section("ENTITIES", line).substr(1) + end, "0: " + unsaid + "; 5: " + noHandle},
        {variables("|9 $ACADVER|1 FOO") + entities + end,
         "8: the version \"FOO\" is not known; it is read like R12 (AC1009)"},
        {variables("|9 $ACADVER|1 AC1050") + entities + end,
         "8: the version \"AC1050\" is too new to be known; it is read like 2018 (AC1032)"},
        {variables(pages + "KLINGON") + entities + end,
         "12: the code page \"KLINGON\" is not known here; texts are read as ANSI_1252"},
        {r12 + section("X\xE9", "") + entities + end,
         "0: the drawing does not say how its texts are encoded; they are read as ANSI_1252"},
        {section("中", "").substr(1) + entities + end,
         "0: " + unsaid + "; 0: the drawing does not say how its texts are encoded; they are read as UTF-8"},
        {variables("|9 $ACADVER|1 AC1032") + section("X\xE9", "|1 \xFF") + entities + end,
         "14: 2 lines hold bytes that are no UTF-8"},
        {variables("|9 $ACADVER|1 AC1032") + section("X", "|3 \xE4\xB8|1 \xAD|3 \xAD|1 \xFF") + entities +
             end,
         ""},
        {variables(pages + "ANSI_936") + section("X", "|1 \xD6\xD0|1 \x95\x5C|1 x\xFF|1 \xD6|1 \xFF") +
             entities + end,
         "24: 3 lines hold bytes that the code page does not have"},
        {variables(pages + "ANSI_936") + section("X", "|3 \xD6|1 \xD0\xFF") + entities + end, ""},
        {variables(pages + "ANSI_1252") + section("X\xE9", "|1 \x81") + entities + end,
         "20: a line holds bytes that the code page does not have; they are kept"},
        {"\xEF\xBB\xBF"
         "999 x|" +
             variables(pages + "ANSI_936") + entities + end,
         "1: the file begins with the mark of UTF-8; its texts are read so"},
        {r12 + entity + entities + "|0 ENDSEC" + end, "11: 2 records stand outside of all sections"},
        {r12 + section("HEADER", "") + entities + end,
         "11: a second section of this name; it is kept, but the first one counts"},
        {variables(pages + "ANSI_1252") + section("ENTITIES", entity + "|330 77") + end,
         "19: 1 entity names an owner that is not there; it counts to the drawing's own space"},
        {r12 + entities + section("OBJECTS", "|0 GROUP|5 B|340 A|340 C|340 0") + end,
         "31: 2 members of this group are no entities that are there; they are passed over"},
        {r12 + entities + end + "|0 EOF",
         "29: the file goes on behind EOF; the rest is kept and means nothing"},
        {"999 x|" + r12 + entities + "|0 EOF\x1A", ""},
        {"999 x|" + r12 + entities + "|0 EOF|\x1A", ""},
        {r12 + entities + section("TABLES", "|0 TABLE|2 DIMSTYLE|0 DIMSTYLE|2 X|5 A|0 ENDTAB") + end, ""},
    };
    for (const auto& [compact, expected] : cases) {
        const std::string bytes = tags(compact);
        const auto drawing = read(bytes);
        const std::string found = findings(*drawing);
        EXPECT_EQ(found.substr(0, expected.empty() ? found.size() : expected.size()), expected) << compact;
        EXPECT_EQ(selectableIn(*drawing), 1) << compact;
        EXPECT_EQ(drawing->toBytes(), bytes);
    }
}

// Names that were written with escapes, or in bytes, are the same name; undecodable ones stay apart.
TEST(Versions, tablesMayStandBehindWhatRefersToThem) {
    const std::string tables =
        section("TABLES", "|0 TABLE|2 LAYER|0 LAYER|2 \\U+4E2D|70 4|62 7|0 ENDTAB|0 TABLE|2 BLOCK_RECORD"
                          "|0 BLOCK_RECORD|5 30|2 B|0 BLOCK_RECORD|5 1F|2 *Model_Space|0 ENDTAB");
    const std::string rest =
        section("BLOCKS", "|0 BLOCK|2 B|0 LINE|5 9|8 0|10 0.0|11 1.0|0 ENDBLK") +
        section("ENTITIES", "|0 LINE|5 A|330 1F|8 \xD6\xD0|10 1.0|11 2.0|0 INSERT|5 B|330 1F|8 0|2 B|10 0.0");
    const std::string header = variables("|9 $ACADVER|1 AC1015|9 $DWGCODEPAGE|3 ansi_936");
    for (const std::string& order :
         {header + tables + rest, header + rest + tables, (rest + tables).substr(1) + "|" + header}) {
        const auto drawing = read(tags(order + "|0 EOF"));
        EXPECT_EQ(findings(*drawing), "") << order;
        EXPECT_EQ(drawing->modelSpace()->handle, 0x1Fu);
        EXPECT_EQ(move(*drawing, 0xA, shift(1, 0)), Acad::eOnLockedLayer);
        EXPECT_EQ(extents(*drawing, 0xB), "0..1 0..0 0..0");
        EXPECT_EQ(drawing->toBytes(), tags(order + "|0 EOF"));
    }
}

} // namespace
