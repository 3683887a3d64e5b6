#include "dxf/Tag.h"

#include <gtest/gtest.h>

#include <charconv>
#include <random>
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

// Whatever the lengths of the lines, and so wherever they lie among the bytes that are looked at together.
TEST(TagCursor, findsLinesOfAnyLength) {
    std::mt19937 random{20};
    for (int round = 0; round < 200; ++round) {
        std::string bytes, expected;
        const std::string lineEnd = round % 2 ? "\r\n" : "\n";
        for (int tag = 0; tag < 20; ++tag) {
            const int code = static_cast<int>(random() % (round % 3 ? 300 : 2000));
            const std::string value(1 + random() % (tag % 5 ? 24 : 300), 'v');
            const std::string number = std::to_string(code);
            bytes += std::string(number.size() < 3 ? 3 - number.size() : 0, ' ') + number + lineEnd + value;
            if (tag < 19 || round % 4) bytes += lineEnd;
            expected += number + "=" + value + ";";
        }
        EXPECT_EQ(walked(bytes), expected) << "round " << round;
    }
}

TEST(TagValues, areRoundedCorrectly) {
    std::mt19937_64 random{20};
    for (int round = 0; round < 20000; ++round) {
        std::string text = std::to_string(random() >> random() % 64).substr(0, 17);
        text.insert(random() % (text.size() + 1), ".");
        if (random() % 2) text.insert(0, "-");
        double expected = 0;
        std::from_chars(text.data(), text.data() + text.size(), expected);
        EXPECT_EQ(toReal(text), expected) << text;
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
        {"12345678.", 12345678},
        {"-0012345678.87654321", -12345678.87654321},
        {"1e-310", 1e-310},
        {"0.1000000000000000055511151231257827", 0.1},
    };
    for (const auto& each : numbers) EXPECT_EQ(toReal(each.text), each.number) << each.text;
    for (const char* text :
         {"",         "  ",  "x",         "1,5",   "1.5 2",    "1.5x", "0x10",  "1d3",
          "--1",      "+-1", "1e",        "1e999", ".",        "-.",   "1.2.3", "12345678.12345678.1",
          "1234567:", "nan", "-nan(ind)", "inf",   "-Infinity"})
        EXPECT_EQ(toReal(text), std::nullopt) << '"' << text << '"';
}

TEST(TagValues, readAsHandles) {
    EXPECT_EQ(toHandle(" 2f "), 0x2Fu);
    EXPECT_EQ(toHandle("FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFu);
    for (const char* text : {"", " ", "0x2F", "2G", "-1", "10000000000000000"})
        EXPECT_EQ(toHandle(text), std::nullopt) << '"' << text << '"';
}

} // namespace
