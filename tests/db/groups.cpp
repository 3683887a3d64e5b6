#include "drawings/groupsIn.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string point = "POINT|10 0.0|20 0.0";

TEST(GroupDictionary, isWalkedByName) {
    const std::pair<std::vector<GroupText>, const char*> cases[] = {
        {{}, ""},
        {{{"b"}, {"C"}, {"A"}, {"a1"}}, "A:, a1:, b:, C:"},
        {{{"*A2"}, {"x"}, {"*A10"}}, "*A10:, *A2:, x:"},
        {{{"B"}, {"a"}, {"A"}}, "a:, A:, B:"},
        {{{"\xD7\xF9"}, {"z"}, {"\\U+4E2D"}}, "z:, 中:, 座:"},
    };
    for (const auto& [groups, sorted] : cases) {
        const auto drawing = read({.groups = groups});
        EXPECT_EQ(groupsIn(*drawing), sorted);
        EXPECT_EQ(drawing->groups().size(), groups.size());
    }
    const auto without = read({.hasGroupDictionary = false});
    EXPECT_EQ(groupsIn(*without), "none");
    EXPECT_TRUE(without->groups().empty());
}

TEST(GroupDictionary, findsByNameAndLosesErasedGroups) {
    const DrawingText text{.entities = {point}, .groups = {{"Desk", {"100"}}, {"Chair", {"100"}}}};
    const auto drawing = read(text);
    EXPECT_EQ(erase(*drawing, DrawingText::firstGroup), Acad::eOk);
    EXPECT_EQ(groupsIn(*drawing), "Chair: 100");
    AcDbObjectPointer<AcDbDictionary> dictionary{idOf(*drawing, DrawingText::groupDictionary)};
    AcDbObjectId id;
    EXPECT_EQ(dictionary->getAt(L"Desk", id), Acad::eKeyNotFound);
    EXPECT_EQ(dictionary->getAt(L"CHAIR", id), Acad::eOk);
    EXPECT_EQ(id.handle().value(), DrawingText::firstGroup + 1);
    EXPECT_EQ(dictionary->numEntries(), 1u);
    EXPECT_EQ(erase(*drawing, DrawingText::firstGroup, false), Acad::eOk);
    EXPECT_TRUE(dictionary->has(L"desk"));
}

// Entities are 100, 101 and 102; B is the block record 1F, 104 the attribute of 103.
TEST(Groups, listTheirMembers) {
    const struct {
        std::vector<std::string> listed;
        std::vector<Handle> erased;
        const char* members;
    } cases[] = {
        {{"102", "100", "101"}, {}, " 102 100 101"},
        {{}, {}, ""},
        {{"100", "100"}, {}, " 100 100"},
        {{" 100 ", "0101"}, {}, " 100 101"},
        {{"100", "ABC", "101", "0", "x"}, {}, " 100 101"},
        {{"1F", "100", "D", "104"}, {}, " 100"},
        {{"100", "101", "102"}, {0x101}, " 100 102"},
        {{"100", "101"}, {0x100, 0x101}, ""},
    };
    for (const auto& each : cases) {
        DrawingText text{.groups = {{"G", each.listed}}};
        text.entities = {point, point, point, "INSERT|66 1|2 B|10 0.0", "ATTRIB|1 a|2 T", "SEQEND"};
        const auto drawing = read(text);
        for (const Handle handle : each.erased) EXPECT_EQ(erase(*drawing, handle), Acad::eOk);
        EXPECT_EQ(groupsIn(*drawing), std::string{"G:"} + each.members);
    }
}

TEST(Groups, getErasedMembersBackInTheirPlaces) {
    const DrawingText text{.entities = {point, point, point},
                           .groups = {{"G", {"102", "101", "100", "ABC"}}}};
    const auto drawing = read(text);
    step(*drawing, [&] { erase(*drawing, 0x101); });
    AcDbObjectPointer<AcDbEntity> gone{idOf(*drawing, 0x101), AcDb::kForRead, true};
    EXPECT_FALSE(AcDbObjectPointer<AcDbGroup> { idOf(*drawing, DrawingText::firstGroup) } -> has(gone));
    gone.close();
    EXPECT_EQ(groupsIn(*drawing), "G: 102 100");

    const std::string saved = drawing->toBytes();
    EXPECT_EQ(groupsIn(*read(saved)), "G: 102 100");
    EXPECT_NE(saved.find(tags("71 1|340 102|340 100|340 ABC|0 ENDSEC")), std::string::npos)
        << "erased members are not saved, unknown ones are";

    drawing->history().undo();
    EXPECT_EQ(groupsIn(*drawing), "G: 102 101 100");
    EXPECT_EQ(drawing->history().redo(), "step");
    EXPECT_EQ(erase(*drawing, 0x101, false), Acad::eOk);
    EXPECT_EQ(groupsIn(*drawing), "G: 102 101 100");
}

// An attribute goes with its reference, though nobody has erased it by itself.
TEST(Groups, loseAttributesThatGoWithTheirReference) {
    const DrawingText text{.entities = {"INSERT|66 1|2 B|10 0.0", "ATTRIB|1 a|2 T", "SEQEND", point},
                           .groups = {{"G", {"101", "103", "100"}}}};
    const auto drawing = read(text);
    step(*drawing, [&] { erase(*drawing, 0x100); });
    const std::string saved = drawing->toBytes();
    EXPECT_NE(saved.find(tags("71 1|340 103|0 ENDSEC")), std::string::npos) << saved;
    EXPECT_EQ(saved.find("ATTRIB"), std::string::npos);
    drawing->history().undo();
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
