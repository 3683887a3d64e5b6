#include "aced.h"
#include "acutads.h"
#include "dbents.h"
#include "dbobjptr.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"
#include "rx/CommandStack.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {
using namespace qx;
using ed::RunEnd;
using tests::Editor;

const std::string scene = drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0",
                                                             "LINE|5 A2|8 LOCKED|10 0|20 100|11 100|21 100",
                                                             "CIRCLE|5 A3|10 500|20 400|40 100"}}
                              .bytes();

AcDbObjectId idOf(Editor& editor, std::uint64_t handle) {
    return AcDbObjectId{editor.drawing().find(handle)};
}

void move(Editor& editor, std::uint64_t handle, double dx) {
    const AcDbObjectPointer<AcDbEntity> entity{idOf(editor, handle), AcDb::kForWrite};
    ASSERT_EQ(entity.openStatus(), Acad::eOk);
    EXPECT_EQ(entity->transformBy(AcGeMatrix3d::translation({dx, 0, 0})), Acad::eOk);
}

struct ScriptCase {
    const char* name;
    const char* script;
    RunEnd end;
    const char* failure;    ///< with its line; empty: none
    const char* transcript; ///< a part of it
};
const ScriptCase scriptCases[] = {
    {"blank lines and comments", "\n\n; nothing\n\n", RunEnd::sourceEnded, "", ""},
    {"unknown command", "\nFOO\n", RunEnd::failed, "test.scr:2: unknown command \"FOO\"", "未知命令“FOO”。"},
    {"nothing after a failure", "FOO\nSETVAR PICKBOX 9\n", RunEnd::failed,
     "test.scr:1: unknown command \"FOO\"", ""},
    {"any case, any prefix", "_.setvar cmddia 1\n'SETVAR\n?\n", RunEnd::sourceEnded, "", "CMDDIA  1"},
    {"the script ends inside a command", "SETVAR PICKBOX", RunEnd::failed,
     "test.scr:1: the script ends inside the command SETVAR", "输入 PICKBOX 的新值 <3>: *取消*"},
    {"Enter keeps a value", "SETVAR PICKBOX\n\nU\n", RunEnd::sourceEnded, "", "没有可放弃的操作。"},
    {"value beyond the limits", "SETVAR PICKSTYLE 4\n", RunEnd::failed,
     "test.scr:1: PICKSTYLE does not take this value", "变量值超出范围。"},
    {"refused keyword", "ARX\nfoo\n", RunEnd::failed, "test.scr:2: \"foo\" is not one of the keywords",
     "选项关键字无效。"},
    {"cancel goes on", "SETVAR\n^CSETVAR PICKBOX 5 SETVAR PICKBOX\n\n", RunEnd::sourceEnded, "", "<5>"},
    {"quit ends it", "QUIT\nFOO\n", RunEnd::quit, "", ""},
    {"function that is not defined", "(Foo)\n", RunEnd::failed, "test.scr:1: undefined function \"Foo\"",
     "; 错误: 函数未定义: Foo"},
    {"list", "LIST\n(handent \"A3\")\n\n", RunEnd::sourceEnded, "",
     "AcDbCircle  句柄 A3  图层 0  范围 400,300,0 至 600,500,0"},
    {"erase says what it leaves", "ERASE\nALL\n\n", RunEnd::sourceEnded, "",
     "1 个对象在锁定的图层上，没有删除。"},
    {"undo more than there is", "ERASE\n(handent \"A1\")\n\nUNDO 5\n", RunEnd::sourceEnded, "",
     "已放弃 ERASE\n没有可放弃的操作。\n"},
    {"redo", "ERASE\n(handent \"A1\")\n\nU\nREDO\nREDO\n", RunEnd::sourceEnded, "",
     "已重做 ERASE\n命令: REDO\n没有可重做的操作。"},
};

TEST(Scripts, runToTheirEnd) {
    for (const ScriptCase& each : scriptCases) {
        SCOPED_TRACE(each.name);
        Editor editor{scene};
        const auto run = editor.run(each.script);
        EXPECT_EQ(run.end, each.end) << run.transcript;
        EXPECT_EQ(run.failure, each.failure);
        EXPECT_NE(run.transcript.find(each.transcript), std::string::npos) << run.transcript;
        expectInOrder(editor);
    }
}

// The transcript is Chinese, what fails a script is English.
TEST(Scripts, sayFailuresInTwoLanguages) {
    const struct {
        const char* script;
        const char* transcript;
        const char* failure; ///< its beginning
    } cases[] = {
        {"OPEN no.dxf\n", "无法打开图形 no.dxf。\n", "test.scr:1: Can't read no.dxf: "},
        {"SAVEAS no/a.dxf\n", "无法保存到 no/a.dxf。\n", "test.scr:1: Can't write no/a.dxf: "},
        {"ARX L no.arx\n", "无法加载模块 no.arx。\n", "test.scr:1: Can't find the module no.arx."},
        {"ARX U no\n", "无法卸载模块 no。\n", "test.scr:1: no is not loaded."},
        {"BODY\n", "命令 BODY 所属的模块已卸载，无法执行；请重新加载该模块。\n",
         "test.scr:1: The module of the command BODY was unloaded; load it again."},
    };
    for (const auto& each : cases) {
        Editor editor{scene};
        editor.define([] {});
        rx::commandStack().find(L"BODY")->retire();
        const auto run = editor.run(each.script);
        EXPECT_EQ(run.failure.substr(0, std::string_view{each.failure}.size()), each.failure);
        EXPECT_TRUE(run.transcript.ends_with(each.transcript)) << run.transcript;
        expectInOrder(editor);
    }
}

// Nothing but the transcript tells a person, so the cause stands there, too.
TEST(Commands, tellAPersonTheCause) {
    Editor editor{scene};
    tests::Person person{"ARX L no.arx\nOPEN no.dxf\n", "input"};
    EXPECT_EQ(ed::CommandRunner{editor.session}.run(person), RunEnd::sourceEnded);
    EXPECT_NE(editor.transcript.find("\n无法加载模块 no.arx: Can't find the module no.arx.\n"),
              std::string::npos)
        << editor.transcript;
    EXPECT_NE(editor.transcript.find("\n无法打开图形 no.dxf: Can't read no.dxf: "), std::string::npos)
        << editor.transcript;
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

TEST(Scripts, oneStepPerCommand) {
    Editor editor{scene};
    editor.define([&] {
        move(editor, 0xA1, 1);
        move(editor, 0xA3, 1);
        move(editor, 0xA1, 1);
    });
    const std::string once = editor.run("BODY\n").bytes;
    EXPECT_NE(once, scene);
    EXPECT_NE(editor.run("BODY\n").bytes, once);
    EXPECT_EQ(editor.run("U\n").bytes, once);
    EXPECT_EQ(editor.run("U\n").bytes, scene);
    expectInOrder(editor);
}

// What a command does against the host's rules, after it has moved an object.
struct ViolationCase {
    const char* name;
    void (*body)(Editor&);
    const char* sentence;
};
const ViolationCase violationCases[] = {
    {"left open for writing",
     [](Editor& editor) {
         AcDbObject* object = nullptr;
         acdbOpenAcDbObject(object, idOf(editor, 0xA3), AcDb::kForWrite);
     },
     "有 1 个对象没有关闭"},
    {"changed without write access",
     [](Editor& editor) {
         const AcDbObjectPointer<AcDbEntity> entity{idOf(editor, 0xA3), AcDb::kForRead};
         entity->setColorIndex(1);
     },
     ""},
    {"exception", [](Editor&) { throw std::runtime_error{"trouble"}; }, "BODY 因内部错误而中断。\n"},
    {"something else thrown", [](Editor&) { throw 1; }, ""},
};

TEST(Violations, areRolledBackAndSaid) {
    for (const ViolationCase& each : violationCases) {
        SCOPED_TRACE(each.name);
        Editor editor{scene};
        const auto run = editor.runBody([&] {
            move(editor, 0xA1, 5);
            each.body(editor);
        });
        EXPECT_EQ(run.end, RunEnd::failed);
        EXPECT_NE(run.transcript.find(each.sentence), std::string::npos) << run.transcript;
        EXPECT_EQ(run.bytes, scene);
        EXPECT_EQ(editor.drawing().openCount(), 0u);
        EXPECT_EQ(editor.session.violations, 1u);
        EXPECT_FALSE(editor.drawing().isLocked());
        EXPECT_EQ(editor.drawing().history().stepsDone(), 0u);
    }
}

TEST(Violations, endsOfACommandThatAsksOn) {
    struct Case {
        const char* name;
        const char* answers;
        int prompts;
        RunEnd end;
        bool isKept;
    };
    const Case cases[] = {
        {"the script ends inside", "1,2\n", 2, RunEnd::failed, false},
        {"cancelled once", "^C", 1, RunEnd::sourceEnded, true},
        {"it takes no cancel", "", 1'000'000, RunEnd::failed, false},
    };
    for (const Case& each : cases) {
        Editor editor{scene};
        const auto run = editor.runBody(
            [&] {
                move(editor, 0xA1, 5);
                ads_point point{};
                for (int i = 0; i < each.prompts; ++i) acedGetPoint(nullptr, L"点: ", point);
            },
            each.answers);
        EXPECT_EQ(run.end, each.end) << each.name;
        EXPECT_EQ(run.bytes != scene, each.isKept) << each.name;
    }
}

TEST(Commands, areLockedUnlessTheyRunInTheSession) {
    for (const int flags : {ACRX_CMD_MODAL, ACRX_CMD_SESSION}) {
        Editor editor{scene};
        Acad::ErrorStatus status = Acad::eOk;
        bool application = false;
        editor.runBody(
            [&] {
                AcDbObject* object = nullptr;
                status = acdbOpenAcDbObject(object, idOf(editor, 0xA1), AcDb::kForWrite);
                if (object) object->close();
                application = acDocManager->isApplicationContext();
            },
            "", flags);
        EXPECT_EQ(status, flags == ACRX_CMD_SESSION ? Acad::eLockViolation : Acad::eOk);
        EXPECT_EQ(application, flags == ACRX_CMD_SESSION);
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
    EXPECT_EQ(run.end, RunEnd::sourceEnded);
    EXPECT_EQ(run.transcript.substr(0, 40),
              std::string{"命令: BODY\n命令: *取消*\n命令: SETVAR\n"}.substr(0, 40));
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
