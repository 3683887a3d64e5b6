#include "drawings/DrawingText.h"

#include "dbdict.h"
#include "dbgroup.h"
#include "os/encoding.h"

using namespace drawings;
using qx::db::Drawing;

namespace {

const std::string point = "POINT|10 0.0|20 0.0";

/// The names of the group dictionary, in its order.
std::string names(Drawing& drawing) {
    AcDbDictionary* dictionary = nullptr;
    if (drawing.database().getGroupDictionary(dictionary) != Acad::eOk) return "no dictionary";
    std::string text;
    const std::unique_ptr<AcDbDictionaryIterator> each{dictionary->newIterator()};
    for (; !each->done(); each->next())
        text += (text.empty() ? "" : " ") + qx::os::toUtf8(std::wstring_view{each->name()});
    dictionary->close();
    return text;
}

std::string members(const Drawing& drawing, std::uint64_t group) {
    AcDbObjectPointer<AcDbGroup> open{idOf(drawing, group)};
    if (open.openStatus() != Acad::eOk) return "status " + std::to_string(open.openStatus());
    AcDbObjectIdArray ids;
    const Adesk::UInt32 count = open->allEntityIds(ids);
    EXPECT_EQ(count, static_cast<Adesk::UInt32>(ids.length()));
    EXPECT_EQ(count, open->numEntities());
    std::string text;
    for (int i = 0; i < ids.length(); ++i) text += (i ? " " : "") + hex(ids[i].handle().value());
    return text;
}

TEST(GroupDictionary, isWalkedByName) {
    const std::pair<std::vector<GroupText>, const char*> cases[] = {
        {{}, ""},
        {{{"b"}, {"C"}, {"A"}, {"a1"}}, "A a1 b C"},
        {{{"*A2"}, {"x"}, {"*A10"}}, "*A10 *A2 x"},
        {{{"B"}, {"a"}, {"A"}}, "a A B"},
        {{{"\xD7\xF9"}, {"z"}, {"\\U+4E2D"}}, "z 中 座"},
    };
    for (const auto& [groups, sorted] : cases) {
        const auto drawing = read(DrawingText{.groups = groups}.bytes());
        EXPECT_EQ(names(*drawing), sorted);
        EXPECT_EQ(drawing->groups().size(), groups.size());
    }
    const auto without = read(DrawingText{.hasGroupDictionary = false}.bytes());
    EXPECT_EQ(names(*without), "no dictionary");
    EXPECT_TRUE(without->groups().empty());
}

TEST(GroupDictionary, findsByNameAndLosesErasedGroups) {
    const DrawingText text{.entities = {point}, .groups = {{"Desk", {"100"}}, {"Chair", {"100"}}}};
    const auto drawing = read(text.bytes());
    EXPECT_EQ(erase(*drawing, DrawingText::firstGroup), Acad::eOk);
    EXPECT_EQ(names(*drawing), "Chair");
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
        {{"102", "100", "101"}, {}, "102 100 101"},
        {{}, {}, ""},
        {{"100", "100"}, {}, "100 100"},
        {{" 100 ", "0101"}, {}, "100 101"},
        {{"100", "ABC", "101", "0", "x"}, {}, "100 101"},
        {{"1F", "100", "D", "104"}, {}, "100"},
        {{"100", "101", "102"}, {0x101}, "100 102"},
        {{"100", "101"}, {0x100, 0x101}, ""},
    };
    for (const auto& each : cases) {
        DrawingText text{.groups = {{"G", each.listed}}};
        text.entities = {point, point, point, "INSERT|66 1|2 B|10 0.0", "ATTRIB|1 a|2 T", "SEQEND"};
        const auto drawing = read(text.bytes());
        for (const Handle handle : each.erased) EXPECT_EQ(erase(*drawing, handle), Acad::eOk);
        EXPECT_EQ(members(*drawing, DrawingText::firstGroup), each.members);
    }
}

TEST(Groups, getErasedMembersBackInTheirPlaces) {
    const DrawingText text{.entities = {point, point, point},
                           .groups = {{"G", {"102", "101", "100", "ABC"}}}};
    const auto drawing = read(text.bytes());
    step(*drawing, [&] { erase(*drawing, 0x101); });
    AcDbObjectPointer<AcDbEntity> gone{idOf(*drawing, 0x101), AcDb::kForRead, true};
    EXPECT_FALSE(AcDbObjectPointer<AcDbGroup> { idOf(*drawing, DrawingText::firstGroup) } -> has(gone));
    gone.close();
    EXPECT_EQ(members(*drawing, DrawingText::firstGroup), "102 100");

    const std::string saved = drawing->toBytes();
    EXPECT_EQ(members(*read(saved), DrawingText::firstGroup), "102 100");
    EXPECT_NE(saved.find(tags("71 1|340 102|340 100|340 ABC|0 ENDSEC")), std::string::npos)
        << "erased members are not saved, unknown ones are";

    drawing->history().undo();
    EXPECT_EQ(members(*drawing, DrawingText::firstGroup), "102 101 100");
    EXPECT_EQ(drawing->history().redo(), "step");
    EXPECT_EQ(erase(*drawing, 0x101, false), Acad::eOk);
    EXPECT_EQ(members(*drawing, DrawingText::firstGroup), "102 101 100");
}

// An attribute goes with its reference, though nobody has erased it by itself.
TEST(Groups, loseAttributesThatGoWithTheirReference) {
    const DrawingText text{.entities = {"INSERT|66 1|2 B|10 0.0", "ATTRIB|1 a|2 T", "SEQEND", point},
                           .groups = {{"G", {"101", "103", "100"}}}};
    const auto drawing = read(text.bytes());
    step(*drawing, [&] { erase(*drawing, 0x100); });
    const std::string saved = drawing->toBytes();
    EXPECT_NE(saved.find(tags("71 1|340 103|0 ENDSEC")), std::string::npos) << saved;
    EXPECT_EQ(saved.find("ATTRIB"), std::string::npos);
    drawing->history().undo();
    EXPECT_EQ(drawing->toBytes(), text.bytes());
}

} // namespace
