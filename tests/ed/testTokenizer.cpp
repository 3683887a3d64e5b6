#include "ed/ScriptSource.h"
#include "ed/Tokenizer.h"

#include <gtest/gtest.h>

namespace {
using qx::ed::Input;

// Each answer in angle brackets with a mark for its kind, so that a table line shows a whole script.
std::string answersOf(qx::ed::Tokenizer tokens) {
    std::string result;
    for (Input input = tokens.next(); input.kind != Input::Kind::end; input = tokens.next()) {
        if (!result.empty()) result += ' ';
        switch (input.kind) {
        case Input::Kind::text:
            result += (input.quoted ? "q<" : "<") + input.text + '>';
            break;
        case Input::Kind::unfinished:
            result += (input.quoted ? "uq<" : "u<") + input.text + '>';
            break;
        case Input::Kind::enter:
            result += "enter";
            break;
        case Input::Kind::cancel:
            result += "cancel";
            break;
        case Input::Kind::end:
            break;
        }
    }
    return result;
}

struct TokenCase {
    const char* name;
    const char* text;
    const char* answers;
};
const TokenCase tokenCases[] = {
    {"nothing", "", ""},
    {"line ends and spaces are Enter", "L 0\nALL\n", "<L> <0> <ALL>"},
    {"two spaces are an answer and Enter", "L  0\n", "<L> enter <0>"},
    {"a blank line is Enter", "ALL\n\n100,50\n", "<ALL> enter <100,50>"},
    {"a blank at the line's end is Enter too", "ALL \n1\n", "<ALL> enter <1>"},
    {"CRLF is one line end", "ALL\r\n\r\n1,2\r\n", "<ALL> enter <1,2>"},
    {"a form is one answer", "(handent \"2F\")\n\n", "<(handent \"2F\")> enter"},
    {"nested form, and the next answer behind it", "(list (handent \"2F\") (list 1 2 0)) X\n",
     "<(list (handent \"2F\") (list 1 2 0))> <X>"},
    {"form over two lines", "(list\n1 2)\nX\n", "<(list 1 2)> <X>"},
    {"parenthesis in a string", "(f \"a)b\")\n", "<(f \"a)b\")>"},
    {"form that never closes", "(list 1\nX\n", "u<(list 1 X >"},
    {"comment lines", "; one\nL\n;two\n\n; three", "<L> enter"},
    {"a semicolon inside a line is text", "a;b\nL ;x\n", "<a;b> <L> <;x>"},
    {"cancel takes its line end along", "L\n^C\n^c^CU\n", "<L> cancel cancel cancel <U>"},
    {"control character needs nothing behind it", "\3ALL\3\n", "cancel <ALL> cancel enter"},
    {"quoted names hold blanks", "OPEN \"a b.dxf\"\nU\n", "<OPEN> q<a b.dxf> <U>"},
    {"an empty quoted name is no Enter", "\"\"\n", "q<>"},
    {"a quote that never closes ends with its line", "\"a b\nU\n", "q<a b> <U>"},
    {"unfinished last answer", "ALL\n10,", "<ALL> u<10,>"},
    {"Chinese", "对象 组\n", "<对象> <组>"},
    {"byte order mark", "\xEF\xBB\xBFL\n", "<L>"},
};

TEST(Tokenizer, cutsTextIntoAnswers) {
    for (const TokenCase& each : tokenCases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(answersOf(qx::ed::Tokenizer{each.text}), each.answers);
    }
}

TEST(Tokenizer, countsLines) {
    qx::ed::Tokenizer tokens{"; comment\r\nA\r\n\r\n(f\n1)\nB C\n"};
    std::string lines;
    for (Input input = tokens.next(); input.kind != Input::Kind::end; input = tokens.next())
        lines += std::to_string(input.line) + ' ';
    EXPECT_EQ(lines, "2 3 4 6 6 ");
}

TEST(Tokenizer, joinsWhatIsAppended) {
    qx::ed::Tokenizer tokens{"A "};
    EXPECT_EQ(tokens.next().text, "A");
    EXPECT_TRUE(tokens.isAtEnd());
    tokens.append("B\n");
    tokens.append("C\n");
    EXPECT_EQ(tokens.next().text, "B");
    EXPECT_EQ(tokens.next().text, "C");
}

TEST(ScriptSource, endOfTheScriptEndsItsLastLine) {
    qx::ed::ScriptSource script{"QUIT", "a.scr"};
    EXPECT_EQ(script.next(qx::ed::Ask::command).kind, Input::Kind::text);
    EXPECT_EQ(script.next(qx::ed::Ask::command).kind, Input::Kind::end);
}
} // namespace
