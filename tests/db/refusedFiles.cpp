#include "drawings/DrawingText.h"

using namespace drawings;
using namespace std::string_literals;
using qx::db::Drawing;

namespace {

const std::string header = tags("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC"); // ten lines

std::string refusal(const std::string& bytes) {
    const auto drawing = Drawing::fromBytes(bytes, "plan.dxf");
    return drawing ? "read" : drawing.error();
}

TEST(RefusedFiles, areRefusedWithFileLineAndReason) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "1: the file is empty"},
        {"AutoCAD Binary DXF\r\n\x1A\0\0\0"s, "1: this is a binary DXF file; only text DXF is read"},
        {"AC1032\0\0\0\0"s, "1: this is a DWG file; only text DXF is read"},
        {"\0\0\0\0"s, "1: \"????\" is no group code"},
        {"AC2.10\0\0\0\0"s, "1: this is a DWG file; only text DXF is read"},
        {"\xFF\xFE\x30\0"s,
         "1: this file is in UTF-16; only single-byte texts, East Asian code pages and UTF-8 are read"},
        {"  0\rSECTION\r  2\rENTITIES\r",
         "1: the lines end with carriage returns alone; only LF and CRLF line ends are read"},
        {tags("0 SECTION|2 ENTITIES|0 ENDSEC|0 EOF", "\r\r\n"),
         "1: the lines end with CR CR LF, as after a wrong conversion; only LF and CRLF line ends are read"},
        {tags("9 $ACADVER|1 AC1015|0 EOF"), "1: a drawing begins with group 0, not 9"},
        {header, "11: the file is cut off: it ends without EOF"},
        {header + "  0\nSECTION\ntwo\nENTITIES\n", "13: \"two\" is no group code"},
        {header + "  0\nSECTION\n  2\nENTITIES\n\n  0\nENDSEC\n", "15: \"\" is no group code"},
        {header + std::string(60, 'x') + "\n",
         "11: \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\" is no group code"},
        {header + tags("0 SECTION|2 ENTITIES|0 EOF"), "15: EOF stands inside a section"},
        {header + tags("0 SECTION|2 ENTITIES|0 SECTION|2 OBJECTS"),
         "15: a section begins before the one before it has ended"},
        {header + tags("0 SECTION|0 ENDSEC|0 EOF"), "11: a section without a name"},
    };
    for (const auto& [bytes, sentence] : cases) EXPECT_EQ(refusal(bytes), "plan.dxf:" + sentence);
}

// Whatever remains of a drawing that was cut off must not pass for a whole one.
TEST(RefusedFiles, includeEveryBeginningOfADrawing) {
    const std::string whole = DrawingText{
        .entities = {"LINE|10 1.0|20 2.0|11 3.0|21 4.0|1001 QX|1011 5.0", "INSERT|66 1|2 B|10 1.0",
                     "ATTRIB|1 A|2 T", "SEQEND"},
        .blocks = {{"B", {"CIRCLE|40 1.0"}}},
        .groups = {
            {"G", {"100"}}}}.bytes();
    const std::size_t complete = whole.rfind("EOF") + 3;
    for (std::size_t length = 0; length < complete; ++length) {
        const std::string sentence = refusal(whole.substr(0, length));
        EXPECT_TRUE(sentence.starts_with("plan.dxf:") && sentence.find(": ") != std::string::npos)
            << length << " bytes: " << sentence;
    }
    EXPECT_EQ(refusal(whole.substr(0, complete)), "read");
}

// Sections in odd numbers are no reason to refuse a drawing, nor to stumble over it.
TEST(OddSections, areKept) {
    const std::string line = "0 LINE|5 100|8 0|10 1.0|20 1.0|11 2.0|21 2.0";
    const std::string entities = header + tags("0 SECTION|2 ENTITIES|" + line + "|0 ENDSEC");
    const std::string cases[] = {
        header + tags("0 EOF"),
        DrawingText{}.bytes().insert(0, header),
        entities + entities + tags("0 EOF"),
        entities + tags("0 EOF"),
        header + tags("0 SECTION|2 ENTITIES|0 INSERT|5 100|2 B|0 ENDSEC|0 EOF"),
        header + tags("0 SECTION|2 BLOCKS|0 BLOCK|2 B|" + line +
                      "|0 ENDBLK|0 ENDSEC|0 SECTION|2 ENTITIES|0 INSERT|2 B|0 ENDSEC|0 EOF"),
        header + tags("0 SECTION|2 ENTITIES|0 ATTRIB|0 VERTEX|0 SEQEND|0 ENDSEC|0 EOF"),
    };
    for (const std::string& bytes : cases) {
        const auto drawing = Drawing::fromBytes(bytes, "plan.dxf");
        ASSERT_TRUE(drawing) << drawing.error();
        (*drawing)->setLocked(true);
        EXPECT_EQ((*drawing)->toBytes(), bytes);
        (*drawing)->extentsAtOpening();
        AcDbObjectPointer<AcDbObject> space{AcDbObjectId{(*drawing)->modelSpace()}, AcDb::kForWrite};
    }
}

TEST(OddSections, aSecondOneOfEntitiesIsKeptButNotUsed) {
    const std::string first = "0 SECTION|2 ENTITIES|0 LINE|5 100|8 0|10 1.0|11 2.0|0 ENDSEC|";
    const std::string second =
        "0 SECTION|2 ENTITIES|0 LINE|5 101|8 0|10 5.0|11 6.0|0 HATCH|5 100|0 ENDSEC|0 EOF";
    const auto drawing = read(header + tags(first + second));
    ASSERT_EQ(drawing->findings().size(), 1u);
    EXPECT_EQ(drawing->findings()[0].line, 27u);
    EXPECT_EQ(drawing->findings()[0].sentence,
              "a second section ENTITIES; its objects are kept and can't be used");
    EXPECT_TRUE(drawing->isSelectable(drawing->find(0x100)));
    EXPECT_FALSE(drawing->isSelectable(drawing->find(0x101)));
    EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eOk);
    EXPECT_TRUE(drawing->toBytes().ends_with(tags(second))) << drawing->toBytes();
}

} // namespace
