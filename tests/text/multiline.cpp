#include "text/multiline.h"

#include "os/encoding.h"
#include "text/measure.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>

using namespace qx::text;

namespace {

std::string rounded(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", std::abs(value) < 1e-9 ? 0.0 : value);
    return text;
}

/// "AB|C": the characters of the runs, lines parted by '|'; runs of one line that stand apart by '.'.
std::string linesOf(const MultilineText& text) {
    std::string lines;
    for (std::size_t i = 0; i < text.runs.size(); ++i) {
        const bool isSameLine = i > 0 && text.runs[i].y == text.runs[i - 1].y;
        if (i > 0) lines += isSameLine ? "." : "|";
        lines += text.charactersOf(text.runs[i]);
    }
    return lines;
}

MultilineText laidOut(std::u32string_view raw, double width = 0) {
    return layOut(raw, {.height = 1, .width = width});
}

TEST(Multiline, showsItsCodes) {
    const struct {
        const char* name;
        std::u32string_view raw;
        const char* lines;
    } cases[] = {
        {"plain", U"ab 中文", "ab 中文"},
        {"new lines", U"a\\Pb\\Xc\\Nd", "a|b|c|d"},
        {"an empty line between", U"a\\P\\Pb", "a|b"},
        {"escaped", U"\\\\a\\{b\\}", "\\a{b}"},
        {"hard blank", U"a\\~b", "a\u00A0b"},
        {"groups alone don't part", U"a{b{c}}d", "abcd"},
        {"a group too many", U"a}b", "ab"},
        {"settings are not shown", U"\\A1;{\\C1;\\c255;r}\\fArial|b0|i0;\\Ftxt.shx;g\\pi1,l2,t3;b", "rgb"},
        {"lines through the text", U"\\Lu\\l\\Oo\\o\\Kk\\k", "uok"},
        {"semicolon missing", U"\\C1 a\\fArial\\Pb\\H", "1 aArial|b"},
        {"unknown code", U"\\za", "za"},
        {"backslash at the end", U"a\\", "a\\"},
        {"percent codes", U"%%c5%%d%%p%%065 50% %%x", "∅5°±A 50% %%x"},
        {"carets", U"a^Jb^M^Jc^Md^ e^xf^", "a|b|c|d^e^xf^"},
        {"tab", U"a^Ib", "a.b"},
        {"what is shown is no code", U"%%%%c\\\\P", "%%c\\P"},
        {"controls", U"a\x01\x1F b", "a b"},
    };
    for (const auto& c : cases) EXPECT_EQ(linesOf(laidOut(c.raw)), c.lines) << c.name;
}

TEST(Multiline, breaksAtItsWidth) {
    const double letter = measure(U"H").advance, blank = measure(U" ").advance;
    const struct {
        const char* name;
        std::u32string_view raw;
        double width;
        const char* lines;
    } cases[] = {
        {"fits exactly", U"HH HH", 4 * letter + blank, "HH HH"},
        {"just too long", U"HH HH", 4 * letter + blank - 0.001, "HH |HH"},
        {"no width", U"HH HH", 0, "HH HH"},
        {"negative width", U"HH HH", -3, "HH HH"},
        {"a long word goes over the edge", U"H HHHHHH H", 3 * letter, "H |HHHHHH |H"},
        {"blanks hang", U"HH      HH", 2 * letter, "HH      |HH"},
        {"a hard blank is no place", U"H H\\~H", 2 * letter + blank, "H |H\u00A0H"},
        {"a word of several runs stays whole", U"H H{\\H1.5x;H}H", 3 * letter, "H |H.H.H"},
        {"full width", U"中文字", 2, "中文|字"},
        {"full width beside letters", U"中H文", 2, "中H|文"},
        {"closing punctuation stays", U"中文，字", 2, "中|文，|字"},
        {"opening punctuation goes along", U"中（文", 2, "中|（文"},
        {"wide blank", U"中\u3000文", 1, "中\u3000|文"},
        {"every one on its own", U"中文", 1e-9, "中|文"},
        {"a fraction stays by its number", U"H H\\S1/2;", 2 * letter + blank, "H |H.2|1"},
    };
    for (const auto& c : cases) EXPECT_EQ(linesOf(laidOut(c.raw, c.width)), c.lines) << c.name;
}

// Each run as x,y*height, and factors when they are not 1 and 0.
TEST(Multiline, sizesAndPlacesItsRuns) {
    const struct {
        const char* name;
        std::u32string_view raw;
        const char* runs; ///< the width of H is 0.85
    } cases[] = {
        {"one line hangs from its top", U"H", "0,-1*1"},
        {"lines 5/3 apart", U"H\\PH\\P\\PH", "0,-1*1 0,-2.667*1 0,-6*1"},
        {"height", U"\\H3;H\\PH", "0,-3*3 0,-8*3"},
        {"relative height", U"\\H2x;H{\\H0.5x;H}H", "0,-2*2 1.7,-2*1 2.55,-2*2"},
        {"a higher line below keeps its distance", U"H\\P\\H2x;H", "0,-1*1 0,-4.333*2"},
        {"width factor", U"{\\W2;H}H", "0,-1*1*2+0 1.7,-1*1"},
        {"distance of characters takes room", U"{\\T3;H}H", "0,-1*1*3+0 2.55,-1*1"},
        {"obliquing", U"\\Q45;H", "0,-1*1*1+1"},
        {"standing in the middle", U"\\A1;\\H2x;H{\\H0.5x;H}", "0,-2*2 1.7,-1.5*1"},
        {"standing at the top", U"\\A2;\\H2x;H{\\H0.5x;H}", "0,-2*2 1.7,-1*1"},
        {"tab", U"H^IH", "0,-1*1 4,-1*1"},
        {"fraction", U"\\SH/H;H", "0,-1.6*0.7 0,-0.7*0.7 0.595,-1.6*1"},
        {"fraction in the middle", U"\\A1;H\\SH^H;", "0,-1.3*1 0.85,-1.6*0.7 0.85,-0.7*0.7"},
        {"only a lower half", U"H\\S^ H;", "0,-1*1 0.85,-1*0.7"},
        {"no halves", U"\\SHH;H", "0,-1*1"},
        {"escaped parting sign", U"\\SH\\/H#;", "0,-0.7*0.7"},
        {"two codes for one line end", U"H^M^JH", "0,-1*1 0,-2.667*1"},
        {"heights that are none", U"\\H0;H\\H-1;H\\Hx;H\\Hnan;H\\Hinf;H", "0,-1*1"},
        {"a height beyond measure", U"\\H1e300x;H", "0,-1e+06*1e+06"},
    };
    for (const auto& c : cases) {
        std::string told;
        for (const MultilineRun& run : laidOut(c.raw).runs) {
            told +=
                (told.empty() ? "" : " ") + rounded(run.x) + "," + rounded(run.y) + "*" + rounded(run.height);
            if (run.widthFactor != 1 || run.slant != 0)
                told += "*" + rounded(run.widthFactor) + "+" + rounded(run.slant);
        }
        EXPECT_EQ(told, c.runs) << c.name;
    }
}

TEST(Multiline, hangsFromItsAttachmentPoint) {
    const double h = measure(U"H").advance;
    const auto box = [](const MultilineText& text) {
        return rounded(text.left) + ".." + rounded(text.right) + " " + rounded(text.bottom) + ".." +
               rounded(text.top) + " second at " + rounded(text.runs[1].x) + "," + rounded(text.runs[1].y);
    };
    const struct {
        int attachment;
        const char* expected;
    } cases[] = {
        {2, "-0.85..0.85 -2.667..0 second at -0.425,-2.667"},
        {4, "0..1.7 -1.333..1.333 second at 0,-1.333"},
        {6, "-1.7..0 -1.333..1.333 second at -0.85,-1.333"},
        {7, "0..1.7 0..2.667 second at 0,0"},
        {0, "0..1.7 -2.667..0 second at 0,-2.667"},
        {99, "-1.7..0 0..2.667 second at -0.85,0"},
    };
    ASSERT_DOUBLE_EQ(h, 0.85);
    for (const auto& c : cases) {
        // A blank that hangs over the edge moves nothing.
        const MultilineFormat format{.height = 1, .width = 2.2, .attachment = c.attachment};
        EXPECT_EQ(box(layOut(U"HH H", format)), c.expected) << c.attachment;
    }
}

TEST(Multiline, spacesItsLines) {
    const struct {
        const char* name;
        std::u32string_view raw;
        double factor;
        bool isExact;
        double height;
    } cases[] = {
        {"as it is", U"H\\PH", 1, false, 1 + 5.0 / 3},
        {"wider", U"H\\PH", 1.5, false, 1 + 2.5},
        {"exactly", U"H\\P\\H3x;H", 1, true, 1 + 5.0 / 3},
        {"at least", U"H\\P\\H3x;H", 1, false, 1 + 5},
        {"no factor", U"H\\PH", 0, false, 1 + 5.0 / 3},
        {"less than there may be", U"H\\PH", 0.001, false, 1 + 0.25 * 5 / 3},
    };
    for (const auto& c : cases) {
        const auto text = layOut(c.raw, {.height = 1, .lineSpacing = c.factor, .hasExactSpacing = c.isExact});
        EXPECT_NEAR(text.top - text.bottom, c.height, 1e-12) << c.name;
    }
}

TEST(Multiline, blankTextIsEmpty) {
    for (const std::u32string_view raw : {U"", U"  \\P ", U"\\~{}\\C1;", U"\u3000", U"\\S^;"}) {
        const MultilineText text = laidOut(raw);
        EXPECT_TRUE(text.isBlank() && text.left == text.right && text.bottom == text.top)
            << qx::os::toUtf8(raw);
    }
    for (const double height : {0.0, -1.0, std::nan(""), HUGE_VAL})
        EXPECT_TRUE(layOut(U"H", {.height = height}).isBlank()) << height;
}

std::u32string repeated(std::u32string_view text, std::size_t length) {
    std::u32string all;
    while (all.size() < length) all += text;
    return all;
}

TEST(Multiline, boundsHostileText) {
    constexpr std::size_t length = 300'000; // what took time by its square would take minutes
    for (const std::u32string_view part :
         {U"{",      U"}",           U"{a",           U"{\\H2x;",
          U"\\H0;a", U"\\H1e300x;a", U"\\H1e-300x;a", U"\\W1e9;\\T1e9;\\Q90;a",
          U"\\S",    U"\\S1",        U"\\S1/",        U"\\S\\;",
          U"\\f",    U"\\Hx",        U"\\",           U"%%",
          U"^",      U"^I",          U"^I中",         U"\\P",
          U"\\P中",  U"a",           U"中",           U"a ",
          U"，",     U"\\S1/2;",     U"a\\H1.1x;",    U"\u0301"}) {
        const auto started = std::chrono::steady_clock::now();
        for (const double width : {0.0, 1e-300}) {
            const MultilineText text = layOut(repeated(part, length), {.height = 1, .width = width});
            for (const double each : {text.left, text.right, text.bottom, text.top})
                EXPECT_TRUE(std::isfinite(each)) << qx::os::toUtf8(part);
            for (const MultilineRun& run : text.runs)
                ASSERT_TRUE(std::isfinite(run.x + run.y + run.height + run.widthFactor + run.slant));
            EXPECT_LE(text.runs.size(), length);
            EXPECT_LE(text.characters.size(), 3 * length);
        }
        EXPECT_LT(std::chrono::steady_clock::now() - started, std::chrono::seconds{10})
            << qx::os::toUtf8(part);
    }
}

} // namespace
