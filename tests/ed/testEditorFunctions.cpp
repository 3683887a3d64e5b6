#include "aced.h"
#include "acutads.h"
#include "dbmain.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"

#include <gtest/gtest.h>

namespace {
using namespace qx;
using tests::Editor;

const std::string scene =
    drawings::DrawingText{.entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0", "CIRCLE|5 A3|10 500|20 400|40 100",
                                       "LINE|5 A4|10 0|20 0|11 10|21 0"}}
        .bytes();

std::string text(const ads_point point) {
    char buffer[120];
    std::snprintf(buffer, sizeof buffer, "%g,%g,%g", point[0], point[1], point[2]);
    return buffer;
}

/// What came with the result code, and the code in front; a keyword instead.
std::string answered(int code, const std::string& value) {
    ACHAR buffer[133] = L"";
    acedGetInput(buffer);
    const std::wstring word = buffer;
    return std::to_string(code) + ' ' + (code == RTKWORD ? std::string{word.begin(), word.end()} : value);
}

std::string pointAnswer() {
    ads_point point{-1, -1, -1};
    const int code = acedGetPoint(nullptr, L"点: ", point);
    return answered(code, text(point));
}

std::string realAnswer() {
    ads_real value = -99;
    const int code = acedGetReal(L"数: ", &value);
    return answered(code, std::to_string(value).substr(0, 4));
}

std::string keywordAnswer() {
    ACHAR buffer[133] = L"?";
    const int code = acedGetKword(L"词: ", buffer);
    const std::wstring wide = buffer;
    return std::to_string(code) + ' ' + std::string{wide.begin(), wide.end()};
}

struct PromptCase {
    std::string (*ask)();
    int bits;
    const ACHAR* keywords;
    const char* answers;
    const char* result;
    std::string failure = ""; ///< after the line
};
const PromptCase promptCases[] = {
    {pointAnswer, 0, nullptr, "1,2,3\n", "5100 1,2,3"},
    {pointAnswer, 0, nullptr, "\n", "5000 -1,-1,-1"},
    {pointAnswer, 0, nullptr, "^C", "-5002 -1,-1,-1"},
    {pointAnswer, 0, L"Exit Undo", "u\n", "-5005 Undo"},
    {pointAnswer, 1, nullptr, "\n", "-5002 -1,-1,-1", "an answer is needed here"},
    {pointAnswer, 0, L"Exit", "foo\n", "-5002 -1,-1,-1", "\"foo\" is not a point"},
    {realAnswer, 0, nullptr, "-2.5\n", "5100 -2.5"},
    {realAnswer, 6, L"None", "n\n", "-5005 None"},
    {realAnswer, 2, nullptr, "0\n", "-5002 -99.", "the number is not allowed here"},
    {realAnswer, 4, nullptr, "-1\n", "-5002 -99.", "the number is not allowed here"},
    {realAnswer, 0, nullptr, "1x\n", "-5002 -99.", "\"1x\" is not a number"},
    {keywordAnswer, 0, L"O G", "g\n", "5100 G"},
    {keywordAnswer, 0, L"A B _Object Group", "b\n", "5100 Group"},
    {keywordAnswer, 0, L"O G", "\n", "5000 ?"},
    {keywordAnswer, 0, L"O G", "p\n", "-5002 ?", "\"p\" is not one of the keywords"},
};

TEST(Prompts, resultsAndOutputs) {
    for (const PromptCase& each : promptCases) {
        Editor editor{scene};
        std::string result;
        const auto body = [&] {
            acedInitGet(each.bits, each.keywords);
            result = each.ask();
        };
        const auto run = editor.runBody(body, each.answers);
        EXPECT_EQ(result, each.result) << each.answers;
        EXPECT_EQ(run.failure, each.failure.empty() ? "" : "test.scr:2: " + each.failure);
        expectInOrder(editor);
    }
}

TEST(Prompts, pointsFollowRulesBaseAndUserSystem) {
    const struct {
        const char* header;
        int bits; ///< for the first point only
        const char* answers;
        const char* points;
    } cases[] = {
        {"", 1, "e\n\n", "-5005 Exit; 5000 -1,-1,-1"},
        {"", 0, "10,20,1\n@1,2\n", "5100 10,20,1; 5100 11,22,1"},
        {"|9 $UCSORG|10 100|20 0|30 0", 0, "1,2\n*1,2\n", "5100 1,2,0; 5100 -99,2,0"},
    };
    for (const auto& each : cases) {
        Editor editor{drawings::DrawingText{.header = each.header}.bytes()};
        std::string points;
        const auto body = [&] {
            acedInitGet(each.bits, L"Exit");
            points = pointAnswer() + "; ";
            points += pointAnswer();
        };
        editor.runBody(body, each.answers);
        EXPECT_EQ(points, each.points);
    }
}

// The base is in user coordinates like the result, whatever the last point was; the second point counts from
// the first.
TEST(Prompts, relativePointsStartAtTheBaseThatIsGiven) {
    const char* turned = "|9 $UCSORG|10 50|20 0|30 0|9 $UCSXDIR|10 0|20 1|30 0|9 $UCSYDIR|10 -1|20 0|30 0";
    for (const char* header : {"", turned}) {
        Editor editor{drawings::DrawingText{.header = header}.bytes()};
        ads_point first{}, second{};
        const ads_point base{100, 100, 7};
        const auto body = [&] {
            acedGetPoint(nullptr, L"从: ", first);
            acedGetPoint(base, L"到: ", first);
            acedGetPoint(nullptr, L"再: ", second);
        };
        editor.runBody(body, "1,1\n@5,-5\n@1,1\n");
        EXPECT_EQ(text(first) + ' ' + text(second), "105,95,7 106,96,7") << header;
    }
}

TEST(Prompts, aPersonIsAskedAgain) {
    Editor editor{scene};
    editor.define([&] {
        acedInitGet(7, nullptr);
        EXPECT_EQ(realAnswer(), "5100 2.00");
    });
    tests::Person person{"FOO\nBODY\n\nx\n0\n-1\n2\n", "input"};
    EXPECT_EQ(ed::CommandRunner{editor.session}.run(person), ed::RunEnd::sourceEnded);
    EXPECT_EQ(editor.transcript,
              "命令: FOO\n未知命令“FOO”。\n命令: BODY\n数: \n需要数值。\n数: x\n需要数值。\n"
              "数: 0\n值必须为正且非零。\n数: -1\n值必须为正且非零。\n数: 2\n命令: ");
}

struct Names {
    ads_name entity{}, other{}, set{};
    explicit Names(Editor& editor) {
        acdbGetAdsName(entity, AcDbObjectId{editor.drawing().find(0xA1)});
        acdbGetAdsName(other, AcDbObjectId{editor.drawing().find(0xA3)});
        acedSSAdd(nullptr, nullptr, set);
    }
};

Adesk::Int32 lengthOf(const ads_name set) {
    Adesk::Int32 length = -1;
    return acedSSLength(set, &length) == RTNORM ? length : -1;
}

TEST(SelectionSets, changeByOneEntity) {
    Editor editor{scene};
    editor.runBody([&] {
        Names names{editor};
        EXPECT_EQ(lengthOf(names.set), 0);
        ads_name result{}, member{};
        for (int i = 0; i < 2; ++i) EXPECT_EQ(acedSSAdd(names.entity, names.set, result), RTNORM); // is once
        EXPECT_TRUE(result[0] == names.set[0] && result[1] == names.set[1]);
        EXPECT_EQ(acedSSAdd(names.other, names.set, result), RTNORM);
        EXPECT_EQ(lengthOf(names.set), 2);
        EXPECT_EQ(acedSSMemb(names.other, names.set), RTNORM);
        EXPECT_EQ(acedSSDel(names.entity, names.set), RTNORM);
        EXPECT_EQ(acedSSDel(names.entity, names.set), RTERROR);
        EXPECT_EQ(acedSSMemb(names.entity, names.set), RTERROR);
        EXPECT_EQ(acedSSName(names.set, 0, member), RTNORM);
        EXPECT_EQ(member[0], names.other[0]);
        EXPECT_EQ(acedSSName(names.set, 1, member), RTERROR);
        EXPECT_EQ(acedSSName(names.set, -1, member), RTERROR);
    });
    EXPECT_EQ(editor.session.reapedSets, 1u);
}

// Sets share the marks in the records; each must keep its own members apart.
TEST(SelectionSets, doNotDisturbEachOther) {
    Editor editor{scene};
    editor.runBody([&] {
        Names names{editor};
        ads_name second{};
        acedSSAdd(names.entity, nullptr, second);
        acedSSAdd(names.entity, names.set, names.set);
        acedSSAdd(names.other, second, second);
        acedSSAdd(names.entity, names.set, names.set);
        acedSSAdd(names.entity, second, second);
        EXPECT_EQ(acedSSMemb(names.other, names.set), RTERROR);
        EXPECT_EQ(lengthOf(names.set), 1);
        EXPECT_EQ(lengthOf(second), 2);
    });
}

TEST(SelectionSets, namesThatNameNothing) {
    Editor editor{scene};
    editor.runBody([&] {
        Names names{editor};
        ads_name freed{}, garbage{0x1234, 0x5678}, nil{}, out{7, 7};
        acedSSAdd(nullptr, nullptr, freed);
        EXPECT_EQ(acedSSFree(freed), RTNORM);
        const Adesk::Int64* const bad[] = {freed, garbage, nil, names.entity, nullptr};
        for (const Adesk::Int64* name : bad) {
            EXPECT_EQ(lengthOf(name), -1);
            EXPECT_EQ(acedSSName(name, 0, out), RTERROR);
            EXPECT_EQ(acedSSFree(name), RTERROR);
            EXPECT_TRUE(!name || acedSSAdd(names.entity, name, out) == RTERROR);
        }
        AcDbObjectId id;
        for (const Adesk::Int64* name : {+names.set, +freed, +garbage, +nil}) {
            EXPECT_EQ(acdbGetObjectId(id, name), Acad::eInvalidAdsName);
            EXPECT_EQ(acedSSAdd(name, nullptr, out), RTERROR);
        }
        EXPECT_TRUE(id.isNull());
        EXPECT_EQ(out[0], 7);
        EXPECT_EQ(acdbGetAdsName(out, AcDbObjectId::kNull), Acad::eNullObjectId);
        EXPECT_EQ(acdbGetObjectId(id, names.entity), Acad::eOk);
        EXPECT_EQ(id.handle().value(), 0xA1u);
    });
}

TEST(SelectionSets, entityNamesOfAClosedDrawingAreStale) {
    Editor editor{scene};
    const Names names{editor};
    auto other = db::Drawing::fromBytes(scene, "other.dxf");
    editor.session.setDrawing(std::move(*other));
    AcDbObjectId id;
    EXPECT_EQ(acdbGetObjectId(id, names.entity), Acad::eInvalidAdsName);
    EXPECT_EQ(acedSSFree(names.set), RTERROR);
}

TEST(SelectionSets, areLimited) {
    Editor editor{scene};
    const auto body = [] {
        int made = 0;
        ads_name last{}, more{};
        while (acedSSAdd(nullptr, nullptr, last) == RTNORM) ++made;
        EXPECT_EQ(made, 128);
        resbuf value{};
        acedGetVar(L"errno", &value);
        EXPECT_EQ(value.resval.rint, 3);
        EXPECT_EQ(acedSSGet(nullptr, nullptr, nullptr, nullptr, more), RTERROR);
        acedSSFree(last);
        EXPECT_EQ(acedSSAdd(nullptr, nullptr, more), RTNORM);
    };
    editor.runBody(body, "ALL\n\n");
    EXPECT_EQ(editor.session.reapedSets, 128u);
    EXPECT_EQ(editor.session.sets().count(), 0u);
}

TEST(VariableFunctions, readAndWrite) {
    Editor editor{scene};
    resbuf value{};
    EXPECT_EQ(acedGetVar(L"PickBox", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    EXPECT_EQ(value.resval.rint, 3);
    value.resval.rint = 12;
    EXPECT_EQ(acedSetVar(L"PICKBOX", &value), RTNORM);
    EXPECT_EQ(editor.session.variables().number("PICKBOX"), 12);
    value.resval.rint = -1;
    EXPECT_EQ(acedSetVar(L"PICKBOX", &value), RTERROR);
    EXPECT_EQ(acedGetVar(L"FOO", &value), RTERROR);
    editor.runBody([] {
        resbuf now{};
        acedGetVar(L"CMDNAMES", &now);
        EXPECT_STREQ(now.resval.rstring, L"BODY");
        acutDelString(now.resval.rstring);
        acedGetVar(L"CMDACTIVE", &now);
        EXPECT_EQ(now.resval.rint, 1);
    });
    EXPECT_EQ(editor.session.variables().number("CMDACTIVE"), 0);
}
} // namespace
