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
    const char* prompt;        ///< the first one that begins so is the one that counts
    std::optional<int> result; ///< instead of asking
    AcGePoint2d point;         ///< comes with that result
    char erased;               ///< the object that is gone when the answer is there; 0 for none
    const char *messages, *changes;
};

PromptCase answered(const char* name, const char* inputs, const char* prompt, int result, AcGePoint2d point,
                    const char* messages, const char* changes) {
    return {name, inputs, prompt, result, point, 0, messages, changes};
}

PromptCase gone(const char* name, const char* inputs, const char* prompt, char erased, const char* changes,
                const char* messages = "") {
    return {name, inputs, prompt, {}, {}, erased, messages, changes};
}

/// Puts what a case says on the stage, as long as it lives.
class Scene {
public:
    Scene(const PromptCase& play, CommandRun& run) {
        stage.answer = [&, this](const Question& question) -> std::optional<int> {
            EXPECT_EQ(run.drawing().openCount(), 0u) << "while it asks for " << question.prompt;
            isNow_ = !hasBeen_ && question.prompt.starts_with(play.prompt);
            hasBeen_ |= isNow_;
            if (!isNow_ || !play.result) return std::nullopt;
            question.point[0] = play.point.x;
            question.point[1] = play.point.y;
            return play.result;
        };
        stage.answered = [&, this](const Question&) {
            if (!isNow_ || !play.erased) return;
            EXPECT_EQ(drawings::erase(run.drawing(), plan()[play.erased]), Acad::eOk);
        };
    }
    ~Scene() {
        EXPECT_TRUE(hasBeen_);
        stage = {};
    }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

private:
    bool isNow_ = false, hasBeen_ = false;
};

void expectOutcomes(const std::vector<PromptCase>& cases) {
    for (const PromptCase& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        const Scene scene{each, run};
        EXPECT_TRUE(run.script(each.inputs)) << run.editor.session.line().failure();
        EXPECT_EQ(run.messages, each.messages);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.disorder(), "");
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}

TEST(Prompts, APointWithTheResultZeroIsTakenUntested) {
    const char *otherClass = "/请选择对齐点所在的直线、圆、圆弧或多段线!", *noTangent = "/该点不是切点";
    expectOutcomes({
        answered("far from a line", "O S 5 P {A} - {H@0,0} -", pointPrompt, 0, {50, 777}, "", "A 45,5<0"),
        answered("on a text", "O S 5 P {A} - {T@0,0}", pointPrompt, 0, {}, otherClass, ""),
        answered("on a 3D polyline", "O S 5 P {A} - {R@0,0}", pointPrompt, 0, {600, 25}, "", ""),
        answered("far from a polyline", "O S 5 P {A} - {P@0,0}", pointPrompt, 0, {400, 777}, "", ""),
        answered("at a centre", "O S 5 P {A} - {Z@0,0}", pointPrompt, 0, {50, -1000}, noTangent, ""),
        {"on a curve that is gone",
         "O S 5 P {A} - {H@0,0}",
         pointPrompt,
         0,
         {50, 0},
         'H',
         "/请选择对齐点所在的直线、圆、圆弧或多段线",
         "H gone"},
    });
}

TEST(Prompts, OtherResultsEndTheCommandOrAreAskedFor) {
    const char* whole = "O W - L {A} - <base> <line> -";
    expectOutcomes({
        answered("a base line refused", whole, basePrompt, RTREJ, {}, "", "A -80,90<0"),
        answered("a keyword for it", whole, basePrompt, RTKWORD, {}, "", "A -80,90<0"),
        answered("one without a name", whole, basePrompt, RTNORM, {}, "", "A -80,90<0"),
        answered("no base point", "O W - L {A} - {K@0,0}", pivotPrompt, RTERROR, {}, "", ""),
        answered("a keyword for a line", "O W - L {A} - <base>", linePrompt, RTKWORD, {}, "", ""),
        answered("a line without a name", "O S - L {A} -", linePrompt, RTNORM, {}, "", ""),
        answered("a keyword for a curve", "O S - P {A} -", curvePrompt, RTKWORD, {}, "", ""),
        answered("a keyword for a point", "O S - P {A} - <line>", pointPrompt, RTKWORD, {}, "", ""),
        answered("an error for a point", "O S - P {A} - <line>", pointPrompt, RTERROR, {50, 0}, "", ""),
        answered("a keyword for a polyline", "P - L <line> -", pickPrompt, RTKWORD, {}, "", ""),
        answered("one without a name", "P - L {P@400,25} - <line> -", pickPrompt, RTNORM, {},
                 "选择集中对象：1/", "P 400,20<0"),
        answered("a keyword for a click", "O S - L {A} - <line>", flipPrompt, RTKWORD, {}, "", "A 10,20<0"),
    });
}

TEST(Prompts, WhatIsErasedMeanwhileIsLeftOut) {
    expectOutcomes({
        gone("one of each", "O S - L {A} {T} - <line> -", linePrompt, 'A', "A gone, T 200,40<0"),
        gone("one of the whole", "O W - L {A} {T} - <base> <line> -", linePrompt, 'A',
             "A gone, T -60,-100<300"),
        gone("selected: no member now", "G - L {A} - <base> <line> -", linePrompt, 'A', "A gone"),
        gone("another member", "G - L {A} - <base> <line> -", linePrompt, 'T', "A -80,90<0, T gone"),
        gone("at a click", "O S - L {A} {T} - <line> 9,9 -", flipPrompt, 'A', "A gone, T 200,-40<180"),
        gone("the base line: a click turns about the origin", "O W - L {A} - <base> <line> 9,9 -",
             pivotPrompt, 'K', "A -10,-20<270, K gone"),
        gone("a picked base line", "O W - L {A} - {K@0,0} {P@400,25} 0,100 <line> -", basePrompt, 'K',
             "A -80,90<0, K gone"),
        gone("a picked line", "O S - L {A} - <line>", linePrompt, 'H', "H gone"),
        gone("a curve", "O S - P {A} - <onLine> -", pointPrompt, 'H', "H gone", "/请选择对象上的对齐点!"),
        gone("a polyline at its pick", "P - L {P@400,25} {R@600,25} - <line> -", pickPrompt, 'P',
             "P gone, R 600,20<0", "选择集中对象：1/"),
        gone("a polyline later: the end of it", "P - L {R@600,25} {P@400,25} {Q@500,25} - <line> -",
             linePrompt, 'P', "P gone, R 600,20<0", "选择集中对象：1/选择集中对象：2/选择集中对象：3/"),
    });
}

TEST(Prompts, SetsThatHoldNothing) {
    const char* nothing = "/没有选中任何对象，未进行对齐处理！";
    const struct {
        const char *name, *inputs;
        std::optional<int> setLength, unnamed;
        const char *messages, *changes;
    } cases[] = {
        {"no groups", "G - L {A} -", 0, {}, nothing, ""},
        {"no objects", "O S - L {A} - <line>", 0, {}, nothing, ""},
        {"no objects, whole", "O W - L {A} - <base> <line>", 0, {}, nothing, ""},
        {"no name, each", "O S - L {A} {T} - <line> 9,9 -", {}, 0, "", "T 200,-40<180"},
        {"no name, whole", "O W - L {A} {T} - <base> <line> -", {}, 1, "", "A -80,90<0"},
        {"no name, groups", "G - L {A} {C} - <base> <line> -", {}, 1, "", "A -80,90<0, T -60,-100<300"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        stage.setLength = each.setLength;
        stage.unnamed = each.unnamed;
        EXPECT_TRUE(run.script(each.inputs));
        stage = {};
        EXPECT_EQ(run.messages, each.messages);
        EXPECT_EQ(run.changes(), each.changes);
        EXPECT_EQ(run.disorder(), "");
    }
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
