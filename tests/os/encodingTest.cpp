#include "os/encoding.h"

#include <gtest/gtest.h>

using namespace qx::os;

namespace {

struct PageCase {
    const char* page;
    std::string bytes;
    const char* utf8;
};

const PageCase pageCases[] = {
    {"ANSI_936", "\x81\x5C\xD5\x5CZ", "乗誠Z"},
    {"gb2312", "\xBA\xBA", "汉"},
    {"ANSI_936", "\xD6\xD0\xCE", "中\uFFFD"},
    {"ANSI_936", "\xD6 \xD6\xD0", "\uFFFD 中"},
    {"ANSI_936", "a\xFFz", "a\uFFFDz"},
    {"ANSI_932", "\x95\x5C\x5C", "表\\"},
    {"ANSI_949", "\xC7\xD1", "한"},
    {"ANSI_1361", "\xD0\x65", "한"},
    {"ANSI_950", "\xA5\x5C", "功"},
    {"ANSI_874", "\xA1", "ก"},
    {"ANSI_1250", "\xBE", "ľ"},
    {"ANSI_1251", "\xCF", "П"},
    {"ANSI_1252", "\xE9\x80", "é€"},
    {"ANSI_1252", "\x81", "\uFFFD"},
    {"ANSI_1254", "\xFD", "ı"},
    {"ANSI_1255", "\xE0", "א"},
    {"ANSI_1257", "\xC0", "Ą"},
    {"ANSI_1258", "\xFE", "₫"},
    {"ANSI_1255", "\xE0\xFF", "א\uFFFD"},
    {"ANSI_1258", "a\xEC", "á"},
    {"dos850", "\x9D", "Ø"},
    {"Dos437", "\x81", "ü"},
    {"DOS852", "\xA5", "ą"},
    {"DOS866", "\x80", "А"},
    {"DOS932", "\x82\xA0", "あ"},
    {"ISO8859-5", "\xB0", "А"},
    {"iso8859-2", "\xB1", "ą"},
    {"BIG5", "\xA5\x5C", "功"},
    {"KSC5601", "\xC7\xD1", "한"},
    {"JOHAB", "\xD0\x65", "한"},
    {"8859_7", "\xE1", "α"},
    {"mac-roman", "\x8A", "ä"},
    {"UTF-8", "\xE4\xB8\xAD\xE4\xB8", "中\uFFFD\uFFFD"},
    {"ANSI_4711", "\xE9", "é"},
    {"", "\xE9", "é"},
};

TEST(Converter, DecodesEveryPageADrawingNames) {
    for (const PageCase& c : pageCases) EXPECT_EQ(Converter{c.page}.toUtf8(c.bytes), c.utf8) << c.page;
}

TEST(Converter, LongTextAndReuse) {
    Converter gbk{"ANSI_936"};
    std::string bytes;
    std::string expected;
    for (int i = 0; i < 2000; ++i) {
        bytes += "\xD6\xD0\xFF";
        expected += "中\uFFFD";
    }
    EXPECT_EQ(gbk.toUtf8(bytes), expected);
    EXPECT_EQ(gbk.toUtf8("\xD6"), "\uFFFD");
    EXPECT_EQ(gbk.toUtf8("\xD0\xCE"), "形") << "an unfinished character must not reach into the next text";
}

struct Utf8Case {
    const char* name;
    std::string_view bytes;
    std::u32string_view codePoints;
};

const Utf8Case utf8Cases[] = {
    {"one to four bytes", "a\u00E9中\U0001F4D0", U"a\u00E9中\U0001F4D0"},
    {"first and last", std::string_view{"\0\xF4\x8F\xBF\xBF", 5}, std::u32string_view{U"\0\U0010FFFF", 2}},
    {"overlong slash", "\xC0\xAF", U"\uFFFD\uFFFD"},
    {"a surrogate", "\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},
    {"trail alone", "\x80z", U"\uFFFDz"},
    {"cut off by ascii", "\xE4zz", U"\uFFFDzz"},
};

TEST(Utf8, DecodesAndRepairs) {
    for (const Utf8Case& c : utf8Cases) {
        EXPECT_TRUE(toUtf32(c.bytes) == c.codePoints) << c.name;
        EXPECT_EQ(toUtf8(toWide(c.bytes)), toUtf8(c.codePoints)) << c.name;
    }
}

TEST(Utf8, EveryCodePointRoundTrips) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        if (c == 0xD800) c = 0xE000;
        const std::string bytes = toUtf8(std::u32string_view{&c, 1});
        if (toUtf32(bytes) != std::u32string(1, c) || toUtf8(toWide(bytes)) != bytes)
            FAIL() << "U+" << std::hex << static_cast<unsigned>(c);
    }
    const char32_t bad[] = {0xD800, 0x110000};
    EXPECT_EQ(toUtf8(std::u32string_view{bad, 2}), "\uFFFD\uFFFD");
}

} // namespace
