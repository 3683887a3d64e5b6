// Answers that the command is prepared for and no session gives, and objects that go while it asks.
#include "ed/PromptStage.h"
#include "adscodes.h"
#include "objectalign/CommandRun.h"
#include "objectalign/Messages.h"

namespace qx::tests {
namespace {

constexpr const char *pickPrompt = "请选择多段线：", *basePrompt = "选择对齐基线",
                     *pivotPrompt = "指定旋转基准点：", *linePrompt = "指定对齐线:",
                     *curvePrompt = "请选择对齐点所在的", *pointPrompt = "请选择对齐点:",
                     *flipPrompt = "回车结束或";

/// What happens the first time that a prompt with this beginning is shown.
struct Staged {
    const char* prompt = "";
    std::optional<int> result = std::nullopt; ///< instead of asking
    AcGePoint2d point = {};                   ///< comes with that result
    char erased = 0;                          ///< the object that is gone when the answer is there
};

/// Stages it while it lives.
class Scene {
public:
    Scene(const Staged& staged, CommandRun& run) {
        stage.answer = [&staged, this](const Question& question) -> std::optional<int> {
            isNow_ = !hasBeen_ && *staged.prompt && question.prompt.starts_with(staged.prompt);
            hasBeen_ |= isNow_;
            if (!isNow_ || !staged.result) return std::nullopt;
            question.point[0] = staged.point.x;
            question.point[1] = staged.point.y;
            return staged.result;
        };
        stage.answered = [&staged, &run, this](const Question&) {
            if (!isNow_ || !staged.erased) return;
            EXPECT_EQ(drawings::erase(run.drawing(), plan()[staged.erased]), Acad::eOk);
        };
    }
    ~Scene() { stage = {}; }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    bool hasBeen() const { return hasBeen_; }

private:
    bool isNow_ = false, hasBeen_ = false;
};

const std::string base = "- {K@1100,5} 0,100 ", line = "{H@50,0} ";

struct PromptCase {
    const char* name;
    std::string inputs;
    Staged staged;
    const char* messages;
    const char* changes;
};

void expectOutcomes(const std::vector<PromptCase>& cases) {
    for (const PromptCase& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        Messages messages{run.editor.session};
        const Scene scene{each.staged, run};
        EXPECT_TRUE(run.script("KV_ObjectAlign " + each.inputs)) << run.editor.session.line().failure();
        EXPECT_TRUE(scene.hasBeen());
        EXPECT_EQ(messages.all, each.messages);
        EXPECT_EQ(run.changes(), each.changes) << run.shown;
        EXPECT_EQ(run.added(), "");
        EXPECT_EQ(run.setsLeft(), 0u);
        expectInOrder(run.editor);
        EXPECT_TRUE(run.isUndoneToTheBytes());
    }
}

TEST(Prompts, APointWithTheResultZeroIsTakenUntested) {
    const std::string pick = "O S 5 P {A} - ";
    constexpr int zero = 0;
    expectOutcomes({
        {"far from a line", pick + "{H@0,0} -", {pointPrompt, zero, {50, 777}}, "", "A 45,5<0"},
        {"on a text", pick + "{T@0,0}", {pointPrompt, zero}, "/请选择对齐点所在的直线、圆、圆弧或多段线!", ""},
        {"on a 3D polyline", pick + "{R@0,0}", {pointPrompt, zero, {600, 25}}, "", ""},
        {"far from a polyline", pick + "{P@0,0}", {pointPrompt, zero, {400, 777}}, "", ""},
        {"at the centre of a circle", pick + "{Z@0,0}", {pointPrompt, zero, {50, -1000}}, "/该点不是切点", ""},
        {"on a curve that is gone",
         pick + "{H@0,0}",
         {pointPrompt, zero, {50, 0}, 'H'},
         "/请选择对齐点所在的直线、圆、圆弧或多段线",
         "H gone"},
    });
}

TEST(Prompts, OtherResultsEndTheCommandOrAreAskedFor) {
    const std::string whole = "O W - L {A} - ", each = "O S - P {A} - ";
    expectOutcomes({
        {"a base line refused", whole + "{K@0,0} 0,100 " + line + "-", {basePrompt, RTREJ}, "", "A -80,90<0"},
        {"a keyword for it", whole + "{K@0,0} 0,100 " + line + "-", {basePrompt, RTKWORD}, "", "A -80,90<0"},
        {"Enter of another kind", whole + "{K@0,0} 0,100 " + line + "-", {basePrompt, RTNONE}, "", "A -80,90<0"},
        {"a base line without a name", whole + "{K@0,0} 0,100 " + line + "-", {basePrompt, RTNORM}, "",
         "A -80,90<0"},
        {"an error for the base point", whole + "{K@0,0}", {pivotPrompt, RTERROR}, "", ""},
        {"a keyword for the alignment line", whole + "{K@0,0} 0,100", {linePrompt, RTKWORD}, "", ""},
        {"an alignment line without a name", "O S - L {A} -", {linePrompt, RTNORM}, "", ""},
        {"a keyword for the curve", each, {curvePrompt, RTKWORD}, "", ""},
        {"a keyword for the point", each + line, {pointPrompt, RTKWORD}, "", ""},
        {"an error for the point", each + line, {pointPrompt, RTERROR, {50, 0}}, "", ""},
        {"a keyword instead of a polyline", "P - L " + line + "-", {pickPrompt, RTKWORD}, "", ""},
        {"a polyline without a name", "P - L {P@400,25} - " + line + "-", {pickPrompt, RTNORM},
         "选择集中对象：1/", "P 400,20<0"},
        {"a keyword ends the turning over", "O S - L {A} - " + line, {flipPrompt, RTKWORD}, "", "A 10,20<0"},
    });
}

TEST(Prompts, WhatIsErasedMeanwhileIsLeftOut) {
    const auto gone = [](const char* after, char what) { return Staged{.prompt = after, .erased = what}; };
    expectOutcomes({
        {"one of each", "O S - L {A} {T} - " + line + "-", gone(linePrompt, 'A'), "", "A gone, T 200,40<0"},
        {"one of the whole", "O W - L {A} {T} " + base + line + "9,9 -", gone(linePrompt, 'A'), "",
         "A gone, T 70,100<120"},
        {"the selected member of a group leaves it", "G - L {A} " + base + line + "-", gone(linePrompt, 'A'), "",
         "A gone"},
        {"another member", "G - L {A} " + base + line + "-", gone(linePrompt, 'T'), "", "A -80,90<0, T gone"},
        {"before it is turned over", "O S - L {A} {T} - " + line + "9,9 -", gone(flipPrompt, 'A'), "",
         "A gone, T 200,-40<180"},
        {"the base line: turned over is about the origin", "O W - L {A} " + base + line + "9,9 -",
         gone(pivotPrompt, 'K'), "", "A -10,-20<270, K gone"},
        {"a base line as it is picked", "O W - L {A} - {K@0,0} {P@400,25} 0,100 " + line + "-",
         gone(basePrompt, 'K'), "", "A -80,90<0, K gone"},
        {"the alignment line as it is picked", "O S - L {A} - " + line, gone(linePrompt, 'H'), "", "H gone"},
        {"the curve as the point is picked", "O S - P {A} - {H@50,0} 50,0 -", gone(pointPrompt, 'H'),
         "/请选择对象上的对齐点!", "H gone"},
        {"a polyline as it is picked", "P - L {P@400,25} {R@600,25} - " + line + "-", gone(pickPrompt, 'P'),
         "选择集中对象：1/", "P gone, R 600,20<0"},
        {"a picked polyline keeps those behind it", "P - L {R@600,25} {P@400,25} {Q@500,25} - " + line + "-",
         gone(linePrompt, 'P'), "选择集中对象：1/选择集中对象：2/选择集中对象：3/", "P gone, R 600,20<0"},
    });
}

TEST(Prompts, SetsThatHoldNothing) {
    const struct {
        const char* name;
        std::string inputs;
        std::optional<int> setLength, unnamed;
        const char* messages;
        const char* changes;
    } cases[] = {
        {"an empty set of groups", "G - L {A} -", 0, {}, "/没有选中任何对象，未进行对齐处理！", ""},
        {"an empty set of objects", "O S - L {A} - " + line, 0, {}, "/没有选中任何对象，未进行对齐处理！", ""},
        {"of the whole", "O W - L {A} " + base + line, 0, {}, "/没有选中任何对象，未进行对齐处理！", ""},
        {"a member without a name, each", "O S - L {A} {T} - " + line + "9,9 -", {}, 0, "", "T 200,-40<180"},
        {"a member without a name, whole", "O W - L {A} {T} " + base + line + "-", {}, 1, "", "A -80,90<0"},
        {"a member without a name, groups", "G - L {A} {C} " + base + line + "-", {}, 1, "",
         "A -80,90<0, T -60,-100<300"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.name);
        CommandRun run;
        Messages messages{run.editor.session};
        stage.setLength = each.setLength;
        stage.unnamed = each.unnamed;
        EXPECT_TRUE(run.script("KV_ObjectAlign " + each.inputs));
        stage = {};
        EXPECT_EQ(messages.all, each.messages);
        EXPECT_EQ(run.changes(), each.changes);
        expectInOrder(run.editor);
    }
}

TEST(Prompts, OnlyTheSecondPointHasARubberBand) {
    std::vector<std::string> prompts;
    stage.answered = [&](const Question& question) {
        if (question.base && question.base[0] == 7 && question.base[1] == 0)
            prompts.push_back(question.prompt);
        else if (question.base)
            prompts.push_back("from elsewhere: " + question.prompt);
    };
    CommandRun run;
    EXPECT_TRUE(run.script("KV_ObjectAlign O W - P {A} - - 7,0 7,9 0,100 {H@50,0} 50,0 9,9 -"));
    stage = {};
    EXPECT_EQ(prompts, std::vector<std::string>{"请选择第二个对齐点："});
}

TEST(Prompts, PickedPolylinesAreShownAsSelected) {
    CommandRun run;
    EXPECT_TRUE(run.script("KV_ObjectAlign P - L {P@400,25} {A@0,0} {P@410,30} {Q@500,25} - {H@50,0} -"));
    EXPECT_EQ(stage.highlighted, (std::vector{1, 1, 2})) << "a set holds a polyline once";
    stage = {};
}
} // namespace
} // namespace qx::tests
