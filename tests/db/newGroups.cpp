#include "drawings/groupsIn.h"

using namespace drawings;
using qx::db::Drawing;
using qx::db::Record;

namespace {

const std::string point = "POINT|10 0.0|20 0.0";
const std::vector<std::string> threePoints{point, point, point};

/// Makes a group in a step of its own; its handle.
Handle make(Drawing& drawing, const std::string& name, const std::vector<Handle>& members) {
    std::vector<Record*> records;
    for (const Handle each : members) records.push_back(drawing.find(each));
    Handle handle = 0;
    step(drawing, [&] { handle = drawing.makeGroup(name, records)->handle; });
    return handle;
}

/// The compact tags of a new group in the dictionary `owner`.
std::string groupTags(const std::string& handle, const std::string& owner, const std::string& members,
                      bool isUnnamed = false) {
    return "0 GROUP|5 " + handle + "|102 {ACAD_REACTORS|330 " + owner + "|102 }|330 " + owner +
           "|100 AcDbGroup|300 |70      " + (isUnnamed ? "1" : "0") + "|71      1" + members;
}

/// The compact tags of a new dictionary of groups in the root dictionary `root`.
std::string dictionaryTags(const std::string& handle, const std::string& root, const std::string& entries) {
    return "0 DICTIONARY|5 " + handle + "|102 {ACAD_REACTORS|330 " + root + "|102 }|330 " + root +
           "|100 AcDbDictionary|281      1" + entries;
}

std::string rootTags(const std::string& handle, const std::string& entries) {
    return "0 DICTIONARY|5 " + handle + "|330 0|100 AcDbDictionary|281      1" + entries;
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

const std::string header = "0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|9 $HANDSEED|5 100|0 ENDSEC";
const std::string entities = "|0 SECTION|2 ENTITIES|0 POINT|5 A|8 0|10 0.0|0 POINT|5 B|8 0|10 0.0|0 ENDSEC";
const std::string end = "|0 ENDSEC|0 EOF", objects = "|0 SECTION|2 OBJECTS";
const std::string both = "|340 B|340 A";

struct PlaceCase {
    const char* name;
    std::string before, after; ///< what follows the entities
    const char* seed;
};
const PlaceCase placeCases[] = {
    {"no objects", objects + end,
     objects + "|" + rootTags("100", "|3 ACAD_GROUP|350 101") + "|" +
         dictionaryTags("101", "100", "|3 New|350 102") + "|" + groupTags("102", "101", both) + end,
     "103"},
    {"beside other groups",
     objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|0 DICTIONARY|5 D|281 1|3 OLD|350 E|0 GROUP|5 E|340 A" +
         end,
     objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|0 DICTIONARY|5 D|281 1|3 OLD|350 E|3 New|350 100" +
         "|0 GROUP|5 E|340 A|" + groupTags("100", "D", both) + end,
     "101"},
    {"behind other objects, before extended data",
     objects + "|0 DICTIONARY|5 C|3 acad_group|360 D|0 DICTIONARY|5 D|1001 X|1070 1|0 OTHER|5 E" + end,
     objects + "|0 DICTIONARY|5 C|3 acad_group|360 D|0 DICTIONARY|5 D|3 New|350 100|1001 X|1070 1" +
         "|0 OTHER|5 E|" + groupTags("100", "D", both) + end,
     "101"},
    {"no dictionary of groups",
     objects + "|0 DICTIONARY|5 C|3 ACAD_LAYOUT|350 D|0 DICTIONARY|5 D|3 L|350 E" + end,
     objects + "|0 DICTIONARY|5 C|3 ACAD_LAYOUT|350 D|3 ACAD_GROUP|350 100|0 DICTIONARY|5 D|3 L|350 E|" +
         dictionaryTags("100", "C", "|3 New|350 101") + "|" + groupTags("101", "100", both) + end,
     "102"},
    {"a name for one that is not there",
     objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|3 Z|350 E|0 OTHER|5 E" + end,
     objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 100|3 Z|350 E|0 OTHER|5 E|" +
         dictionaryTags("100", "C", "|3 New|350 101") + "|" + groupTags("101", "100", both) + end,
     "102"},
    {"a name for something else", objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 E|0 OTHER|5 E" + end,
     objects + "|0 DICTIONARY|5 C|3 ACAD_GROUP|350 100|0 OTHER|5 E|" +
         dictionaryTags("100", "C", "|3 New|350 101") + "|" + groupTags("101", "100", both) + end,
     "102"},
    {"the root is not the first object",
     objects + "|0 OTHER|5 E|0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|0 DICTIONARY|5 D" + end,
     objects + "|0 OTHER|5 E|0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|0 DICTIONARY|5 D|3 New|350 100|" +
         groupTags("100", "D", both) + end,
     "101"},
    {"no root dictionary", objects + "|0 OTHER|5 E" + end,
     objects + "|" + rootTags("100", "|3 ACAD_GROUP|350 101") + "|" +
         dictionaryTags("101", "100", "|3 New|350 102") + "|" + groupTags("102", "101", both) +
         "|0 OTHER|5 E" + end,
     "103"},
    {"no section of objects", "|0 SECTION|2 THUMBNAILIMAGE|90 0" + end,
     objects + "|" + rootTags("100", "|3 ACAD_GROUP|350 101") + "|" +
         dictionaryTags("101", "100", "|3 New|350 102") + "|" + groupTags("102", "101", both) +
         "|0 ENDSEC|0 SECTION|2 THUMBNAILIMAGE|90 0" + end,
     "103"},
};

TEST(NewGroups, areWrittenWithTheDictionariesThatTheyNeed) {
    for (const PlaceCase& each : placeCases) {
        SCOPED_TRACE(each.name);
        for (const char* lineEnd : {"\n", "\r\n"}) {
            const std::string bytes = tags(header + entities + each.before, lineEnd);
            const auto drawing = read(bytes);
            const std::string before = groupsIn(*drawing);
            make(*drawing, "New", {0xB, 0xA});
            const std::string saved = drawing->toBytes(), groups = groupsIn(*drawing);
            EXPECT_NE(groups.find("New: B A"), std::string::npos) << groups;
            EXPECT_EQ(saved,
                      tags(replaced(header, "|5 100", std::string{"|5 "} + each.seed) + entities + each.after,
                           lineEnd));
            EXPECT_EQ(groupsIn(*read(saved)), groups);
            EXPECT_TRUE(read(saved)->findings().empty());

            drawing->history().undo();
            EXPECT_EQ(drawing->toBytes(), bytes);
            EXPECT_EQ(groupsIn(*drawing), before);
            drawing->history().redo();
            EXPECT_EQ(drawing->toBytes(), saved);
            EXPECT_EQ(groupsIn(*drawing), groups);
        }
    }
}

TEST(NewGroups, standBehindNewEntities) {
    const auto drawing = read(tags("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015" + end));
    step(*drawing, [&] {
        drawing->append(drawing->modelSpace(), new AcDbPoint)->live->close();
        drawing->makeGroup("New", {drawing->find(1)});
    });
    EXPECT_EQ(drawing->toBytes(),
              tags("0 SECTION|2 HEADER|9 $ACADVER|1 AC1015|0 ENDSEC|0 SECTION|2 ENTITIES|0 POINT|5 1"
                   "|100 AcDbEntity|8 0|100 AcDbPoint|10 0.0|20 0.0|30 0.0|50 0.0|0 ENDSEC" +
                   objects + "|" + rootTags("2", "|3 ACAD_GROUP|350 3") + "|" +
                   dictionaryTags("3", "2", "|3 New|350 4") + "|" + groupTags("4", "3", "|340 1") + end));
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "New: 1");
}

// The versions before 2000 know no owners, and what keeps copies apart is not there either.
TEST(NewGroups, takeTheFormOfTheVersion) {
    const std::pair<const char*, const char*> cases[] = {
        {"AC1014", "0 DICTIONARY|5 1000|102 {ACAD_REACTORS|330 C|102 }|100 AcDbDictionary|3 *A1|350 1001|"
                   "0 GROUP|5 1001|102 {ACAD_REACTORS|330 1000|102 }|100 AcDbGroup|300 |70      1"},
        {"AC1032", "0 DICTIONARY|5 1000|102 {ACAD_REACTORS|330 C|102 }|330 C|100 AcDbDictionary|281      1"},
    };
    for (const auto& [version, expected] : cases) {
        DrawingText text{.entities = threePoints, .version = version, .hasGroupDictionary = false};
        const auto drawing = read(text);
        ASSERT_TRUE(drawing->version().hasGroups());
        make(*drawing, drawing->freeGroupName(), {0x100});
        EXPECT_NE(drawing->toBytes().find(tags(expected)), std::string::npos) << drawing->toBytes();
        EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "*A1: 100");
    }
    for (const char* version : {"AC1009", "AC2.10", "?"})
        EXPECT_FALSE(read({.version = version})->version().hasGroups()) << version;
}

TEST(NewGroups, areNamedInTheEncodingOfTheDrawing) {
    const struct {
        const char *version, *name, *written;
    } cases[] = {
        {"AC1015", "Tür", "T\\U+00FCr"},
        {"AC1015", "座椅😀", "\\U+5EA7\\U+6905\\U+D83D\\U+DE00"},
        {"AC1021", "座椅😀", "座椅😀"},
    };
    for (const auto& each : cases) {
        const auto drawing = read({.entities = threePoints, .version = each.version});
        make(*drawing, each.name, {0x100});
        EXPECT_TRUE(drawing->hasGroup(each.name));
        const std::string saved = drawing->toBytes();
        EXPECT_NE(saved.find(tags(std::string{"3 "} + each.written)), std::string::npos) << saved;
        EXPECT_TRUE(read(saved)->hasGroup(each.name)) << each.name;
    }
}

TEST(NewGroups, areWalkedByNameAndFoundWithoutRegardToCase) {
    DrawingText text{.entities = threePoints, .groups = {{"Desk", {"100"}}, {"*A2", {"101"}}}};
    const auto drawing = read(text);
    EXPECT_EQ(groupsIn(*drawing), "*A2: 101, Desk: 100");
    EXPECT_EQ(drawing->freeGroupName(), "*A1");
    make(*drawing, "chair", {0x102, 0x100});
    make(*drawing, "*A1", {0x101});
    EXPECT_EQ(drawing->freeGroupName(), "*A3");
    EXPECT_TRUE(drawing->hasGroup("CHAIR") && drawing->hasGroup("desk") && !drawing->hasGroup("chai"));
    const char* all = "*A1: 101, *A2: 101, chair: 102 100, Desk: 100";
    EXPECT_EQ(groupsIn(*drawing), all);
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), all);
}

TEST(NewGroups, loseErasedMembers) {
    const auto drawing = read({.entities = threePoints});
    Handle line = 0;
    step(*drawing, [&] {
        auto* entity = new AcDbLine{{0, 0, 0}, {1, 0, 0}};
        line = drawing->append(drawing->modelSpace(), entity)->handle;
        entity->close();
    });
    make(*drawing, "G", {0x101, line, 0x100});
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "G: 101 1000 100");
    step(*drawing, [&] { erase(*drawing, line); });
    EXPECT_EQ(groupsIn(*drawing), "G: 101 100");
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "G: 101 100");
    step(*drawing, [&] { erase(*drawing, 0x101); });
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "G: 100");
    drawing->history().undo(), drawing->history().undo();
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "G: 101 1000 100");
}

// Steps that are given up take the dictionaries along that were made with them.
TEST(NewGroups, areMadeAnewAfterUndo) {
    const DrawingText text{.entities = threePoints, .hasGroupDictionary = false};
    const auto drawing = read(text);
    make(*drawing, "A", {0x100});
    make(*drawing, "B", {0x101});
    drawing->history().undo();
    EXPECT_EQ(groupsIn(*drawing), "A: 100");
    drawing->history().undo();
    EXPECT_EQ(groupsIn(*drawing), "none");
    make(*drawing, "A", {0x102});
    EXPECT_EQ(drawing->history().redo(), "");
    EXPECT_EQ(groupsIn(*drawing), "A: 102");
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "A: 102");
    drawing->history().begin("refused");
    drawing->makeGroup("B", {drawing->find(0x100)});
    drawing->history().rollBack();
    EXPECT_EQ(groupsIn(*drawing), "A: 102");
    drawing->history().undo();
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

TEST(NewGroups, takeTheNamesOfErasedOnes) {
    const DrawingText text{.entities = threePoints, .groups = {{"Desk", {"100"}}, {"Chair", {"100"}}}};
    const auto drawing = read(text);
    step(*drawing, [&] { erase(*drawing, DrawingText::firstGroup); });
    EXPECT_FALSE(drawing->hasGroup("DESK"));
    const Handle made = make(*drawing, "DESK", {0x102, 0x101});
    EXPECT_EQ(groupsIn(*drawing), "Chair: 100, DESK: 102 101");
    const std::string saved = drawing->toBytes();
    EXPECT_NE(saved.find(tags("3 DESK|350 " + hex(made) + "|3 Chair|350 E1|0 GROUP")), std::string::npos);
    EXPECT_EQ(groupsIn(*read(saved)), "Chair: 100, DESK: 102 101");

    step(*drawing, [&] { erase(*drawing, made); });
    EXPECT_EQ(groupsIn(*read(drawing->toBytes())), "Chair: 100");
    drawing->history().undo(), drawing->history().undo(), drawing->history().undo();
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
