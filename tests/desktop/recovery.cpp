// Work that a program did not live to save.
#include "desktop/DeskOnTest.h"

#include <random>

namespace {

using namespace qx;
using desktop::LeftLog;
using desktop::RecoveryLog;
using tests::DeskOnTest;

const drawings::DrawingText scene{.entities = {"LINE|5 A1|10 0|20 0|11 100|21 0",
                                               "CIRCLE|5 A2|10 50|20 40|40 10", "POINT|5 A3|10 10|20 70",
                                               "POINT|5 A4|10 90|20 70"}};

class Recovery : public testing::Test {
protected:
    std::string plan() { return folder / "plan.dxf"; }
    bool isLogThere() { return std::filesystem::exists(RecoveryLog::pathFor(plan())); }
    TemporaryFolder folder;
};

TEST_F(Recovery, RepeatsWhatWasFinished) {
    std::string done;
    {
        DeskOnTest person{folder, scene};
        person.type("ERASE").click(30, 0).type("").type("ERASE").type("L").type("").type("U");
        person.type("SETVAR").type("PICKBOX").type("many").type("5"); // the refused answer is no answer
        person.click(50, 50).type("ERASE").type("ERASE").click(10, 70).work(); // the last one is given up
        done = person.drawing().toBytes();
        EXPECT_EQ(person.drawing().history().stepsDone(), 2u);
    }
    const auto log = RecoveryLog::find(plan());
    ASSERT_TRUE(log);
    EXPECT_TRUE(log->fits);
    EXPECT_EQ(log->commands, 6u) << log->script;

    DeskOnTest again{folder};
    EXPECT_TRUE(again.desk.recovery().repeat(*log));
    EXPECT_EQ(again.drawing().toBytes(), done);
    EXPECT_EQ(again.session.variables().number("PICKBOX"), 5);
    again.type("ERASE").type("(handent \"A4\")").type("").work();
    const auto more = RecoveryLog::find(plan());
    EXPECT_FALSE(more) << "somebody is at it";
    EXPECT_NE(again.recoveryScript().find("A4"), std::string::npos);
    EXPECT_NE(contentOf(RecoveryLog::pathFor(plan())).find('\n' + log->script), std::string::npos);
}

TEST_F(Recovery, LogsAreThereOnlyWhileThereIsWorkToLose) {
    DeskOnTest person{folder, scene};
    EXPECT_FALSE(isLogThere()) << "nothing was done";
    person.type("ERASE").click(30, 0).escape().work();
    EXPECT_FALSE(isLogThere()) << "nothing was changed";
    person.type("ERASE").type("L").type("").work();
    EXPECT_TRUE(isLogThere());
    person.type("SAVE").work();
    EXPECT_FALSE(isLogThere()) << "saved";
    person.type("U").work();
    EXPECT_TRUE(isLogThere());
    person.type("REDO").work();
    EXPECT_FALSE(isLogThere()) << "as it was saved";
    EXPECT_EQ(folder.count(), 2u) << "the drawing and its backup";
    person.type("U").work();
    person.type("SAVEAS").type((folder / "other.dxf")).work();
    EXPECT_FALSE(isLogThere()) << "saved elsewhere";
    person.type("ERASE").type("L").type("").work();
    EXPECT_FALSE(isLogThere());
    EXPECT_TRUE(std::filesystem::exists(RecoveryLog::pathFor(folder / "other.dxf")));
    person.session.setDrawing(nullptr);
    EXPECT_EQ(folder.count(), 3u) << "the changes were given up, and the log with them";
}

/// Whatever a person does before the program is killed is there again afterwards.
TEST_F(Recovery, ComesToTheSameDrawing) {
    const drawings::DrawingText twice{.entities = {"LINE|5 A1|10 0|20 0|11 100|21 0",
                                                   "LINE|5 A1|10 0|20 40|11 100|21 40",
                                                   "POINT|5 A3|10 10|20 70", "POINT|5 A4|10 90|20 70"}};
    const std::string hidden = "|102 {|5 AB|102 }"; // keeps the builder from giving a handle
    const drawings::DrawingText nameless{.entities = {"LINE" + hidden + "|10 0|20 0|11 100|21 0",
                                                      "CIRCLE" + hidden + "|10 50|20 40|40 10",
                                                      "POINT" + hidden + "|10 10|20 70"}};
    const auto lines = [](std::vector<std::string> typed) {
        return [typed = std::move(typed)](DeskOnTest& person) {
            for (const std::string& line : typed) person.type(line);
        };
    };
    const auto withoutLog = [&](DeskOnTest& person) {
        person.then([&] { std::filesystem::create_directory(RecoveryLog::pathFor(plan())); });
        person.type("ERASE").type("L").type("");
        person.then([&] { std::filesystem::remove(RecoveryLog::pathFor(plan())); });
        person.type("ERASE").type("L").type("");
    };
    const struct {
        const char* name;
        drawings::DrawingText drawing;
        std::function<void(DeskOnTest&)> work;
    } cases[] = {
        {"undone after saving", scene, lines({"ERASE", "L", "", "SAVE", "U"})},
        {"undone and done again without saving", scene, lines({"ERASE", "L", "", "U", "REDO"})},
        {"twice undone and done again", scene,
         lines({"ERASE", "L", "", "ERASE", "L", "", "U", "U", "REDO", "REDO"})},
        {"undone after saving, and something else done", scene,
         lines({"ERASE", "L", "", "SAVE", "U", "ERASE", "(handent \"A1\")", ""})},
        {"undone and done again beyond a save", scene,
         lines({"ERASE", "L", "", "ERASE", "L", "", "SAVE", "UNDO", "2", "REDO"})},
        {"after two saves", scene, lines({"ERASE", "L", "", "SAVE", "ERASE", "L", "", "SAVE", "U", "U"})},
        {"previous selection of a command that changed nothing", scene,
         lines({"LIST", "(handent \"A2\")", "", "ERASE", "P", ""})},
        {"a variable that there is not", scene, lines({"SETVAR", "FOO", "ERASE", "L", ""})},
        {"a function that there is not", scene, lines({"(foo)", "ERASE", "L", ""})},
        {"selected first, with the handle of another", twice,
         [](DeskOnTest& person) { person.click(50, 40).type("ERASE").type("ERASE").type("L").type(""); }},
        {"selected first, without handles", nameless,
         [](DeskOnTest& person) {
             person.click(50, 0).type("ERASE").type("ERASE").type("L").type("").type("U");
         }},
        {"a log that could not be begun at first", scene, withoutLog},
        {"a refused answer in the place of a corner", scene,
         lines({"ERASE", "L", "", "ERASE", "W", "-5,-5", "foo", "50,50", ""})},
        {"a refused answer behind a pick that hit nothing", scene,
         lines({"ERASE", "L", "", "ERASE", "-5,-5", "foo", "50,50", ""})},
        {"selected first for a command that was cancelled, then no more", scene,
         [](DeskOnTest& person) {
             person.click(30, 0).type("GROUP").escape().escape().type("ERASE").type("");
             person.type("ERASE").type("(handent \"A2\")").type("");
         }},
        {"previous selection from before saving", scene,
         lines({"LIST", "(handent \"A2\")", "(handent \"A4\")", "", "SAVE", "ERASE", "P", ""})},
        {"previous selection from before saving, and undone beyond it", scene,
         lines({"ERASE", "L", "", "LIST", "(handent \"A2\")", "", "SAVE", "U", "ERASE", "P", ""})},
        {"previous selection without handles from before saving", nameless,
         lines({"LIST", "50,0", "", "SAVE", "ERASE", "P", ""})},
        {"last point from before saving", scene,
         lines({"ID", "0,60", "SAVE", "ERASE", "W", "@-1,-1", "@20,20", ""})},
        {"last point of a zoomed window", scene,
         lines({"ERASE", "L", "", "ZOOM", "W", "0,0", "0,60", "ERASE", "W", "@-1,-1", "@20,20", ""})},
        {"a variable set before saving", scene,
         lines({"SETVAR", "PICKBOX", "60", "SAVE", "ERASE", "30,5", ""})},
        {"a variable set before opening", scene,
         [](DeskOnTest& person) {
             person.session.variables().set("PICKBOX", 60);
             person.type("ERASE").type("30,5").type("");
         }},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        std::filesystem::remove_all(folder.path());
        std::filesystem::create_directory(folder.path());
        std::string done;
        {
            DeskOnTest person{folder, each.drawing};
            each.work(person);
            person.work();
            done = person.drawing().toBytes();
            EXPECT_TRUE(person.drawing().isModified());
        }
        const auto log = RecoveryLog::find(plan());
        ASSERT_TRUE(log && log->fits);
        DeskOnTest again{folder};
        again.session.variables().set("PICKBOX", 1);
        const Outcome outcome = again.desk.recovery().repeat(*log);
        EXPECT_TRUE(outcome) << outcome.error();
        EXPECT_EQ(again.drawing().toBytes(), done) << log->script;
        EXPECT_TRUE(again.drawing().isModified());
        EXPECT_EQ(again.drawing().path(), plan());
        again.type("ERASE").type("ALL").type("").type("U").type("SAVE").work();
        EXPECT_EQ(contentOf(plan()), done);
        EXPECT_EQ(folder.count(), 2u) << "the drawing and its backup";
    }
}

TEST_F(Recovery, ComesToTheSameDrawingWhateverIsDone) {
    const std::vector<std::vector<std::string>> deeds{{"ERASE", "L", ""},
                                                      {"ERASE", "P", ""},
                                                      {"ERASE", "30,5", "", ""},
                                                      {"ERASE", "W", "@-1,-1", "@30,40", ""},
                                                      {"ERASE", "ALL", "R", "L", "P", ""},
                                                      {"SELECT", "(handent \"A4\")", "L", ""},
                                                      {"SELECT", "ALL", ""},
                                                      {"LIST", "(handent \"A2\")", ""},
                                                      {"ID", "0,60"},
                                                      {"ZOOM", "W", "1,2", "3,4"},
                                                      {"SETVAR", "PICKBOX", "60"},
                                                      {"SETVAR", "PICKBOX", "2"},
                                                      {"SETVAR", "NOTHING"},
                                                      {"U"},
                                                      {"U"},
                                                      {"UNDO", "2"},
                                                      {"REDO"},
                                                      {"SAVE"},
                                                      {"OPEN", plan()},
                                                      {"NONSENSE"}};
    for (unsigned seed = 1; seed <= 30; ++seed) {
        std::filesystem::remove_all(folder.path());
        std::filesystem::create_directory(folder.path());
        std::mt19937 random{seed};
        std::string done, transcript;
        bool isModified = false;
        {
            DeskOnTest person{folder, scene};
            for (int i = 0; i < 14; ++i) {
                for (const std::string& line : deeds[random() % deeds.size()]) person.type(line);
                if (random() % 4 == 0) person.escape().click(10, 70).click(30, 0);
                person.escape().escape();
            }
            person.work();
            done = person.drawing().toBytes();
            isModified = person.drawing().isModified();
            transcript = person.transcript;
        }
        const auto log = RecoveryLog::find(plan());
        EXPECT_TRUE(log || !isModified) << "seed " << seed << '\n' << transcript;
        if (!log) continue;
        EXPECT_TRUE(log->fits) << "seed " << seed;
        DeskOnTest again{folder};
        const Outcome outcome = again.desk.recovery().repeat(*log);
        EXPECT_TRUE(outcome) << outcome.error();
        EXPECT_EQ(again.drawing().toBytes(), done) << "seed " << seed << '\n' << transcript << log->script;
    }
}

TEST_F(Recovery, TellsWhatFitsFromWhatDoesNot) {
    const std::string bytes = scene.bytes();
    const std::string log = RecoveryLog::pathFor(plan());
    put(plan(), bytes);
    {
        RecoveryLog writer;
        ASSERT_TRUE(writer.add(plan(), "ERASE\nL\n\n"));
        ASSERT_TRUE(writer.add(plan(), "U\n"));
    }
    const std::string whole = contentOf(log);
    const struct {
        const char* name;
        std::string log, drawing;
        int commands; ///< -1: nothing is found
        bool fits;
    } cases[] = {
        {"as it was left", whole, bytes, 2, true},
        {"cut off in a command", whole.substr(0, whole.size() - 3), bytes, 1, true},
        {"cut off in the first", whole.substr(0, whole.find("L\n")), bytes, -1, false},
        {"only begun", whole.substr(0, whole.find('\n') + 1), bytes, -1, false},
        {"empty", "", bytes, -1, false},
        {"some other file", "ERASE\n; done\n", bytes, -1, false},
        {"the drawing was changed", whole, bytes + "999\nx\n", 2, false},
        {"as long as before", whole, bytes.substr(0, bytes.size() - 4) + "eof\n", 2, false},
        {"no drawing", whole, "", 2, false},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        put(log, each.log);
        put(plan(), each.drawing);
        const auto found = RecoveryLog::find(plan());
        EXPECT_EQ(found ? static_cast<int>(found->commands) : -1, each.commands);
        EXPECT_EQ(found && found->fits, each.fits);
    }
    std::filesystem::remove(log);
    EXPECT_FALSE(RecoveryLog::find(plan()));
}

// The program may end between the two: then the copy has what the log only promises.
TEST_F(Recovery, ACopyIsGoodBeforeItsLogIsThere) {
    std::string before, done;
    {
        DeskOnTest person{folder, scene};
        for (const char* line : {"ERASE", "L", "", "ERASE", "L", "", "SAVE", "U"}) person.type(line);
        person.work();
        before = contentOf(RecoveryLog::pathFor(plan()));
        person.type("U").work();
        done = person.drawing().toBytes();
    }
    put(RecoveryLog::pathFor(plan()), before);
    const auto log = RecoveryLog::find(plan());
    ASSERT_TRUE(log && log->fits);
    DeskOnTest again{folder};
    EXPECT_TRUE(again.desk.recovery().repeat(*log));
    EXPECT_EQ(again.drawing().toBytes(), done);
    std::filesystem::remove(RecoveryLog::copyFor(plan()));
    put(RecoveryLog::pathFor(plan()), before);
    EXPECT_FALSE(RecoveryLog::find(plan()) && RecoveryLog::find(plan())->fits);
}

TEST_F(Recovery, AsideIsANameThatNobodyHas) {
    put(plan(), scene.bytes());
    for (const char* each : {"1", "2"}) {
        put(RecoveryLog::pathFor(plan()), each);
        const auto aside = RecoveryLog::putAside(plan());
        ASSERT_TRUE(aside) << aside.error();
        EXPECT_EQ(*aside, plan() + ".recovery-" + each + ".scr");
        EXPECT_EQ(contentOf(*aside), each);
        EXPECT_FALSE(isLogThere());
    }
}

TEST_F(Recovery, AScriptThatFailsSaysWhere) {
    put(plan(), scene.bytes());
    std::string done;
    {
        DeskOnTest person{folder};
        const Outcome outcome = person.desk.recovery().repeat(
            {.script = "ERASE\nL\n\n; done\nNONSENSE\n; done\n", .commands = 2, .copy = {}});
        EXPECT_NE(outcome.error().find("recovery.scr:5: unknown command"), std::string::npos)
            << outcome.error();
        person.type("ERASE").type("L").type("").work(); // life goes on
        EXPECT_EQ(person.drawing().history().stepsDone(), 2u);
        done = person.drawing().toBytes();
    }
    DeskOnTest again{folder};
    EXPECT_TRUE(again.desk.recovery().repeat(*RecoveryLog::find(plan())));
    EXPECT_EQ(again.drawing().toBytes(), done) << "also what was recovered before";
}

TEST_F(Recovery, AFileThatWasReplacedIsNotWhatTheLogGoesOnFrom) {
    std::string done;
    {
        DeskOnTest person{folder, scene};
        put(plan(), drawings::DrawingText{.entities = {"CIRCLE|5 A1|10 0|20 0|40 1"}}.bytes());
        person.type("ERASE").click(30, 0).type("").type("ERASE").type("L").type("").work();
        done = person.drawing().toBytes();
    }
    const auto log = RecoveryLog::find(plan());
    ASSERT_TRUE(log && log->fits);
    EXPECT_EQ(log->commands, 1u) << log->script;
    DeskOnTest again{folder};
    EXPECT_TRUE(again.desk.recovery().repeat(*log));
    EXPECT_EQ(again.drawing().toBytes(), done);
}

TEST_F(Recovery, WhatOthersLeftIsPutAside) {
    DeskOnTest person{folder, scene};
    put(RecoveryLog::pathFor(plan()), "their log");
    put(RecoveryLog::copyFor(plan()), "their copy");
    person.type("ERASE").type("L").type("").work();
    EXPECT_EQ(contentOf(plan() + ".recovery-1.scr"), "their log");
    EXPECT_EQ(contentOf(plan() + ".recovery-1.dxf"), "their copy");
    EXPECT_EQ(person.recoveryScript(), "ERASE\nL\n\n; done\n");
}

TEST_F(Recovery, WhatAnotherProgramWritesStays) {
    put(plan(), scene.bytes());
    RecoveryLog other;
    ASSERT_TRUE(other.add(plan(), "theirs\n"));
    const std::string theirs = contentOf(RecoveryLog::pathFor(plan()));
    {
        DeskOnTest person{folder};
        std::vector<std::string> sentences;
        person.desk.recovery().onFailure = [&](const std::string& each) { sentences.push_back(each); };
        person.type("ERASE").type("L").type("").type("U").type("REDO").work();
        ASSERT_EQ(sentences.size(), 1u) << "said once";
        EXPECT_NE(sentences[0].find("has it open"), std::string::npos) << sentences[0];
        EXPECT_FALSE(person.desk.recovery().repeat({.script = "ERASE\nL\n\n; done\n", .copy = {}}));
        EXPECT_FALSE(RecoveryLog::putAside(plan()));
        person.session.setDrawing(nullptr);
    }
    EXPECT_EQ(contentOf(RecoveryLog::pathFor(plan())), theirs);
    EXPECT_EQ(folder.count(), 2u);
    other.close();
}

} // namespace
