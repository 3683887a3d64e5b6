#include "aced.h"
#include "acedads.h"
#include "acutads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "drawings/groupsIn.h"
#include "ed/Editor.h"
#include "rx/CommandStack.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {
using namespace qx;
using ed::RunEnd;
using tests::Editor;

const std::vector<std::string> entities{"LINE|5 A1|10 0|20 0|11 1000|21 0",
                                        "LINE|5 A2|8 LOCKED|10 0|20 100|11 100|21 100",
                                        "CIRCLE|5 A3|10 500|20 400|40 100"};
const std::string scene = drawings::DrawingText{.entities = entities}.bytes();

AcDbObjectId idOf(Editor& editor, std::uint64_t handle) {
    return AcDbObjectId{editor.drawing().find(handle)};
}

void move(Editor& editor, std::uint64_t handle, double dx) {
    const AcDbObjectPointer<AcDbEntity> entity{idOf(editor, handle), AcDb::kForWrite};
    ASSERT_EQ(entity.openStatus(), Acad::eOk);
    EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation({dx, 0, 0})), Acad::eOk);
}

struct ScriptCase {
    const char* script;
    const char* transcript = ""; ///< a part of it
    std::string failure = "";    ///< with its line; empty: none
    RunEnd end = failure.empty() ? RunEnd::sourceEnded : RunEnd::failed;
};
const ScriptCase scriptCases[] = {
    {"\n\n; nothing\n\n"},
    {"\nFOO\nSETVAR PICKBOX 9\n", "未知命令“FOO”。", "2: unknown command \"FOO\""},
    {"_.setvar cmddia 1\n'SETVAR\n?\n", "CMDDIA  1"},
    {"SETVAR PICKBOX", "输入 PICKBOX 的新值 <3>: *取消*", "1: the script ends inside the command SETVAR"},
    {"SETVAR PICKBOX\n\nU\n", "没有可放弃的操作。"},
    {"SETVAR PICKSTYLE 4\n", "变量值超出范围。", "1: PICKSTYLE does not take this value"},
    {"ARX\nfoo\n", "选项关键字无效。", "2: \"foo\" is not one of the keywords"},
    {"SETVAR\n^CSETVAR PICKBOX 5 SETVAR PICKBOX\n\n", "<5>"},
    {"QUIT\nFOO\n", "", "", RunEnd::quit},
    {"(Foo)\n", "; 错误: 函数未定义: Foo", "1: undefined function \"Foo\""},
    {"LIST\n(handent \"A3\")\n\n", "AcDbCircle  句柄 A3  图层 0  范围 400,300,0 至 600,500,0"},
    {"ERASE\n(handent \"A3\")\n\nLIST\n(handent \"A3\")\n", "", "5: \"(handent \"A3\")\" selects nothing"},
    {"SELECT\n(handent \"A3\")\n\nU\nLIST\nP\n\n",
     "没有可放弃的操作。\n命令: LIST\n选择对象: P\n找到 1 个\n"},
    {"ID 3,4\nID @1,-1.5\nU\n", "坐标 4,2.5,0\n命令: U\n没有可放弃的操作。"},
    {"ERASE\nALL\n\n", "1 个对象在锁定的图层上，没有删除。"},
    {"ERASE\n(handent \"A1\")\n\nUNDO 5\n", "已放弃 ERASE\n没有可放弃的操作。\n"},
    {"ERASE\n(handent \"A1\")\n\nU\nREDO\nREDO\n", "已重做 ERASE\n命令: REDO\n没有可重做的操作。"},
};

TEST(Scripts, runToTheirEnd) {
    for (const ScriptCase& each : scriptCases) {
        SCOPED_TRACE(each.script);
        Editor editor{scene};
        const auto run = editor.run(each.script);
        EXPECT_EQ(run.end, each.end) << run.transcript;
        EXPECT_EQ(run.failure, each.failure.empty() ? "" : "test.scr:" + each.failure);
        EXPECT_NE(run.transcript.find(each.transcript), std::string::npos) << run.transcript;
        expectInOrder(editor);
    }
}

// The transcript is Chinese, what fails a script is English.
TEST(Scripts, sayFailuresInTwoLanguages) {
    const struct {
        const char *script, *transcript;
        std::string failure; ///< its beginning
    } cases[] = {
        {"OPEN no.dxf\n", "无法打开图形 no.dxf。\n", "Can't read no.dxf: "},
        {"SAVEAS no/a.dxf\n", "无法保存到 no/a.dxf。\n", "Can't write no/a.dxf: "},
        {"ARX L no.arx\n", "无法加载模块 no.arx。\n", "Can't find the module no.arx."},
        {"ARX U no\n", "无法卸载模块 no。\n", "no is not loaded."},
        {"BODY\n", "命令 BODY 所属的模块已卸载，无法执行；请重新加载该模块。\n",
         "The module of the command BODY was unloaded; load it again."},
    };
    for (const auto& each : cases) {
        Editor editor{scene};
        editor.define([] {});
        rx::commandStack().find(L"BODY")->retire();
        const auto run = editor.run(each.script);
        EXPECT_TRUE(run.failure.starts_with("test.scr:1: " + each.failure)) << run.failure;
        EXPECT_TRUE(run.transcript.ends_with(each.transcript)) << run.transcript;
        expectInOrder(editor);
    }
}

// Nothing but the transcript tells a person, so the cause stands there, too.
TEST(Commands, tellAPersonTheCause) {
    Editor editor{scene};
    tests::Person person{"ARX L no.arx\nOPEN no.dxf\n", "input"};
    EXPECT_EQ(ed::CommandRunner{editor.session}.run(person), RunEnd::sourceEnded);
    for (const char* cause : {"\n无法加载模块 no.arx: Can't find the module no.arx.\n",
                              "\n无法打开图形 no.dxf: Can't read no.dxf: "})
        EXPECT_NE(editor.transcript.find(cause), std::string::npos) << editor.transcript;
}

// A drawing of many lines is selected and erased while somebody looks.
TEST(Commands, tellTheirProgress) {
    constexpr int many = 20000;
    drawings::DrawingText text;
    for (int i = 0; i < many; ++i) text.entities.push_back(i ? "POINT|10 1.0" : "POINT|8 LOCKED|10 1.0");
    Editor editor{text.bytes()};
    std::vector<std::uint64_t> seen;
    editor.session.progress = [&](std::string_view job, std::uint64_t done, std::uint64_t total) {
        EXPECT_EQ(job, "ERASE");
        EXPECT_EQ(total, many);
        seen.push_back(done);
    };
    editor.run("ERASE\nALL\n\n");
    ASSERT_EQ(seen.size(), many - 1);
    EXPECT_EQ(seen.back(), many - 1);
    editor.run("U\nERASE\nL\n\n");
    EXPECT_EQ(seen.size(), many - 1) << "the command after it selects little";
}

// Answers to GROUP in a drawing with the groups PAIR (A1 A3) and *A2 (A2).
const struct GroupCase {
    const char *name, *answers, *groups;
    const char *transcript = "", *failure = "";
} groupCases[] = {
    {"by a name", "Desk\n(handent \"A3\")\n(handent \"A2\")\n\n", "*A2: A2, Desk: A3 A2, PAIR: A1 A3",
     "GROUP\n输入编组名或 <未命名>: Desk\n选择对象: (handent \"A3\")\n找到 1 个\n选择对象: (handent \"A2\")\n"
     "找到 1 个，总计 2 个\n选择对象: \n编组“Desk”有 2 个对象。\n"},
    {"members of other groups, by a pick", "Desk\n500,500\n\n", "*A2: A2, Desk: A3 A1, PAIR: A1 A3",
     "编组“Desk”有 2 个对象。"},
    {"without a name", "\n(handent \"A1\")\n\n", "*A1: A1, *A2: A2, PAIR: A1 A3", "编组“*A1”有 1 个对象。"},
    {"without a name, twice", "\nL\n\nGROUP\n\nL\n\n", "*A1: A3, *A2: A2, *A3: A3, PAIR: A1 A3"},
    {"a name with blanks", "\"big desk\"\nL\n\n", "*A2: A2, big desk: A3, PAIR: A1 A3"},
    {"a name in Chinese", "座椅\nL\n\n", "*A2: A2, PAIR: A1 A3, 座椅: A3"},
    {"nothing selected", "Desk\n\n", "*A2: A2, PAIR: A1 A3", "没有选择对象，没有建立编组。"},
    {"selection cancelled", "Desk\nALL\n^C", "*A2: A2, PAIR: A1 A3"},
    {"name cancelled", "^C", "*A2: A2, PAIR: A1 A3"},
    {"taken back", "Desk\nL\n\nU\n", "*A2: A2, PAIR: A1 A3", "已放弃 GROUP"},
    {"done again", "Desk\nL\n\nU\nREDO\n", "*A2: A2, Desk: A3, PAIR: A1 A3", "已重做 GROUP"},
    {"a name that exists", "pair\nL\n\n", "*A2: A2, PAIR: A1 A3", "编组“pair”已存在。",
     "2: there is a group \"pair\" already"},
    {"a name that exists since", "Desk\nL\n\nGROUP\ndesk\n", "*A2: A2, Desk: A3, PAIR: A1 A3", "",
     "6: there is a group \"desk\" already"},
    {"no name", "*A1\nL\n\n", "*A2: A2, PAIR: A1 A3", "编组名无效。",
     "2: \"*A1\" can't be the name of a group"},
};

std::string groupScene(const std::string& version = "AC1015") {
    return drawings::DrawingText{
        .entities = entities, .groups = {{"PAIR", {"A1", "A3"}}, {"*A2", {"A2"}}}, .version = version}
        .bytes();
}

TEST(GroupCommand, makesAGroup) {
    for (const GroupCase& each : groupCases) {
        SCOPED_TRACE(each.name);
        Editor editor{groupScene()};
        const std::string before = editor.drawing().toBytes();
        const auto run = editor.run(std::string{"GROUP\n"} + each.answers);
        EXPECT_EQ(run.failure, *each.failure ? std::string{"test.scr:"} + each.failure : "");
        EXPECT_NE(run.transcript.find(each.transcript), std::string::npos) << run.transcript;
        EXPECT_EQ(drawings::groupsIn(editor.drawing()), each.groups);
        EXPECT_EQ(drawings::groupsIn(*drawings::read(run.bytes)), each.groups);
        expectInOrder(editor);
        while (!editor.drawing().history().undo().empty()) continue;
        EXPECT_EQ(editor.drawing().toBytes(), before);
    }
}

TEST(GroupCommand, refusesNamesThatAGroupCantHave) {
    std::vector<std::string> names{"\"\"", "\" a\"", "\"a \"", "\"a\tb\"", "\xE5\xBA", std::string(256, 'x')};
    for (const char c : std::string_view{"<>/\\:;?*|,=`"}) names.push_back(std::string{"a"} + c);
    for (const std::string& name : names) {
        Editor editor{groupScene()};
        const auto run = editor.run("GROUP\n" + name + "\nL\n\n");
        EXPECT_EQ(run.end, RunEnd::failed) << name;
        EXPECT_NE(run.transcript.find("编组名无效。"), std::string::npos) << run.transcript;
        EXPECT_EQ(run.bytes, groupScene());
    }
}

TEST(GroupCommand, asksAPersonAgain) {
    Editor editor{groupScene()};
    tests::Person person{"GROUP\na*\nPair\nDesk\nL\n\n", "input"};
    EXPECT_EQ(ed::CommandRunner{editor.session}.run(person), RunEnd::sourceEnded);
    EXPECT_EQ(drawings::groupsIn(editor.drawing()), "*A2: A2, Desk: A3, PAIR: A1 A3");
}

TEST(GroupCommand, groupsWhatWasSelectedBefore) {
    Editor editor{groupScene()};
    const auto body = [] {
        ads_name set{};
        ASSERT_EQ(acedSSGet(L"X", nullptr, nullptr, nullptr, set), RTNORM);
        EXPECT_EQ(acedSSSetFirst(set, nullptr), RTNORM);
    };
    editor.runBody(body, "", ACRX_CMD_REDRAW);
    editor.run("GROUP\nDesk\n");
    EXPECT_EQ(drawings::groupsIn(editor.drawing()), "*A2: A2, Desk: A1 A2 A3, PAIR: A1 A3");
}

// A2 alone is picked, in *A2 and in the new group.
TEST(GroupCommand, groupsArePickedAsAWhole) {
    Editor editor{groupScene()};
    const std::string_view made = "GROUP\nDesk\n(handent \"A2\")\n(handent \"A1\")\n\n";
    const auto found = [&](const std::string& script) {
        const std::string text = editor.run(script + "LIST\n50,100\n\n").transcript;
        const std::size_t at = text.rfind("找到");
        return text.substr(at, text.find('\n', at) - at);
    };
    EXPECT_EQ(found(""), "找到 1 个，1 个编组");
    EXPECT_EQ(found(std::string{made}), "找到 2 个，2 个编组") << "PAIR is a group of A1, not of A2";
    EXPECT_EQ(found("U\n"), "找到 1 个，1 个编组");
    EXPECT_EQ(found("REDO\n"), "找到 2 个，2 个编组");
}

TEST(GroupCommand, needsADrawingThatCanHaveGroups) {
    for (const char* version : {"AC1009", "AC2.10"}) {
        Editor editor{groupScene(version)};
        const auto run = editor.run("GROUP\n");
        EXPECT_EQ(run.failure, "test.scr:1: a drawing of R12 or before can't have groups");
        EXPECT_NE(run.transcript.find("R12 及更早版本的图形不能有编组。"), std::string::npos);
    }
}

// Who shares a handle with somebody before him, or has none, is left out.
TEST(GroupCommand, leavesOutWhatHasNoHandleOfItsOwn) {
    const std::string point = "|10 0.0|20 0.0";
    Editor editor{
        drawings::DrawingText{.entities = {"POINT|5 A1" + point, "POINT|5 A1" + point, "POINT|5 0" + point}}
            .bytes()};
    const auto run = editor.run("GROUP\nDesk\nALL\n\n");
    EXPECT_NE(run.transcript.find("2 个对象没有自己的句柄，不能编组。\n编组“Desk”有 1 个对象。"),
              std::string::npos)
        << run.transcript;
    EXPECT_EQ(drawings::groupsIn(editor.drawing()), "Desk: A1");
}

// What a command does against the host's rules, after it has moved an object.
TEST(Violations, areRolledBackAndSaid) {
    const std::pair<void (*)(Editor&), const char*> cases[] = {
        {[](Editor& editor) {
             AcDbObject* object = nullptr;
             acdbOpenAcDbObject(object, idOf(editor, 0xA3), AcDb::kForWrite);
         },
         "有 1 个对象没有关闭"},
        {[](Editor& editor) {
             const AcDbObjectPointer<AcDbEntity> entity{idOf(editor, 0xA3), AcDb::kForRead};
             entity->setColorIndex(1);
         },
         "BODY 因内部错误而中断"},
        {[](Editor&) { throw std::runtime_error{"trouble"}; }, "BODY 因内部错误而中断。\n"},
        {[](Editor&) { throw 1; }, "BODY 因内部错误而中断"},
    };
    for (const auto& [body, sentence] : cases) {
        Editor editor{scene};
        const auto run = editor.runBody([&, &body = body] { move(editor, 0xA1, 5), body(editor); });
        EXPECT_EQ(run.end, RunEnd::failed);
        EXPECT_NE(run.transcript.find(sentence), std::string::npos) << run.transcript;
        EXPECT_EQ(run.bytes, scene);
        EXPECT_EQ(editor.drawing().openCount(), 0u);
        EXPECT_EQ(editor.session.violations, 1u);
        EXPECT_FALSE(editor.drawing().isLocked());
        EXPECT_EQ(editor.drawing().history().stepsDone(), 0u);
    }
}

TEST(Violations, endsOfACommandThatAsksOn) {
    const struct {
        const char* answers;
        int prompts;
        RunEnd end;
    } cases[] = {
        {"1,2\n", 2, RunEnd::failed},
        {"^C", 1, RunEnd::sourceEnded},
        {"", 1'000'000, RunEnd::failed}, // takes no cancel
    };
    for (const auto& each : cases) {
        Editor editor{scene};
        const auto body = [&] {
            move(editor, 0xA1, 5);
            ads_point point{};
            for (int i = 0; i < each.prompts; ++i) acedGetPoint(nullptr, L"点: ", point);
        };
        const auto run = editor.runBody(body, each.answers);
        EXPECT_EQ(run.end, each.end) << each.answers;
        EXPECT_EQ(run.bytes == scene, each.end == RunEnd::failed) << each.answers;
    }
}

TEST(Commands, areLockedUnlessTheyRunInTheSession) {
    for (const int flags : {ACRX_CMD_MODAL, ACRX_CMD_SESSION}) {
        Editor editor{scene};
        const auto body = [&] {
            AcDbObjectPointer<AcDbObject> object{idOf(editor, 0xA1), AcDb::kForWrite};
            EXPECT_EQ(object.openStatus(), flags == ACRX_CMD_SESSION ? Acad::eLockViolation : Acad::eOk);
            EXPECT_EQ(acDocManager->isApplicationContext(), flags == ACRX_CMD_SESSION);
        };
        editor.runBody(body, "", flags);
        expectInOrder(editor);
    }
}

TEST(Queue, runsBeforeTheNextLine) {
    Editor editor{scene};
    editor.define([] {
        acDocManager->sendStringToExecute(acDocManager->curDocument(), L"SETVAR PICKBOX ");
        acDocManager->sendStringToExecute(acDocManager->curDocument(), L"9\nSETVAR PICKSTYLE 2 ");
        acutPrintf(L"\nfirst");
    });
    const auto run = editor.run("BODY\nSETVAR PICKBOX 5\n");
    EXPECT_EQ(run.transcript, "命令: BODY\nfirst\n"
                              "命令: SETVAR\n输入变量名或 [?]: PICKBOX\n输入 PICKBOX 的新值 <3>: 9\n"
                              "命令: SETVAR\n输入变量名或 [?]: PICKSTYLE\n输入 PICKSTYLE 的新值 <1>: 2\n"
                              "命令: SETVAR\n输入变量名或 [?]: PICKBOX\n输入 PICKBOX 的新值 <9>: 5\n");
}

TEST(Queue, cancelCharacterNeitherEndsNorFailsTheScript) {
    Editor editor{scene};
    editor.define(
        [] { acDocManager->sendStringToExecute(acDocManager->curDocument(), L"\3", true, false, true); });
    const auto run = editor.run("BODY\nSETVAR PICKBOX 8\n");
    EXPECT_TRUE(run.transcript.starts_with("命令: BODY\n命令: *取消*\n命令: SETVAR\n")) << run.transcript;
    EXPECT_EQ(editor.session.variables().number("PICKBOX"), 8);
}

TEST(Queue, refusesWhatItCantRun) {
    Editor editor{scene};
    AcApDocument* open = acDocManager->curDocument();
    EXPECT_EQ(acDocManager->sendStringToExecute(nullptr, L"U "), Acad::eInvalidInput);
    EXPECT_EQ(acDocManager->sendStringToExecute(open, nullptr), Acad::eInvalidInput);
    editor.session.setDrawing(nullptr);
    EXPECT_EQ(acDocManager->sendStringToExecute(open, L"U "), Acad::eNoDocument);
    EXPECT_EQ(editor.run("ERASE\n").failure, "test.scr:1: no drawing is open");
}
} // namespace
