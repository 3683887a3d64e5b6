#include "db/Oddities.h"
#include "drawings/DrawingText.h"

#include <algorithm>

using namespace drawings;
using qx::db::Finding;

namespace {

const std::string line = "LINE|10 1.0|20 1.0|11 2.0|21 1.0";
const std::string noHandle = "LINE|102 {|5 AB|102 }|10 1.0"; // the 5 keeps the builder from giving one

/// What was found: sentences, each with the compact tags of the line that it names.
std::string findings(const std::string& bytes) {
    std::string text;
    const auto drawing = read(bytes);
    for (const Finding& finding : drawing->findings()) {
        std::size_t at = 0;
        for (std::size_t i = 1; i < finding.line; ++i) at = bytes.find('\n', at) + 1;
        const std::size_t handle = bytes.find("\n  5\n", at) + 5;
        text += text.empty() ? "" : "; ";
        if (finding.line > 0) text += "at " + bytes.substr(handle, bytes.find('\n', handle) - handle) + ": ";
        text += finding.sentence;
    }
    EXPECT_EQ(drawing->toBytes(), bytes);
    return text;
}

TEST(Oddities, areFoundWhileReading) {
    const std::string second = " is given a second time; it means the object that had it first";
    const std::string large = line + "|5 FFFFFFFFFFFFFFF0", kept = "classes that are only kept (";
    const std::string selected = ") can't be selected", group = "of groups of such classes (";
    const std::string name = " a name that is given before",
                      names = " names that are given before, this is the first; the first of a name counts";
    const std::pair<DrawingText, std::string> cases[] = {
        {{.entities = {line, "POINT|10 1.0", "INSERT|2 B|10 1.0|70 3|71 2"}, .blocks = {{"B", {line}}}}, ""},
        {{.entities = {"DIMENSION|2 *D1|10 1.0"}, .blocks = {{"*D1", {line}}}}, ""},
        {{.entities = {line, line + "|5 100"}}, "at 100: the handle 100" + second},
        {{.entities = {line + "|5 d"}}, "at D: the handle D" + second}, // in two sections
        {{.entities = {large, large}}, "at FFFFFFFFFFFFFFF0: the handle FFFFFFFFFFFFFFF0" + second},
        {{.entities = {noHandle, line}}, "at AB: 1 entity has no handle; no script and no group can name it"},
        {{.entities = {noHandle}, .blocks = {{"B", {noHandle, line}}}},
         "at AB: 2 entities have no handle, this is the first; no script and no group can name them"},
        {{.entities = {"REGION|10 1.0", "WIPEOUT|10 1.0", line, "DIMENSION|10 1.0", "WIPEOUT|10 1.0"}},
         "4 objects of " + kept + "WIPEOUT 2, DIMENSION without a block 1, REGION 1" + selected},
        {{.entities = {"DIMENSION|2 B|10 1.0", "DIMENSION|2 *Model_Space|10 1.0", "DIMENSION|10 1.0"},
          .blocks = {{"B", {line}}}},
         "3 objects of " + kept + "DIMENSION without a block 3" + selected},
        {{.entities = {"INSERT|2 B", "INSERT|2 Gone", "INSERT|2 b", "INSERT|2 gone", "INSERT|10 1.0"},
          .blocks = {{"A", {"INSERT|2 B", "INSERT|2 No"}}, {"B", {line}}}},
         "at 401: 4 insertions are of blocks that are not there, this is the first; they show nothing"},
        {{.entities = {"INSERT|2 Gone", "INSERT|66 1|2 B", "ATTRIB|10 1.0|1 a", "SEQEND", "POINT|10 1.0"},
          .blocks = {{"B", {line}}}},
         "at 100: 1 insertion is of a block that is not there; it shows nothing"},
        {{.entities = {line, "VERTEX|10 1.0", "ATTRIB|10 1.0|1 a", "POLYLINE|66 1", "VERTEX|10 1.0", "SEQEND",
                       "SEQEND"}},
         "at 101: 3 vertices, attributes or sequence ends belong to no entity, this is the first; they are "
         "kept and not shown"},
        {{.entities = {line}, .blocks = {{"B", {"SEQEND"}}}},
         "at 400: 1 vertex, attribute or sequence end belongs to no entity; it is kept and not shown"},
        {{.entities = {line, "INSERT|66 1|2 B", "ATTRIB|10 1.0|1 a", "SEQEND"},
          .blocks = {{"B", {line}}},
          .groups = {{"G", {"100", "10", "101", "102", "D", "E0", "FFFF", "0", "x"}}}},
         "at E0: 7 members of this group are no entities that are there; they are passed over"},
        {{.layers = {"A|70 0|62 1", "B|70 0|62 1", "a|70 4|62 2"}},
         "at 16: 1 layer or block has" + name + "; the first one counts"},
        {{.entities = {"INSERT|2 B"}, .blocks = {{"B", {line}}, {"B", {line}}, {"B", {}}}},
         "at 401: 2 layers or blocks have" + names},
        {{.entities = {"WIPEOUT|67 1|10 1.0", "VIEWPORT|330 1E|10 1.0"},
          .blocks = {{"B", {"WIPEOUT|10 1.0"}}}},
         ""},
        {{.entities = {"WIPEOUT|10 1.0", line},
          .groups = {{"G", {"100", "101"}}, {"H", {"100", "101", "100"}}}},
         "1 object of " + kept + "WIPEOUT 1" + selected + "; 1 member " + group +
             "WIPEOUT 1) stays where it is when its group moves"},
        {{.entities = {"WIPEOUT|10 1.0", "DIMENSION|10 1.0"}, .groups = {{"G", {"100", "101"}}}},
         "2 objects of " + kept + "DIMENSION without a block 1, WIPEOUT 1" + selected + "; 2 members " +
             group + "DIMENSION without a block 1, WIPEOUT 1) stay where they are when their group moves"},
    };
    for (const auto& [text, expected] : cases) EXPECT_EQ(findings(text.bytes()), expected);
}

TEST(Oddities, definitionsWithoutAnEndAreCounted) {
    const DrawingText text{.entities = {line}, .blocks = {{"A", {line}}, {"B", {line}}, {"C", {line}}}};
    const std::string end = tags("0 ENDBLK|8 0");
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"A"}, "at 400: 1 block has no ENDBLK"},
        {{"C"}, "at 402: 1 block has no ENDBLK"},
        {{"B", "C"}, "at 401: 2 blocks have no ENDBLK, this is the first"},
    };
    for (const auto& [names, expected] : cases) {
        std::string bytes = text.bytes();
        for (const std::string& name : names)
            bytes.erase(bytes.find(end, bytes.find(tags("0 BLOCK|8 0|2 " + name))), end.size());
        EXPECT_EQ(findings(bytes), expected);
    }
}

// Such an object can neither be selected nor moved, and is written as it stood.
TEST(Oddities, ofAnObjectAreFoundWhenItIsRead) {
    const std::string kept = "; the object is kept as it is and can't be used",
                      open = "a group of an application (102 {) has no end" + kept;
    const std::pair<std::string, std::string> cases[] = {
        {"LINE|8 0|10 1.0|11 x", "the value 9 lines further on is no number" + kept},
        {"LINE|102 {ACAD_REACTORS|330 E2|8 0|10 1.0|11 2.0", open},
        {"LINE|8 0|102 {A|102 {B|102 }|10 1.0|11 2.0|1001 X|1002 {|1002 }", open},
        {"MTEXT|8 0|10 1.0|40 1.0|1 a|102 {A|101 Embedded Object|11 1.0|102 }", open},
    };
    for (const auto& [entity, expected] : cases) {
        const DrawingText text{.entities = {entity, line}};
        const auto drawing = read(text);
        EXPECT_FALSE(drawing->isSelectable(drawing->find(0x100))) << entity;
        EXPECT_EQ(move(*drawing, 0x100, shift(1, 0)), Acad::eNotApplicable) << entity;
        ASSERT_EQ(drawing->findings().size(), 1u) << entity;
        EXPECT_EQ(drawing->findings()[0].sentence, expected);
        EXPECT_EQ(drawing->findings()[0].line, drawing->lineOf(drawing->find(0x100)->begin));
        EXPECT_EQ(drawing->toBytes(), text.bytes());
    }
}

TEST(Oddities, areFewLinesHoweverManyThereAre) {
    DrawingText text;
    for (int i = 0; i < 25; ++i) text.entities.push_back(line + "|5 AA");
    for (int i = 0; i < 10; ++i) text.entities.push_back("CLASS" + std::to_string(i) + "|10 1.0");
    const auto drawing = read(text);
    ASSERT_EQ(drawing->findings().size(), 22u);
    EXPECT_EQ(drawing->findings()[20].sentence,
              "from here on 4 more objects have a handle that is given a second time");
    EXPECT_TRUE(drawing->findings()[21].sentence.ends_with("CLASS7 1 and 2 more classes) can't be selected"))
        << drawing->findings()[21].sentence;
}

TEST(Oddities, theFirstObjectKeepsItsHandle) {
    const auto drawing = read({.entities = {line + "|5 AA", "POINT|5 AA|10 1.0"}});
    ASSERT_TRUE(drawing->find(0xAA));
    EXPECT_EQ(drawing->find(0xAA)->kind, qx::db::Kind::line);
}

} // namespace
