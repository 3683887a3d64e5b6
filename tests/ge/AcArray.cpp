#include "acarray.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string text(const AcArray<int>& array) {
    std::string all;
    for (const int each : array) all += std::to_string(each) + ' ';
    return all;
}

TEST(AcArray, growsAndShrinks) {
    AcArray<int> a(2, 1);
    EXPECT_TRUE(a.isEmpty());
    EXPECT_EQ(a.append(5), 0);
    EXPECT_EQ(a.append(7), 1);
    a.insertAt(0, 3).insertAt(3, 5);
    EXPECT_EQ(text(a), "3 5 7 5 ");
    EXPECT_EQ(text(a.append(a)), "3 5 7 5 3 5 7 5 ");
    EXPECT_EQ(text(a.setLogicalLength(4).removeAt(1)), "3 7 5 ");
    EXPECT_EQ(a.first(), 3);
    EXPECT_EQ(a.last(), 5);
    EXPECT_EQ(text(a.setLogicalLength(5)), "3 7 5 0 0 ");
    EXPECT_TRUE(a.removeAll().isEmpty());
}

} // namespace
