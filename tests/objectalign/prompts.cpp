// Answers that the command is prepared for and no session gives, and objects that go while it asks.
#include "adscodes.h"
#include "ed/PromptStage.h"
#include "objectalign/CommandRun.h"

namespace qx::tests {
namespace {

constexpr const char *pickPrompt = "请选择多段线：", *basePrompt = "选择对齐基线",
                     *pivotPrompt = "指定旋转基准点：",
                     *linePrompt = "指定对齐线:", *curvePrompt = "请选择对齐点所在的",
                     *pointPrompt = "请选择对齐点:", *flipPrompt = "回车结束或";

struct PromptCase {
    const char *name, *inputs;
    const char* prompt; ///< the first one that begins so is the one that counts
    struct {
        std::optional<int> result = {};                  ///< instead of asking
        AcGePoint2d point = {};                          ///< comes with that result
        char erased = 0;                                 ///< the object that is gone when the answer is there
        std::optional<int> setLength = {}, unnamed = {}; ///< of every set all the time
    } answer;
    const char *changes = "", *messages = "";
};

/// Runs the case with what it says on the stage.
void play(const PromptCase& each, CommandRun& run) {
    bool isNow = false, hasBeen = false;
    stage.answer = [&](const Question& question) -> std::optional<int> {
        EXPECT_EQ(run.drawing().openCount(), 0u) << "while it asks for " << question.prompt;
        isNow = !hasBeen && question.prompt.starts_with(each.prompt);
        hasBeen |= isNow;
        if (!isNow || !each.answer.result) return std::nullopt;
        question.point[0] = each.answer.point.x;
        question.point[1] = each.answer.point.y;
        return each.answer.result;
    };
    stage.answered = [&](const Question&) {
        if (isNow && each.answer.erased) drawings::erase(run.drawing(), plan()[each.answer.erased]);
    };
    stage.setLength = each.answer.setLength;
    stage.unnamed = each.answer.unnamed;
    EXPECT_TRUE(run.script(each.inputs)) << run.editor.session.line().failure();
    EXPECT_TRUE(hasBeen || !each.prompt[0]);
    stage = {};
}

void expectOutcomes(const std::vector<PromptCase>& cases) {
    for (const PromptCase& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        play(each, run);
        EXPECT_EQ(run.messages, each.messages);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.disorder(), "");
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}

TEST(Prompts, APointWithTheResultZeroIsTakenUntested) {
    const char *noTangent = "/该点不是切点", *goneCurve = "/请选择对齐点所在的直线、圆、圆弧或多段线";
    expectOutcomes({
        {"far from a line", "O S 5 P {A} - {H@0,0} -", pointPrompt, {0, {50, 777}}, "A 45,5<0"},
        {"on a 3D polyline", "O S 5 P {A} - {R@0,0}", pointPrompt, {0, {600, 25}}},
        {"far from a polyline", "O S 5 P {A} - {P@0,0}", pointPrompt, {0, {400, 777}}},
        {"at a centre", "O S 5 P {A} - {Z@0,0}", pointPrompt, {0, {50, -1000}}, "", noTangent},
        {"gone", "O S 5 P {A} - {H@0,0}", pointPrompt, {0, {50, 0}, 'H'}, "H gone", goneCurve},
    });
}

TEST(Prompts, OtherResultsEndTheCommandOrAreAskedFor) {
    const char *one = "选择集中对象：1/", *whole = "O W - L {A} - <base> <line> -";
    expectOutcomes({
        {"a base line refused", whole, basePrompt, {RTREJ}, "A -80,90<0"},
        {"one without a name", whole, basePrompt, {RTNORM}, "A -80,90<0"},
        {"no base point", "O W - L {A} - {K@0,0}", pivotPrompt, {RTERROR}},
        {"a keyword for a line", "O W - L {A} - <base>", linePrompt, {RTKWORD}},
        {"a line without a name", "O S - L {A} -", linePrompt, {RTNORM}},
        {"an error for a point", "O S - P {A} - <line>", pointPrompt, {RTERROR, {50, 0}}},
        {"a keyword for a polyline", "P - L <line> -", pickPrompt, {RTKWORD}},
        {"a polyline without a name", "P - L {P@400,25} - <line> -", pickPrompt, {RTNORM}, "P 400,20<0", one},
        {"a keyword for a click", "O S - L {A} - <line>", flipPrompt, {RTKWORD}, "A 10,20<0"},
    });
}

TEST(Prompts, WhatIsErasedMeanwhileIsLeftOut) {
    const auto gone = [](char name) { return decltype(PromptCase::answer){.erased = name}; };
    expectOutcomes({
        {"one of each", "O S - L {A} {T} - <line> -", linePrompt, gone('A'), "A gone, T 200,40<0"},
        {"at a click", "O S - L {A} {T} - <line> 9,9 -", flipPrompt, gone('A'), "A gone, T 200,-40<180"},
        {"the base line: a click turns about the origin", "O W - L {A} - <base> <line> 9,9 -", pivotPrompt,
         gone('K'), "A -10,-20<270, K gone"},
        {"a curve", "O S - P {A} - <onLine> -", pointPrompt, gone('H'), "H gone", "/请选择对象上的对齐点!"},
        {"a polyline later: the end of it", "P - L {R@600,25} {P@400,25} {Q@500,25} - <line> -", linePrompt,
         gone('P'), "P gone, R 600,20<0", "选择集中对象：1/选择集中对象：2/选择集中对象：3/"},
    });
}

TEST(Prompts, SetsMayHoldNothing) {
    const char* nothing = "/没有选中任何对象，未进行对齐处理！";
    expectOutcomes({
        {"no groups", "G - L {A} -", "", {.setLength = 0}, "", nothing},
        {"no objects", "O S - L {A} - <line>", "", {.setLength = 0}, "", nothing},
        {"no name, each", "O S - L {A} {T} - <line> 9,9 -", "", {.unnamed = 0}, "T 200,-40<180"},
        {"no name, whole", "O W - L {A} {T} - <base> <line> -", "", {.unnamed = 1}, "A -80,90<0"},
    });
}

/// Per prompt what is there while it is asked: added entities, selection sets, rubber band.
TEST(Prompts, WhatIsThereWhileItAsks) {
    CommandRun run;
    std::string seen;
    stage.answer = [&](const Question& question) -> std::optional<int> {
        seen += question.prompt.substr(0, 15) + " " + run.added() + "/" +
                std::to_string(run.editor.session.sets().count()) + (question.base ? "/band" : "") + "\n";
        return std::nullopt;
    };
    EXPECT_TRUE(run.script("O W - L {A} - - 7,0 7,9 0,100 {P@410,30} - KV_ObjectAlign "
                           "P - L {P@400,25} {A@0,0} {P@410,30} {Q@500,25} - {P@410,30} -"));
    EXPECT_EQ(stage.highlighted, (std::vector{1, 1, 2})) << "a set holds a polyline once";
    stage = {};
    EXPECT_EQ(seen, "选择对齐基 /1\n请选择第一 /1\n请选择第二 /1/band\n指定旋转基 1/1\n指定对齐线 1/1\n"
                    "回车结束或 /0\n请选择多段 /1\n请选择多段 /1\n请选择多段 /1\n请选择多段 /1\n"
                    "请选择多段 /1\n指定对齐线 /0\n回车结束或 /0\n");
}
} // namespace
} // namespace qx::tests
