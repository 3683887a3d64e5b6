// What a mouse answers, read from the script that the desk keeps beside the drawing.
#include "accmd.h"
#include "acedads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "desktop/DeskOnTest.h"
#include "rx/CommandStack.h"

namespace {

using namespace qx;
using qx::tests::DeskOnTest;

// 100 x 75 units on 400 x 300 pixels; a pixel is a little more than a quarter of a unit.
const drawings::DrawingText scene{
    .entities = {"LINE|5 A1|10 0|20 0|11 100|21 0", "CIRCLE|5 A2|10 50|20 40|40 10",
                 "LINE|5 A3|10 0|20 75|11 40|21 75", "LINE|5 A4|10 60|20 75|11 100|21 75",
                 "LINE|5 A5|8 LOCKED|10 10|20 20|11 20|21 20"},
    .groups = {{"PAIR", {"A3", "A4"}}}};

/// A command that asks what a test wants to see answered.
void askForAll() {
    ads_name set{}, name{};
    ads_point point{}, base{100, 0, 0};
    acedSSGet(nullptr, nullptr, nullptr, nullptr, set);
    acedEntSel(L"实体: ", name, point);
    acedGetPoint(nullptr, L"点: ", point);
    acedGetPoint(base, L"另一点: ", point);
    AcDbObjectId id;
    acdbGetObjectId(id, name);
    AcDbObjectPointer<AcDbEntity> { id, AcDb::kForWrite } -> erase(); // so that there is something to lose
}

class Pointing : public testing::Test {
protected:
    void SetUp() override {
        rx::commandStack().addCommand(L"TEST", L"ASK", nullptr, ACRX_CMD_MODAL, &askForAll);
    }
    void TearDown() override { rx::commandStack().removeGroup(L"TEST"); }

    /// The answers that the clicks gave to the selection prompt of ERASE.
    std::string erased(const std::function<void(DeskOnTest&)>& select) {
        DeskOnTest person{folder, scene};
        person.type("ERASE");
        select(person);
        person.type("").work();
        const std::string script = person.recoveryScript();
        EXPECT_TRUE(script.starts_with("ERASE\n") && script.ends_with("\n\n; done\n")) << script;
        return script.size() < 16 ? script : script.substr(6, script.size() - 14);
    }
    TemporaryFolder folder;
};

TEST_F(Pointing, SelectsForTheRunningCommand) {
    const struct {
        const char* name;
        std::function<void(DeskOnTest&)> select;
        const char* script;
    } cases[] = {
        {"a line", [](auto& p) { p.click(30, 0.5); }, "(handent \"A1\")\n"},
        {"all of a group", [](auto& p) { p.click(70, 75); }, "(list (handent \"A4\") (list 70 75 0))\n"},
        {"the wrong one is taken out", [](auto& p) { p.click(30, 0).click(40, 40).click(30, 0, true); },
         "(handent \"A1\")\n(handent \"A2\")\nR\n(handent \"A1\")\nA\n"},
        {"a window by two clicks", [](auto& p) { p.click(30, 20).click(70, 60); }, "W\n30,20,0\n70,60,0\n"},
        {"a crossing by dragging", [](auto& p) { p.drag(70, 60, 55, 30); }, "C\n70,60,0\n55,30,0\n"},
        {"a corner given up", [](auto& p) { p.click(30, 20).escape().click(30, 0); }, "(handent \"A1\")\n"},
        {"options in between", [](auto& p) { p.type("all").type("r").click(40, 40); },
         "all\nr\n(handent \"A2\")\n"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(erased(each.select), each.script);
    }
}

TEST_F(Pointing, AnswersEachKindOfPrompt) {
    DeskOnTest person{folder, scene};
    person.type("ASK").click(30, 0).type("").click(40, 40).click(99.5, 0.5).click(70, 60).work();
    EXPECT_EQ(person.recoveryScript(), "ASK\n(handent \"A1\")\n\n(list (handent \"A2\") (list 40 40 0))\n"
                                       "100,0,0\n70,60,0\n; done\n")
        << "the point near the end is the end; far from everything it is where the cursor is";
}

TEST_F(Pointing, SnapsOnlyWhileSnapsAreOn) {
    DeskOnTest person{folder, scene};
    person.then([&] { person.desk.toggleSnaps(); });
    person.type("ASK").click(30, 0).type("").click(40, 40).click(99.5, 0.5).click(70, 60).work();
    EXPECT_NE(person.recoveryScript().find("\n99.5,0.5,0\n"), std::string::npos) << person.recoveryScript();
    EXPECT_FALSE(person.desk.areSnapsOn());
}

TEST_F(Pointing, AButtonThatComesUpUnseenGivesNoCorner) {
    EXPECT_EQ(erased([](DeskOnTest& person) {
                  person.then([&] {
                      const auto at = [&](double x, double y) {
                          return person.desk.view().toScreen({x, y, 0});
                      };
                      person.desk.press(at(30, 20), false);
                      person.desk.letGo();
                      person.desk.release(at(10, 60), false);
                  });
                  person.click(70, 60);
              }),
              "W\n30,20,0\n70,60,0\n");
}

TEST_F(Pointing, SelectsBeforeACommand) {
    DeskOnTest person{folder, scene};
    person.click(30, 0).then([&] { EXPECT_EQ(person.pickFirst(), "A1"); });
    person.click(40, 40).then([&] { EXPECT_EQ(person.pickFirst(), "A1 A2"); });
    person.click(30, 0, true).then([&] { EXPECT_EQ(person.pickFirst(), "A2"); });
    person.escape().then([&] { EXPECT_EQ(person.pickFirst(), ""); });
    person.drag(30, 20, 70, 60).then([&] { EXPECT_EQ(person.pickFirst(), "A2"); });
    person.type("ERASE").work();
    EXPECT_TRUE(person.drawing().find(0xA2)->has(db::Record::erased));
    EXPECT_EQ(person.recoveryScript(), "(select (handent \"A2\"))\nERASE\n; done\n");
}

TEST_F(Pointing, SelectsAgainWhatWasGivenUp) {
    for (const char* between : {"", "ZOOM E", "SAVE", "ID 1,1"}) {
        SCOPED_TRACE(between);
        DeskOnTest person{folder, scene};
        person.drag(30, 20, 70, 60).then([&] { EXPECT_EQ(person.pickFirst(), "A2"); });
        *between ? person.type(between) : person.escape();
        person.then([&] { EXPECT_EQ(person.pickFirst(), ""); });
        person.drag(70, 60, 30, 20).then([&] { EXPECT_EQ(person.pickFirst(), "A2"); }).work();
    }
}

TEST_F(Pointing, ShiftLeavesTheModeOfRemovingAsItIs) {
    DeskOnTest person{folder, scene};
    person.type("SELECT").type("ALL").type("R").click(30, 0, true).click(40, 40).type("").work();
    for (const std::uint64_t handle : {0xA1u, 0xA2u})
        EXPECT_FALSE(person.session.previous.contains(person.drawing().find(handle))) << handle;
    EXPECT_FALSE(person.session.previous.isEmpty());
}

TEST_F(Pointing, CornersDoNotSnap) {
    DeskOnTest person{folder, scene};
    person.type("SELECT").type("W").click(-1, 1).click(101, -1).type("").work();
    EXPECT_EQ(person.session.previous.size(), 1u) << person.transcript;
}

TEST_F(Pointing, WhatIsSelectedFirstIsGrouped) {
    DeskOnTest person{folder, scene};
    person.click(30, 0).click(40, 40).then([&] { person.desk.launch("GROUP"); }).type("").work();
    EXPECT_EQ(person.drawing().groups().size(), 2u) << person.transcript;
    person.click(30, 0).then([&] { EXPECT_EQ(person.pickFirst(), "A1 A2"); }).work();
    EXPECT_EQ(person.recoveryScript(), "(select (handent \"A1\") (handent \"A2\"))\nGROUP\n\n; done\n");
}

TEST_F(Pointing, AHandleThatIsGivenTwiceNamesNobody) {
    DeskOnTest person{folder,
                      {.entities = {"LINE|5 A1|10 0|20 0|11 100|21 0", "LINE|5 A1|10 0|20 40|11 100|21 40",
                                    "LINE|5 A2|10 0|20 75|11 100|21 75"}}};
    person.type("ERASE").click(50, 40).type("").work();
    EXPECT_FALSE(person.drawing().find(0xA1)->has(db::Record::erased)) << "the first one has the handle";
    EXPECT_EQ(person.drawing().history().changedByLast(1).size(), 1u);
}

// Scripts reach as far as in a nominal view, people as far as in theirs.
TEST_F(Pointing, WhatIsPickedDoesNotDependOnTheView) {
    const std::string hidden = "|102 {|5 AB|102 }"; // keeps the builder from giving a handle
    const drawings::DrawingText nameless{
        .entities = {"LINE" + hidden + "|10 0|20 0|11 100|21 0", "CIRCLE" + hidden + "|10 50|20 40|40 10"}};
    const struct {
        const char* name;
        double zoom, x, y;
        const char* ask; ///< what is answered at first
        const char* script;
    } cases[] = {
        {"from afar", 0.1, 30, 2.5, "ERASE", "ERASE\n30,0,0\n"},
        {"from afar, to one of them", 0.1, 50, 32.5, "ONE", "ONE\n50,30,0\n"},
        {"from nearby, past it", 10, 30, 0.3, "ONE", "ONE\n(list nil (list 30 0.3 0))\n"},
    };
    rx::commandStack().addCommand(L"TEST", L"ONE", nullptr, ACRX_CMD_MODAL, [] {
        ads_name name{};
        ads_point point{};
        const bool isHit = acedEntSel(L"", name, point) == RTNORM;
        AcDbObjectId id;
        acdbGetObjectId(id, name);
        if (isHit) AcDbObjectPointer<AcDbEntity> {
                id, AcDb::kForWrite
                } -> erase();
    });
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        DeskOnTest person{folder, nameless};
        person.type("ERASE").click(50, 50).type(""); // so that there is something to lose
        person.type("U").then([&] {
            person.desk.zoom(each.zoom, person.desk.view().toScreen({each.x, each.y, 0}));
        });
        person.type(each.ask).click(each.x, each.y).type("").work();
        const std::string script = person.recoveryScript();
        EXPECT_NE(script.find(each.script), std::string::npos) << script;
        const bool isMeantToHit = each.zoom < 1;
        EXPECT_EQ(person.drawing().history().stepsDone(), isMeantToHit ? 1u : 0u) << person.transcript;
    }
}

TEST_F(Pointing, NamesMayHoldBlanks) {
    DeskOnTest person{folder, scene};
    person.type("SAVEAS").type(folder / "site plan.dxf").work();
    EXPECT_TRUE(std::filesystem::exists(folder / "site plan.dxf"));
    person.then([&] {
        for (const char* line : {"GROUP", "my group", "ALL", ""})
            person.desk.type(line); // at once, as pasted
    });
    person.work();
    EXPECT_TRUE(person.drawing().hasGroup("my group")) << person.transcript;
}

TEST_F(Pointing, ClosingMaySaveUnderANewName) {
    DeskOnTest person{folder, scene};
    int asked = 0;
    person.desk.mayClose = [&] {
        if (++asked > 5 || !person.drawing().isModified()) return true;
        person.desk.launch("SAVEAS\n\"" + (folder / "other.dxf") + "\"");
        person.desk.close();
        return false;
    };
    person.type("ERASE").type("(handent \"A1\")").type("").then([&] { person.desk.close(); }).work();
    EXPECT_EQ(asked, 2) << person.transcript;
    EXPECT_TRUE(std::filesystem::exists(folder / "other.dxf"));
}

TEST_F(Pointing, NothingIsThereToZoomWithoutADrawing) {
    DeskOnTest person{folder, scene};
    person.session.setDrawing(nullptr);
    person.type("ZOOM").type("W").type("1,1").type("ERASE").work();
    EXPECT_NE(person.transcript.find("没有打开"), std::string::npos) << person.transcript;
}

TEST_F(Pointing, EnterAloneRepeatsTheLastCommand) {
    DeskOnTest person{folder, scene};
    person.type("ERASE").click(30, 0).type("").type("").click(40, 40).type("").work();
    EXPECT_TRUE(person.drawing().find(0xA1)->has(db::Record::erased));
    EXPECT_TRUE(person.drawing().find(0xA2)->has(db::Record::erased));
    EXPECT_EQ(person.drawing().history().stepsDone(), 2u);
}

TEST_F(Pointing, AButtonGivesTheRunningCommandUp) {
    DeskOnTest person{folder, scene};
    person.type("ERASE").click(30, 0).then([&] { person.desk.launch("ERASE"); });
    person.click(40, 40).type("").work();
    EXPECT_FALSE(person.drawing().find(0xA1)->has(db::Record::erased));
    EXPECT_TRUE(person.drawing().find(0xA2)->has(db::Record::erased));
}

TEST_F(Pointing, WhatIsDoneBetweenCommandsFindsTheRunningOneEnded) {
    rx::commandStack().addCommand(L"TEST", L"STAYS", nullptr, ACRX_CMD_MODAL, [] {
        const db::Record* record = ed::Session::current()->drawing()->find(0xA1);
        AcDbObjectPointer<AcDbEntity> {
            AcDbObjectId{const_cast<db::Record*>(record)}, AcDb::kForWrite
            } -> erase();
        ads_point point{};
        acedGetPoint(nullptr, L"点: ", point);
    });
    DeskOnTest person{folder, scene};
    bool before = true, after = false;
    person.type("STAYS").then([&] {
        before = person.drawing().isModified();
        person.desk.betweenCommands([&] {
            after = person.drawing().isModified();
            person.desk.type("U");
        });
    });
    person.work();
    EXPECT_FALSE(before);
    EXPECT_TRUE(after);
    EXPECT_FALSE(person.drawing().isModified()) << person.transcript;
}

TEST_F(Pointing, WhatIsToFollowWaitsForWhatWasTyped) {
    DeskOnTest person{folder, scene};
    std::size_t steps = 0;
    person.then([&] {
        person.desk.type("ERASE\n(handent \"A1\")\n");
        person.desk.type("");
        person.desk.afterwards([&] { steps = person.drawing().history().stepsDone(); });
    });
    person.work();
    EXPECT_EQ(steps, 1u) << person.transcript;
}

TEST_F(Pointing, SpacesAreEnterWhereTheyMeanNothingElse) {
    DeskOnTest person{folder, scene};
    const auto check = [&](std::string_view typed, bool ends) {
        person.then([&person, typed, ends] { EXPECT_EQ(person.desk.spaceEnds(typed), ends) << typed; });
    };
    check("ERASE", true), check("", true), check("(handent", false), check("\"a", false);
    person.type("SAVEAS");
    check("two", false);
    person.escape().work();
}

} // namespace
