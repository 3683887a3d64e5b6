#include "dxf/Tag.h"

#include <gtest/gtest.h>

#include <string>

using namespace qx::dxf;
using namespace std::string_literals;

namespace {

/// "code=value" per tag, then how the walk ended and at which byte.
std::string walked(const std::string& bytes) {
    TagCursor cursor{bytes.data(), bytes.data() + bytes.size()};
    std::string text;
    const char* next = bytes.data();
    for (Tag tag; cursor.next(tag); next = tag.end) {
        EXPECT_EQ(tag.begin, next) << "tags leave no gap";
        text += std::to_string(tag.code) + "=" + std::string{tag.value} + ";";
    }
    if (cursor.fault() == TagFault::none) return text;
    const bool isCode = cursor.fault() == TagFault::codeIsNoNumber;
    return text + (isCode ? " no code at " : " no value at ") +
           std::to_string(cursor.position() - bytes.data());
}

TEST(TagCursor, walksPairsOfLines) {
    const struct {
        const char* name;
        std::string bytes;
        const char* tags;
    } cases[] = {
        {"nothing", "", ""},
        {"line feeds", "0\nLINE\n 10\n1.5\n", "0=LINE;10=1.5;"},
        {"carriage returns", "  0\r\nLINE\r\n 10\r\n1.5\r\n", "0=LINE;10=1.5;"},
        {"no last line end", "0\nEOF", "0=EOF;"},
        {"carriage return but no line feed at the end", "0\nEOF\r", "0=EOF;"},
        {"codes padded on both sides", "   0  \nA\n\t62\t\r\n7\n", "0=A;62=7;"},
        {"blanks of a value stay", "1\n  a b \n", "1=  a b ;"},
        {"empty values", "1\n\n2\r\n\r\n", "1=;2=;"},
        {"a carriage return inside a value stays", "1\na\rb\n", "1=a\rb;"},
        {"zero bytes are bytes", "1\na\0b\n"s, nullptr},
        {"negative codes", "-4\n<AND\n", "-4=<AND;"},
        {"the value is missing", "0\nA\n 10\n", "0=A; no value at 4"},
        {"a code that is a word", "0\nA\nten\n1\n", "0=A; no code at 4"},
        {"a code with a point", "1.0\nA\n", " no code at 0"},
        {"an empty code line", "0\nA\n\n1\n", "0=A; no code at 4"},
        {"only a sign", "-\nA\n", " no code at 0"},
        {"a code too long to be one", "1234567\nA\n", " no code at 0"},
        {"lone carriage returns end no line", "0\rLINE\r", " no code at 0"},
    };
    for (const auto& each : cases) {
        const std::string expected = each.tags ? each.tags : "1=a\0b;"s;
        EXPECT_EQ(walked(each.bytes), expected) << each.name;
    }
}

TEST(TagValues, readAsNumbers) {
    const struct {
        const char* text;
        double number;
    } numbers[] = {
        {"  -1.5\t", -1.5},
        {"+2", 2},
        {"1.E+3", 1000},
        {".5", 0.5},
        {"5.", 5},
        {"1e-310", 1e-310},
        {"0.1000000000000000055511151231257827", 0.1},
    };
    for (const auto& each : numbers) EXPECT_EQ(toReal(each.text), each.number) << each.text;
    for (const char* text : {"", "  ", "x", "1,5", "1.5 2", "1.5x", "0x10", "1d3", "--1", "+-1", "1e",
                             "1e999", "nan", "-nan(ind)", "inf", "-Infinity"})
        EXPECT_EQ(toReal(text), std::nullopt) << '"' << text << '"';
}

TEST(TagValues, readAsHandles) {
    EXPECT_EQ(toHandle(" 2f "), 0x2Fu);
    EXPECT_EQ(toHandle("FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFu);
    for (const char* text : {"", " ", "0x2F", "2G", "-1", "10000000000000000"})
        EXPECT_EQ(toHandle(text), std::nullopt) << '"' << text << '"';
}

} // namespace
