#include "ed/Keywords.h"
#include "ed/points.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
using namespace qx::ed;
using Frame = TypedPoint::Frame;

TEST(Points, asTyped) {
    EXPECT_EQ(parsePoint("1,2"), (TypedPoint{Frame::user, {1, 2, 0}}));
    EXPECT_EQ(parsePoint("-1.5,+2e3,.25"), (TypedPoint{Frame::user, {-1.5, 2000, 0.25}}));
    EXPECT_EQ(parsePoint("@3,-4,5"), (TypedPoint{Frame::relative, {3, -4, 5}}));
    EXPECT_EQ(parsePoint("*1,2"), (TypedPoint{Frame::world, {1, 2, 0}}));
    for (const char* text :
         {"", "1", ",1", "1,2,", "1,2,3,4", "1,2x", "1, 2", "@*1,2", "nan,0", "1e999,0", "0x10,0", "+-1,0"})
        EXPECT_EQ(parsePoint(text), std::nullopt) << text;
}

TEST(Reals, takeTheWholeText) {
    EXPECT_EQ(parseReal("-0.5"), -0.5);
    EXPECT_EQ(parseReal("+.5"), 0.5);
    for (const char* text : {"", "-", "1,5", "5m", "inf", "--1", " 1"})
        EXPECT_EQ(parseReal(text), std::nullopt) << text;
}

struct KeywordCase {
    const char* list;
    const char* typed;
    const char* keyword; ///< null: refused
};
const KeywordCase keywordCases[] = {
    {"Yes No", "y", "Yes"},
    {"Yes No", "yess", nullptr},
    {"Yes No", "", nullptr},
    {"Yes No", "_yes", "Yes"},
    {"HC T L C HD", "h", nullptr}, // both capitals are the abbreviation
    {"HC T L C HD", "hd", "HD"},
    {"LEft LIne", "le", "LEft"},
    {"LEft LIne", "l", nullptr},
    {"LEft LIne", "lin", "LIne"},
    {"eXit End", "x", "eXit"},
    {"eXit End", "ex", "eXit"},
    {"layer,LA", "la", "layer"},
    {"layer,LA", "l", nullptr},
    {"对象 组 _Object Group", "组", "Group"},
    {"对象 组 _Object Group", "_g", "Group"},
    {"对象 组 _Object Group", "g", nullptr},
};

TEST(Keywords, whatIsTypedFindsOne) {
    for (const KeywordCase& each : keywordCases) {
        const auto found = Keywords{each.list}.match(each.typed);
        const auto expected = each.keyword ? std::optional<std::string>{each.keyword} : std::nullopt;
        EXPECT_EQ(found, expected) << each.list << " <- " << each.typed;
    }
}

} // namespace
