#include "aced.h"
#include "dbmain.h"
#include "drawings/DrawingText.h"
#include "ed/Editor.h"
#include "ed/forms.h"

#include <gtest/gtest.h>

namespace {
using namespace qx;
using tests::Editor;

// About 1000 x 750 units, so that a pixel is about one unit and a pick reaches about three.
const drawings::DrawingText scene{
    .entities = {"LINE|5 A1|10 0|20 0|11 1000|21 0", "LINE|5 A2|10 0|20 750|11 100|21 750",
                 "CIRCLE|5 A3|10 500|20 400|40 100", "LINE|5 A4|8 LOCKED|10 700|20 100|11 800|21 100",
                 "LINE|5 A5|8 OFF|10 700|20 200|11 800|21 200", "HATCH|5 A6|10 0|20 0",
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
        std::snprintf(text, sizeof text, "%llX at %g,%g,%g",
                      static_cast<unsigned long long>(id.handle().value()), point[0], point[1], point[2]);
        return text;
    }
    EXPECT_TRUE(name[0] == -7 && name[1] == -7 && point[0] == -1 && point[1] == -1 && point[2] == -1);
    resbuf number{};
    acedGetVar(L"ERRNO", &number);
    std::snprintf(text, sizeof text, "%d, ERRNO %d", code, number.resval.rint);
    return text;
}

struct PickCase {
    const char* name;
    const char* answers;
    const char* result;
    const char* failure; ///< after the line; empty: none
};
const PickCase pickCases[] = {
    {"on the line", "500,0\n", "A1 at 500,0,0", ""},
    {"where the pick was, not on the object", "500,2.5,7\n", "A1 at 500,2.5,7", ""},
    {"without its group", "50,750\n", "A2 at 50,750,0", ""},
    {"an attribute is picked as its reference", "305,310\n", "A7 at 305,310,0", ""},
    {"on a locked layer", "750,100\n", "A4 at 750,100,0", ""},
    {"a miss is not asked again", "500,200\n500,0\n", "-5001, ERRNO 7", "unknown command \"500,0\""},
    {"hidden objects are missed", "750,200\n", "-5001, ERRNO 7", ""},
    {"Enter", "\n", "-5001, ERRNO 52", ""},
    {"cancel", "^C", "-5002, ERRNO 0", ""},
    {"keyword", "u\n", "-5005, ERRNO 0", ""},
    {"named, picked elsewhere", "(list (handent \"A3\") (list 1 2 3))\n", "A3 at 1,2,3", ""},
    {"named, in odd spelling", "( LIST(Handent \"a4\")(list -1.5  2e1 ) )\n", "A4 at -1.5,20,0", ""},
    {"named without a point", "(handent \"A1\")\n", "-5002, ERRNO 0",
     "(handent \"A1\") does not say where the object is picked: (list (handent \"A1\") (list x y z))"},
    {"unknown handle", "(list (handent \"FF\") (list 1 2))\n", "-5002, ERRNO 0",
     "no object has the handle in (list (handent \"FF\") (list 1 2))"},
    {"on a layer that is off", "(list (handent \"A5\") (list 1 2))\n", "-5002, ERRNO 0",
     "the object of (list (handent \"A5\") (list 1 2)) can't be selected"},
    {"of a class that is only kept", "(list (handent \"A6\") (list 1 2))\n", "-5002, ERRNO 0",
     "the object of (list (handent \"A6\") (list 1 2)) can't be selected"},
    {"part of another object", "(list (handent \"A8\") (list 1 2))\n", "-5002, ERRNO 0",
     "the object of (list (handent \"A8\") (list 1 2)) can't be selected"},
    {"something else", "ALL\n", "-5002, ERRNO 0", "\"ALL\" picks nothing"},
};

TEST(EntityPick, answers) {
    for (const PickCase& each : pickCases) {
        SCOPED_TRACE(each.name);
        Editor editor{scene.bytes()};
        std::string result;
        const auto run = editor.runBody(
            [&] {
                acedInitGet(1, L"Undo");
                result = entityAnswer(L"\n选择基准线: ");
            },
            each.answers);
        EXPECT_EQ(result, each.result) << run.transcript;
        EXPECT_EQ(run.failure.substr(std::min<std::size_t>(run.failure.size(), 12)), each.failure);
        EXPECT_NE(run.transcript.find("命令: BODY\n选择基准线: "), std::string::npos) << run.transcript;
        expectInOrder(editor);
    }
}

TEST(EntityPick, refusesWhatIsErased) {
    Editor editor{scene.bytes()};
    editor.run("ERASE\n(handent \"A1\")\n\n");
    std::string result;
    const auto run =
        editor.runBody([&] { result = entityAnswer(nullptr); }, "(list (handent \"A1\") (list 0 0))\n");
    EXPECT_EQ(result, "-5002, ERRNO 0");
    EXPECT_NE(run.failure.find("is erased"), std::string::npos) << run.failure;
    EXPECT_NE(run.transcript.find("选择对象: "), std::string::npos) << "the host's own prompt";
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
        std::string result;
        editor.runBody([&] { result = entityAnswer(nullptr); }, answers);
        EXPECT_EQ(result, expected) << answers;
    }
}

TEST(EntityPick, reachesAsFarAsPickboxSays) {
    const std::pair<int, const char*> cases[] = {{3, "-5001, ERRNO 7"}, {20, "A1 at 500,10,0"}};
    for (const auto& [pickbox, expected] : cases) {
        Editor editor{scene.bytes()};
        editor.session.variables().force("PICKBOX", pickbox);
        std::string result;
        editor.runBody([&] { result = entityAnswer(nullptr); }, "500,10\n");
        EXPECT_EQ(result, expected) << pickbox;
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
    for (const char* text : {"(handent \"\")", "(handent 2F)", "(handent \"2F\"", "(handent \"2G\")",
                             "handent \"2F\"", "(handent \"2F\") x", "(handent \"11112222333344445\")"})
        EXPECT_EQ(ed::parseHandent(text), std::nullopt) << text;
    for (const char* text :
         {"(list (handent \"2F\"))", "(list (handent \"2F\") (list 1))",
          "(list (handent \"2F\") (list 1 2 3 4))", "(list (handent \"2F\") (list 1 nan))",
          "(list (handent \"2F\") (list 1 2)", "(list)", "(list (handent \"2F\") (list 1 2)) x",
          "(list (handent \"2F\") 1 2)", "(handent \"2F\")", ""})
        EXPECT_EQ(ed::parsePick(text), std::nullopt) << text;
}
} // namespace
