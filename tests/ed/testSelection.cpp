#include "aced.h"
#include "acutads.h"
#include "dbmain.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"

#include <gtest/gtest.h>

namespace {
using namespace qx;
using tests::Editor;
using tests::ScriptRun;

// About 1000 x 750 units, so that a pixel is about one unit and a pick reaches about three.
const std::string scene =
    drawings::DrawingText{
        .entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0", "LINE|5 A2|10 0|20 750|11 100|21 750",
                     "CIRCLE|5 A3|10 500|20 400|40 100", "LINE|5 A4|8 LOCKED|10 700|20 100|11 800|21 100",
                     "LINE|5 A5|8 OFF|10 700|20 200|11 800|21 200",
                     "LINE|5 A6|8 FROZEN|10 700|20 300|11 800|21 300", "LINE|5 A7|10 0|20 10|11 100|21 10",
                     "WIPEOUT|5 A8|10 0|20 0", "LINE|5 A9|10 0|20 10|11 100|21 10"},
        .groups = {{"PAIR", {"A2", "A3", "A5"}}, {"LOOSE", {"A1", "A3"}, false}}}
        .bytes();

/// The handles of what is selected, or the result code when there is no set.
std::string selectionOf(const ACHAR* mode, const void* points) {
    ads_name set{}, name{};
    const int code = acedSSGet(mode, points, nullptr, nullptr, set);
    if (code != RTNORM) return std::to_string(code) + (set[0] || set[1] ? " and a set" : "");
    std::string handles;
    AcDbObjectId id;
    for (int i = 0; acedSSName(set, i, name) == RTNORM; ++i) {
        EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
        handles += (i ? " " : "") + drawings::hex(id.handle().value());
    }
    acedSSFree(set);
    return handles;
}

/// A command that selects, fed with these answers; what the prompt gave is left in `selected`.
ScriptRun select(Editor& editor, std::string& selected, const char* answers) {
    return editor.runBody([&] { selected = selectionOf(nullptr, nullptr); }, answers);
}

struct SelectionCase {
    const char* name;
    const char* answers;
    const char* selected;
};
const SelectionCase selectionCases[] = {
    {"all: locked yes, off and frozen no", "ALL\n\n", "A1 A2 A3 A4 A7 A9"},
    {"Enter with nothing", "\n", "-5001"},
    {"cancel", "ALL\n^C", "-5002"},
    {"by handle, in any case, without groups", "(HANDENT \"a3\")\n\n", "A3"},
    {"by handle, in the order given", "(handent \"A4\") (handent \"A1\")\n\n", "A4 A1"},
    {"a pick by handle brings its selectable groups", "(list (handent \"A2\") (list 0 0))\n\n", "A2 A3"},
    {"a pick by handle on a layer that is off", "(list (handent \"A5\") (list 0 0))\n\n", "-5001"},
    {"by handle on a layer that is off", "(handent \"A5\")\n\n", "-5001"},
    {"a pick brings its selectable groups, not what is hidden", "50,750\n\n", "A2 A3"},
    {"a pick of a group that is not selectable", "900,0\n\n", "A1"},
    {"a pick of a circle on its line", "500,500\n\n", "A3 A2"},
    {"the newest of those that are equally near", "50,11\n\n", "A9"},
    {"hidden objects can't be picked", "750,200\n\n\n", "-5001"},
    {"a missed pick, then another answer", "300,300\nL\n\n", "A9"},
    {"window to the right takes what is inside", "650,50\n810,500\n\n", "A4"},
    {"window to the left takes what it touches", "750,500\n650,50\n\n", "A4"},
    {"W inside a circle", "W\n450,350\n550,450\n\n", "-5001"},
    {"corner relative to the last point", "W\n-1,-1\n@1002,21\n\n", "A1 A7 A9"},
    {"Enter leaves the window, not the selection", "W\n\nC\n0,0\n\nL\n\n", "A9"},
    {"a cancel at a corner cancels", "L\nW\n^C", "-5002"},
    {"remove and add", "ALL\nR\nW\n-1,-1\n1001,20\nA\n(handent \"A7\")\n\n", "A2 A3 A4 A7"},
    {"removing a group by one pick", "ALL\nR\n500,500\n\n", "A1 A4 A7 A9"},
    {"nothing is left", "L\nR\nL\n\n", "-5001"},
    {"nothing before", "P\n\n", "-5001"},
};

TEST(SelectionPrompt, answers) {
    for (const SelectionCase& each : selectionCases) {
        Editor editor{scene};
        std::string selected;
        const auto run = select(editor, selected, each.answers);
        EXPECT_EQ(selected, each.selected) << each.name << '\n' << run.transcript;
        EXPECT_EQ(run.failure, "") << each.name;
        expectInOrder(editor);
    }
    for (const char* answers : {"XYZ\n\n", "(handent \"FF\")\n\n", "(foo)\n\n", "1,2,3,4\n\n"}) {
        Editor editor{scene};
        std::string selected;
        EXPECT_EQ(select(editor, selected, answers).failure.substr(0, 11), "test.scr:2:") << answers;
        EXPECT_EQ(selected, "-5002") << answers;
    }
}

TEST(SelectionPrompt, previousIsTheLastSelection) {
    Editor editor{scene};
    std::string selected;
    select(editor, selected, "(handent \"A1\") (handent \"A7\")\n\n");
    select(editor, selected, "ALL\n^C"); // leaves it alone
    editor.run("ERASE\n(handent \"A7\")\n\nBODY\nP\n\n");
    EXPECT_EQ(selected, "-5001"); // P is what ERASE was given, and that is gone
    editor.run("U\nBODY\nP\n\n");
    EXPECT_EQ(selected, "A7");
}

TEST(SelectionPrompt, groupsFollowPickstyle) {
    for (const int style : {0, 1, 2, 3}) {
        Editor editor{scene};
        editor.session.variables().force("PICKSTYLE", style);
        std::string selected;
        select(editor, selected, "50,750\n\n");
        EXPECT_EQ(selected, style % 2 ? "A2 A3" : "A2") << style;
    }
}

// The system lies at (1000, 0) and is turned by a quarter: user (0, 300) is world (700, 0).
TEST(SelectionPrompt, picksInTheUserSystem) {
    Editor editor{drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0"},
                                        .header = "|9 $UCSORG|10 1000|20 0|30 0|9 $UCSXDIR|10 0|20 1|30 0"
                                                  "|9 $UCSYDIR|10 -1|20 0|30 0"}
                      .bytes()};
    std::string selected;
    for (const char* answers : {"0,300\n\n", "*300,0\n\n", "W\n-1,-1\n1,1001\n\n", "300,0\n\n"}) {
        select(editor, selected, answers);
        EXPECT_EQ(selected, answers[0] == '3' ? "-5001" : "A1") << answers;
    }
}

TEST(SelectionModes, whatEachGives) {
    const ACHAR* prompts[] = {L" 选择直线：", L""};
    const ACHAR* noPrompts[] = {L"a", nullptr};
    const struct {
        const ACHAR* mode;
        const void* points;
        const char* answers;
        const char* selected;
    } cases[] = {
        {L"", nullptr, "L\n\n", "A9"},
        {L":$", prompts, "L\nR\n^C", "-5002"},
        {L"_:$", prompts, "L\n\n", "A9"},
        {L":$", nullptr, "", "-5003"},
        {L":$", noPrompts, "", "-5003"},
        {L"_I", nullptr, "", "-5001"},
        {L"A", nullptr, "", "A1 A2 A3 A4 A7 A9"},
        {L"X", nullptr, "", "A1 A2 A3 A4 A5 A6 A7 A8 A9"},
        {L"Q", nullptr, "", "-5003"},
    };
    for (const auto& each : cases) {
        Editor editor{scene};
        editor.runBody([&] { EXPECT_EQ(selectionOf(each.mode, each.points), each.selected); }, each.answers);
    }
    Editor editor{scene};
    const resbuf filter{};
    ads_name set{};
    editor.runBody([&] { EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, &filter, set), RTREJ); });
}

// What a command sees of the objects selected before it, and what is left of them.
TEST(PickFirst, dependsOnTheFlags) {
    const struct {
        int flags;
        const ACHAR* mode;
        const char* selected;
        std::size_t left;
    } cases[] = {
        {ACRX_CMD_MODAL, nullptr, "A9", 0}, // cleared when the command begins, so it asks
        {ACRX_CMD_MODAL, L"_I", "-5001", 0},
        {ACRX_CMD_USEPICKSET, nullptr, "A1 A3", 0},
        {ACRX_CMD_USEPICKSET, L"I", "A1 A3", 0},
        {ACRX_CMD_REDRAW, nullptr, "A1 A3", 2},
        {ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW, L"_I", "A1 A3", 2},
    };
    for (const auto& each : cases) {
        Editor editor{scene};
        db::Record* const first[] = {editor.drawing().find(0xA1), editor.drawing().find(0xA3)};
        editor.session.pickFirst = ed::RecordSet{&editor.drawing()};
        editor.session.pickFirst.add(first);
        editor.runBody([&] { EXPECT_EQ(selectionOf(each.mode, nullptr), each.selected) << each.flags; },
                       "L\n\n", each.flags);
        EXPECT_EQ(editor.session.pickFirst.size(), each.left) << each.flags;
    }
}

TEST(PickFirst, isSetByCommandsThatMay) {
    for (const bool may : {true, false}) {
        Editor editor{scene};
        const auto body = [&] {
            ads_name set{};
            acedSSGet(L"A", nullptr, nullptr, nullptr, set);
            EXPECT_EQ(acedSSSetFirst(set, nullptr), may ? RTNORM : RTERROR);
        };
        editor.runBody(body, "", may ? ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW : ACRX_CMD_MODAL);
        EXPECT_EQ(editor.session.pickFirst.size(), may ? 6u : 0u);
        editor.run("^C");
        EXPECT_TRUE(editor.session.pickFirst.isEmpty());
    }
}
} // namespace
