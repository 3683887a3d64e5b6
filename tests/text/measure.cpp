#include "text/measure.h"

#include <gtest/gtest.h>
#include <utility>

using qx::text::measure;

namespace {

TEST(Measure, findsInkUpAndDown) {
    const struct {
        const char* name;
        std::u32string_view text;
        double bottom, top;
    } cases[] = {
        {"small letters", U"access", 0, 0.67},   {"ascender", U"ace d", 0, 1},
        {"descender", U"ago", -0.25, 0.67},      {"dot over, tail below", U"j", -0.25, 1},
        {"capitals and digits", U"R5", 0, 1},    {"comma", U"1,5", -0.2, 1},
        {"only a full stop", U".", 0, 0.1},      {"squares", U"中", -0.1, 1},
        {"squares and tails", U"中g", -0.25, 1}, {"unknown script", U"\u0416", 0, 1},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(measure(c.text).inkBottom, c.bottom) << c.name;
        EXPECT_EQ(measure(c.text).inkTop, c.top) << c.name;
        EXPECT_FALSE(measure(c.text).blank) << c.name;
    }
}

TEST(Measure, givesSquaresToTheEastAndTellsBlankFromDrawn) {
    const struct {
        const char* name;
        std::u32string_view text;
        double advance;
        bool isBlank = false;
    } cases[] = {
        {"ideographs", U"对齐", 2},
        {"full-width letters", U"ＡＢ", 2},
        {"punctuation", U"、。", 2},
        {"rare ideograph", U"\U00020000", 1},
        {"half-width kana", U"ｱ", 0.5},
        {"one letter among spaces", U" i ", 1.75},
        {"full-width space", U"\u3000", 1, true},
        {"spaces", U"  ", 1.2, true},
        {"empty", U"", 0, true},
        {"controls", U"\t\n", 0, true},
        {"marks alone", U"\u0301\u200B", 0, true},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(measure(c.text).advance, c.advance) << c.name;
        EXPECT_EQ(measure(c.text).blank, c.isBlank) << c.name;
    }
}

TEST(Measure, addsUpLineByItsCharacters) {
    const double space = measure(U" ").advance;
    const auto letter = measure(U"H");
    const auto line = measure(U"  HaH ");
    EXPECT_DOUBLE_EQ(line.advance, 3 * space + 2 * letter.advance + measure(U"a").advance);
    EXPECT_DOUBLE_EQ(line.inkLeft, 2 * space + letter.inkLeft) << "leading spaces shift the ink";
    EXPECT_DOUBLE_EQ(line.inkRight, line.advance - space - (letter.advance - letter.inkRight))
        << "trailing spaces don't widen it";
    EXPECT_EQ(measure(U"e\u0301").advance, measure(U"e").advance) << "marks take no room";
}

TEST(Measure, everyVisibleAsciiCharacterHasAGlyphWithinItsAdvance) {
    for (char32_t c = U'!'; c <= U'~'; ++c) {
        const auto glyph = measure({&c, 1});
        EXPECT_FALSE(glyph.blank) << char(c);
        EXPECT_TRUE(glyph.advance >= 0.55 && glyph.advance <= 0.9) << char(c);
        EXPECT_TRUE(glyph.inkLeft > 0 && glyph.inkLeft < glyph.inkRight && glyph.inkRight < glyph.advance)
            << char(c);
    }
}

TEST(Slant, staysWithinBounds) {
    const double most = 11.430052302761343; // tan 85 degrees
    const std::pair<double, double> cases[] = {
        {0, 0},       {45, 1},        {-45, -1},     {350, -0.17632698070846498},
        {85, most},   {89.999, most}, {90.5, -most}, {-89.999, -most},
        {-90, -most}, {180, 0}};
    for (const auto& [degrees, slant] : cases)
        EXPECT_NEAR(qx::text::slantOf(degrees), slant, 1e-12) << degrees;
}

} // namespace
