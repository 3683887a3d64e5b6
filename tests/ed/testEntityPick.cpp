#include "aced.h"
#include "dbmain.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"
#include "ed/forms.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {
using namespace qx;
using tests::Editor;

// About 1000 x 750 units, so that a pixel is about one unit and a pick reaches about three.
const drawings::DrawingText scene{
    .entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0", "LINE|5 A2|10 0|20 750|11 100|21 750",
                 "CIRCLE|5 A3|10 500|20 400|40 100", "LINE|5 A4|8 LOCKED|10 700|20 100|11 800|21 100",
                 "LINE|5 A5|8 OFF|10 700|20 200|11 800|21 200", "WIPEOUT|5 A6|10 0|20 0",
                 "INSERT|5 A7|66 1|2 B|10 300|20 300", "ATTRIB|5 A8|10 300|20 300|40 20|1 H|2 T|70 0",
                 "SEQEND"},
    .blocks = {{"B", {"LINE|10 0|20 0|11 0|21 100"}}},
    .groups = {{"PAIR", {"A2", "A3"}}}};

// What acedEntSel gives and leaves: the result, and on RTNORM the handle and the point; else ERRNO and, after
// an error, whether the outputs are still what they were.
std::string entityAnswer(const ACHAR* prompt) {
    ads_name name{-7, -7};
    ads_point point{-1, -1, -1};
    const int code = acedEntSel(prompt, name, point);
    char text[120];
    if (code == RTNORM) {
        AcDbObjectId id;
        EXPECT_EQ(acdbGetObjectId(id, name), Acad::eOk);
        std::snprintf(text, sizeof text, " at %g,%g,%g", point[0], point[1], point[2]);
        return drawings::hex(id.handle().value()) + text;
    }
    EXPECT_TRUE(name[0] == -7 && name[1] == -7 && point[0] == -1 && point[1] == -1 && point[2] == -1);
    resbuf number{};
    acedGetVar(L"ERRNO", &number);
    return std::to_string(code) + ", ERRNO " + std::to_string(number.resval.rint);
}

/// What a command that asks for an entity was given for these answers.
std::string picked(Editor& editor, const char* answers) {
    std::string result;
    editor.runBody([&] { result = entityAnswer(nullptr); }, answers);
    return result;
}

const char* const refused = "-5002, ERRNO 0";

struct PickCase {
    const char* answers;
    const char* result;
    std::string failure = ""; ///< after the line, % for the answer; empty: none
};
const PickCase pickCases[] = {
    {"500,0\n", "A1 at 500,0,0"},
    {"500,2.5,7\n", "A1 at 500,2.5,7"},
    {"50,750\n", "A2 at 50,750,0"},
    {"305,310\n", "A7 at 305,310,0"},
    {"750,100\n", "A4 at 750,100,0"},
    {"500,200\n500,0\n", "-5001, ERRNO 7", "unknown command \"500,0\""},
    {"750,200\n", "-5001, ERRNO 7"},
    {"\n", "-5001, ERRNO 52"},
    {"^C", "-5002, ERRNO 0"},
    {"u\n", "-5005, ERRNO 0"},
    {"(list (handent \"A3\") (list 1 2 3))\n", "A3 at 1,2,3"},
    {"( LIST(Handent \"a4\")(list -1.5  2e1 ) )\n", "A4 at -1.5,20,0"},
    {"(list NIL (list 500 0))\n@\n", "-5001, ERRNO 7", "unknown command \"@\""},
    {"(list null (list 500 0))\n", refused, "\"%\" picks nothing"},
    {"(handent \"A1\")\n", refused, "% does not say where the object is picked: (list % (list x y z))"},
    {"(list (handent \"FF\") (list 1 2))\n", refused, "no object has the handle in %"},
    {"(list (handent \"A5\") (list 1 2))\n", refused, "the object of % can't be selected"},
    {"(list (handent \"A6\") (list 1 2))\n", refused, "the object of % can't be selected"},
    {"(list (handent \"A8\") (list 1 2))\n", refused, "the object of % can't be selected"},
    {"ALL\n", refused, "\"ALL\" picks nothing"},
};

TEST(EntityPick, answers) {
    for (const PickCase& each : pickCases) {
        SCOPED_TRACE(each.answers);
        Editor editor{scene.bytes()};
        std::string result, failure = each.failure;
        const std::string answer{each.answers, std::strcspn(each.answers, "\n")};
        for (auto at = failure.find('%'); at != failure.npos; at = failure.find('%'))
            failure.replace(at, 1, answer);
        const auto body = [&] {
            acedInitGet(1, L"Undo");
            result = entityAnswer(L"\n选择基准线: ");
        };
        const auto run = editor.runBody(body, each.answers);
        EXPECT_EQ(result, each.result) << run.transcript;
        EXPECT_EQ(run.failure.substr(std::min<std::size_t>(run.failure.size(), 12)), failure);
        EXPECT_NE(run.transcript.find("命令: BODY\n选择基准线: "), std::string::npos) << run.transcript;
        expectInOrder(editor);
    }
}

TEST(EntityPick, refusesWhatIsErased) {
    Editor editor{scene.bytes()};
    editor.run("ERASE\n(handent \"A1\")\n\n");
    EXPECT_EQ(picked(editor, "(list (handent \"A1\") (list 0 0))\n"), refused);
    EXPECT_NE(editor.session.line().failure().find("is erased"), std::string::npos);
    EXPECT_NE(editor.transcript.find("选择对象: "), std::string::npos) << "the host's own prompt";
}

// A person is asked again; a keyword counts for one question only.
TEST(EntityPick, asksAPersonAgain) {
    Editor editor{scene.bytes()};
    std::string results;
    editor.define([&] {
        acedInitGet(0, L"Undo");
        results = entityAnswer(L"一: ") + "; ";
        results += entityAnswer(L"二: ");
    });
    tests::Person person{"BODY\n(handent \"A1\")\nfoo\n500,200\nundo\n@0,-200\n", "input"};
    EXPECT_EQ(ed::CommandRunner{editor.session}.run(person), ed::RunEnd::sourceEnded);
    EXPECT_EQ(results, "-5001, ERRNO 7; A1 at 500,0,0");
    EXPECT_NE(editor.transcript.find("二: undo\n需要点"), std::string::npos) << editor.transcript;
}

// The system lies at (1000, 0) and is turned by a quarter: user (2, 300) is world (700, 2).
TEST(EntityPick, picksInTheUserSystem) {
    drawings::DrawingText turned = scene;
    turned.header = "|9 $UCSORG|10 1000|20 0|30 0|9 $UCSXDIR|10 0|20 1|30 0|9 $UCSYDIR|10 -1|20 0|30 0";
    const std::pair<const char*, const char*> cases[] = {
        {"2,300\n", "A1 at 2,300,0"},
        {"*700,2\n", "A1 at 2,300,0"},
        {"300,0\n", "-5001, ERRNO 7"},
        {"(list (handent \"A3\") (list 2 300))\n", "A3 at 2,300,0"},
    };
    for (const auto& [answers, expected] : cases) {
        Editor editor{turned.bytes()};
        EXPECT_EQ(picked(editor, answers), expected) << answers;
    }
}

TEST(EntityPick, reachesAsFarAsPickboxSays) {
    for (const int pickbox : {0, 3, 20}) {
        Editor editor{scene.bytes()};
        editor.session.variables().force("PICKBOX", pickbox);
        EXPECT_EQ(picked(editor, "500,10\n"), pickbox == 20 ? "A1 at 500,10,0" : "-5001, ERRNO 7");
        EXPECT_EQ(picked(editor, "500,0\n"), "A1 at 500,0,0") << pickbox;
    }
}

TEST(EntityPick, needsADrawing) {
    Editor editor{scene.bytes()};
    editor.session.setDrawing(nullptr);
    ads_name name{};
    ads_point point{};
    EXPECT_EQ(acedEntSel(L"", name, point), RTERROR);
}

TEST(Forms, areReadStrictly) {
    EXPECT_EQ(ed::parseHandent("(handent \"2F\")"), 0x2Fu);
    EXPECT_EQ(ed::parseHandent("( Handent  \"2f\" )"), 0x2Fu);
    for (const char* text : {R"((handent ""))", R"((handent 2F))", R"((handent "2F")", R"((handent "2G"))",
                             R"(handent "2F")", R"((handent "2F") x)", R"((handent "11112222333344445"))"})
        EXPECT_EQ(ed::parseHandent(text), std::nullopt) << text;
    for (const char* points :
         {")", "(list 1))", "(list 1 2 3 4))", "(list 1 nan))", "(list 1 2)", "(list 1 2)) x", "1 2)"})
        EXPECT_EQ(ed::parsePick(std::string{R"((list (handent "2F") )"} + points), std::nullopt) << points;
    for (const char* text : {"(list)", "(handent \"2F\")", ""})
        EXPECT_EQ(ed::parsePick(text), std::nullopt) << text;
}

TEST(Forms, selectionsMayBeLongAndMayAdd) {
    const auto told = [](std::string_view form) {
        const auto selection = ed::parseSelection(form);
        if (!selection) return std::string{"none"};
        std::string text = selection->adds ? "+" : "";
        for (const std::uint64_t each : selection->handles) text += drawings::hex(each) + ' ';
        return text;
    };
    EXPECT_EQ(told("(select)"), "");
    EXPECT_EQ(told("(select (handent \"2F\") (handent \"30\"))"), "2F 30 ");
    EXPECT_EQ(told("( SELECT Add (handent \"2F\") )"), "+2F ");
    for (const char* text : {"", "(select", "(select x)", "(select (handent))", "(select (handent \"2F\")) x",
                             "(selects)", "(select (handent \"2F\") add)"})
        EXPECT_EQ(told(text), "none") << text;
}

TEST(Forms, saysWhatIsSelectedBeforeACommand) {
    Editor editor{scene.bytes()};
    const auto isErased = [&](std::uint64_t handle) {
        return editor.drawing().find(handle)->has(db::Record::erased);
    };
    EXPECT_EQ(
        editor.run("(select (handent \"A1\"))\n(select add (handent \"A3\") (handent \"FFFF\"))\nERASE\n")
            .end,
        ed::RunEnd::sourceEnded);
    EXPECT_TRUE(isErased(0xA1) && isErased(0xA3));
    EXPECT_FALSE(isErased(0xA2));
}
} // namespace
