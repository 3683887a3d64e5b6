#include "ed/Tokenizer.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {
using qx::ed::Input;

// Each answer in angle brackets with a mark for its kind, so that a table line shows a whole script.
std::string answersOf(qx::ed::Tokenizer tokens) {
    std::string result;
    for (Input input = tokens.next(); input.kind != Input::Kind::end; input = tokens.next()) {
        const bool isText = input.kind == Input::Kind::text || input.kind == Input::Kind::unfinished;
        result += result.empty() ? "" : " ";
        result += input.kind == Input::Kind::unfinished ? "u" : "";
        result += input.quoted ? "q" : "";
        result += isText ? '<' + input.text + '>' : input.kind == Input::Kind::enter ? "enter" : "cancel";
    }
    return result;
}

struct TokenCase {
    const char* name;
    const char* text;
    const char* answers;
};
const TokenCase tokenCases[] = {
    {"two spaces are an answer and Enter", "L  0\n", "<L> enter <0>"},
    {"a blank line is Enter", "ALL\n\n100,50\n", "<ALL> enter <100,50>"},
    {"a blank at the line's end is Enter too", "ALL \n1\n", "<ALL> enter <1>"},
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
    {"byte order mark", "\xEF\xBB\xBFL\n", "<L>"},
};

TEST(Tokenizer, cutsTextIntoAnswers) {
    for (const TokenCase& each : tokenCases) {
        SCOPED_TRACE(each.name);
        EXPECT_EQ(answersOf(qx::ed::Tokenizer{each.text}), each.answers);
    }
}

// What took time by its square would take hours.
TEST(Tokenizer, takesTimeByTheLengthOfTheText) {
    constexpr std::size_t length = std::size_t{4} << 20;
    const auto repeated = [](const std::string& part) {
        std::string text;
        while (text.size() < length) text += part;
        return text;
    };
    const struct {
        const char* part;
        std::size_t answers;
    } cases[] = {
        {"x", 1},
        {" ", length},
        {"(", 1},
        {"\"", length / 2},
        {"(x", 1},
        {"\n", length},
        {"\r\n", length / 2},
        {";c\n", 0},
        {";", 0},
        {"^C", length / 2},
        {"\3", length},
        {"a ", length / 2},
        {"()\n", length / 3 + 1},
        {"\xEF\xBB\xBF", 1},
        {"\"a\n", length / 3 + 1},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.part);
        const auto begin = std::chrono::steady_clock::now();
        qx::ed::Tokenizer tokens{repeated(each.part)};
        std::size_t answers = 0;
        while (tokens.next().kind != Input::Kind::end) ++answers;
        EXPECT_EQ(answers, each.answers);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds{20});
    }
}

TEST(Tokenizer, countsLines) {
    qx::ed::Tokenizer tokens{"; comment\r\nA\r\n\r\n(f\n1)\nB C\n"};
    std::string lines;
    for (Input input = tokens.next(); input.kind != Input::Kind::end; input = tokens.next())
        lines += std::to_string(input.line) + ' ';
    EXPECT_EQ(lines, "2 3 4 6 6 ");
}

TEST(Tokenizer, answersComeBackFromTheirScript) {
    const Input answers[] = {
        {.kind = Input::Kind::text, .text = "L"},
        {.kind = Input::Kind::enter, .text = {}},
        {.kind = Input::Kind::text, .text = "two words.dxf", .quoted = true},
        {.kind = Input::Kind::text, .text = "", .quoted = true},
        {.kind = Input::Kind::text, .text = "(list (handent \"2F\") (list 1 2 0))"},
        {.kind = Input::Kind::cancel, .text = {}},
        {.kind = Input::Kind::enter, .text = {}},
        {.kind = Input::Kind::text, .text = "; no comment", .quoted = true},
        {.kind = Input::Kind::text, .text = "a;b"},
        {.kind = Input::Kind::text, .text = "^C", .quoted = true},
        {.kind = Input::Kind::cancel, .text = {}},
        {.kind = Input::Kind::cancel, .text = {}},
        {.kind = Input::Kind::text, .text = "中文"},
    };
    std::string script;
    for (const Input& each : answers) script += qx::ed::scriptOf(each);
    qx::ed::Tokenizer tokens{script};
    for (const Input& each : answers) {
        const Input again = tokens.next();
        EXPECT_EQ(again.text, each.text) << script;
        EXPECT_EQ(again.kind, each.kind) << script;
    }
    EXPECT_EQ(tokens.next().kind, Input::Kind::end);
    EXPECT_EQ(qx::ed::scriptOf({.kind = Input::Kind::text, .text = "two words"}), "\"two words\"\n");
}

} // namespace
