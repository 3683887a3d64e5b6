// Whole runs of the command, as scripts over a small drawing.
#include "positionalign/command.h"
#include "ed/Editor.h"
#include "rxregsvc.h"
#include "tests/positionalign/Scene.h"

#include <gtest/gtest.h>

namespace qx::tests {
using namespace drawings;
namespace {

/// A session over the scene in which the command is known.
struct CommandSession {
    CommandSession() {
        acedRegCmds->addCommand(L"QX_TEST", L"KV_PositionAlign", L"KV_PositionAlign", ACRX_CMD_MODAL,
                                positionalign::runCommand);
    }
    /// True when the script went through.
    bool run(const std::string& script) { return editor.run(script).end == ed::RunEnd::sourceEnded; }
    db::Drawing& drawing() { return editor.drawing(); }
    std::string shifts() const { return before.shifts(); }
    bool hasTheFilesBytes() { return drawing().toBytes() == scene.content.bytes(); }
    const ed::Session& session() const { return editor.session; }

    const Scene scene;
    Editor editor{scene.content.bytes()};
    const std::string& shown = editor.transcript;
    const Positions before{editor.drawing(), scene.items};
};

int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++found;
    return found;
}

constexpr const char* still = "0,0,0 0,0,0 0,0,0 0,0,0";
constexpr const char* noGroup = "所选对象未包含组\n";

TEST(Command, AsksForEverythingInTurn) {
    CommandSession run;
    EXPECT_TRUE(run.run("KV_PositionAlign\nO\nL\n4\n(handent \"100\")\n(handent \"101\")\n\n50,60,1\n"));
    EXPECT_EQ(run.shifts(), "44,0,-2 59,0,1 0,0,0 0,0,0");
    const char* const inOrder[] = {
        "选择模式 [对象(O)/组(G)] <O>: O\n",
        "对齐方式 [水平居中(HC)/上(T)/左(L)/中心(C)/右(R)/垂直居中(VC)/下(B)/横向分布(HD)/纵向分布(VD)]: L\n",
        "偏移值 <0>: 4\n",
        "选择对象: ",
        "指定基点:50,60,1\n",
    };
    std::size_t at = 0;
    for (const char* prompt : inOrder) {
        const std::size_t found = run.shown.find(prompt, at);
        ASSERT_NE(found, std::string::npos) << prompt << " in\n" << run.shown;
        at = found + 1;
    }
}

struct ActionCase {
    const char* name;
    const char* answers; ///< after the command's name, up to the selection of all
    const char* shifts;
};

TEST(Command, EveryKeywordMeansItsAction) {
    const ActionCase cases[] = {
        {"horizontal centre", "O\nHC\nALL\n\n50,60,1\n", "30,0,1 50,0,1 -70,0,1 49.5,0,1"},
        {"top", "O\nT\n4\nALL\n\n50,60,1\n", "0,6,-6 0,48,1 0,-54,3 0,55,-4"},
        {"left", "O\nL\n4\nALL\n\n50,60,1\n", "44,0,-2 59,0,1 -46,0,3 54,0,-4"},
        {"centre", "O\nC\nALL\n\n50,60,1\n", "30,25,2 50,56,2 -70,-45,2 49.5,59.5,2"},
        {"right", "O\nR\n4\nALL\n\n50,60,1\n", "16,0,-6 41,0,1 -94,0,3 45,0,-4"},
        {"vertical centre", "O\nVC\nALL\n\n50,60,1\n", "0,25,1 0,56,1 0,-45,1 0,59.5,1"},
        {"bottom", "O\nB\n4\nALL\n\n50,60,1\n", "0,44,-2 0,64,1 0,-36,3 0,64,-4"},
        {"horizontal distribution", "O\nHD\nALL\n\n", "45.333333333,0,0 0,0,0 0,0,0 29.666666667,0,0"},
        {"vertical distribution", "O\nVD\nALL\n\n", "0,29.666666667,0 0,21.333333333,0 0,0,0 0,0,0"},
        {"groups", "G\nT\n4\nALL\n\n50,60,1\n", "0,6,0 0,6,0 0,-54,0 0,0,0"},
        {"groups, distributed", "G\nVD\nALL\n\n", still},
        {"Enter takes the defaults", "\nT\n\nALL\n\n50,60,1\n", "0,10,-6 0,52,1 0,-50,3 0,59,-4"},
        {"in small letters", "g\nvc\nall\n\n50,60\n", "0,40.5,0 0,40.5,0 0,-45,0 0,0,0"},
        {"a negative offset", "O\nT\n-4\nALL\n\n50,60,1\n", "0,14,-6 0,56,1 0,-46,3 0,63,-4"},
    };
    for (const auto& each : cases) {
        CommandSession run;
        EXPECT_TRUE(run.run(std::string{"KV_PositionAlign\n"} + each.answers)) << each.name << run.shown;
        EXPECT_EQ(run.shifts(), each.shifts) << each.name;
        EXPECT_EQ(run.session().violations, 0u) << each.name;
    }
}

TEST(Command, EarlyEndsMoveNothing) {
    const struct {
        const char* name;
        const char* answers;
        bool asksForBasePoint;
        int groupMessages;
    } cases[] = {
        {"cancelled at the mode", "^C\n", false, 0},
        {"cancelled at the action", "O\n^C\n", false, 0},
        {"Enter at the action", "O\n\n", false, 0},
        {"cancelled at the offset", "O\nT\n^C\n", false, 0},
        {"cancelled at the selection", "O\nT\n4\n^C\n", false, 0},
        {"cancelled at the base point", "O\nT\n4\nALL\n\n^C\n", true, 0},
        {"Enter at the base point", "O\nT\n4\nALL\n\n\n", true, 0},
        {"no objects selected", "O\nT\n4\n\n50,60\n", true, 0},
        {"selected and removed again", "O\nT\n4\nALL\nR\nALL\n\n50,60\n", true, 0},
        {"no groups to distribute", "G\nHD\n\n", false, 1},
        {"nothing selected, groups", "G\nT\n4\n\n50,60\n", true, 1},
        {"nothing selected, groups centred", "G\nC\n\n50,60\n", true, 2},
        {"only what is in no group", "G\nL\n0\n(handent \"103\")\n\n50,60\n", true, 1},
    };
    for (const auto& each : cases) {
        CommandSession run;
        EXPECT_TRUE(run.run(std::string{"KV_PositionAlign\n"} + each.answers)) << each.name << run.shown;
        EXPECT_EQ(count(run.shown, "指定基点:"), each.asksForBasePoint ? 1 : 0) << each.name << run.shown;
        EXPECT_EQ(count(run.shown, noGroup), each.groupMessages) << each.name << run.shown;
        EXPECT_TRUE(run.hasTheFilesBytes()) << each.name;
        EXPECT_EQ(run.drawing().history().stepsDone(), 0u) << each.name;
        EXPECT_EQ(run.session().violations, 0u) << each.name;
    }
}

TEST(Command, RunsDoNotKnowOfEachOther) {
    CommandSession run;
    EXPECT_TRUE(run.run("KV_PositionAlign\nG\nL\n4\nALL\n\n50,60\n"
                        "KV_PositionAlign\n\nL\n\n(handent \"103\")\n\n7,0\n"));
    EXPECT_EQ(run.shifts(), "59,0,0 59,0,0 -46,0,0 7,0,-5");
    EXPECT_EQ(run.drawing().history().stepsDone(), 2u);
}

TEST(Command, SelectionSetsAreLeftToTheHost) {
    CommandSession run;
    EXPECT_TRUE(run.run("KV_PositionAlign\nO\nT\n\nALL\n\n^C\n"));
    EXPECT_EQ(run.session().reapedSets, 1u);
}
} // namespace
} // namespace qx::tests
