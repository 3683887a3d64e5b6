#include "ed/formatted.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

std::wstring format(const wchar_t* text, ...) {
    va_list arguments;
    va_start(arguments, text);
    std::wstring result = qx::ed::formatted(text, arguments);
    va_end(arguments);
    return result;
}

TEST(Format, oneCasePerLine) {
    EXPECT_EQ(format(L"\n没有选中任何对象！"), L"\n没有选中任何对象！");
    EXPECT_EQ(format(L"%s=%s", L"键", L"值"), L"键=值");
    EXPECT_EQ(format(L"%ls|%5s|%-5s|%.2s", L"a", L"b", L"c", L"def"), L"a|    b|c    |de");
    EXPECT_EQ(format(L"%hs", "窄"), L"窄");
    EXPECT_EQ(format(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)");
    EXPECT_EQ(format(L"%c%c", L'中', 'x'), L"中x");
    EXPECT_EQ(format(L"%d %i %5d|%-5d|%05d", -3, 4, 5, -6, -7), L"-3 4     5|-6   |-0007");
    EXPECT_EQ(format(L"%+d % d %.3d %5.3d", 1, 2, 3, -4), L"+1  2 003  -004");
    EXPECT_EQ(format(L"%u %x %X %#x %o", 4000000000u, 255u, 255u, 255u, 8u), L"4000000000 ff FF 0xff 10");
    EXPECT_EQ(format(L"%ld %lu %lld", -5L, 6UL, std::numeric_limits<long long>::min()),
              L"-5 6 -9223372036854775808");
    EXPECT_EQ(format(L"%f %lf %.2f %8.3f|%-8.1f|%08.3f", 1.5, 2.25, 2.675, -3.14159, 4.0, -5.5),
              L"1.500000 2.250000 2.67   -3.142|4.0     |-005.500");
    EXPECT_EQ(format(L"%e %.2E %e", 12345.678, 0.00012, 1e100), L"1.234568e+04 1.20E-04 1.000000e+100");
    EXPECT_EQ(format(L"%g %g %g %g %.10g", 100000.0, 1000000.0, 0.0001, 0.00001, 0.1),
              L"100000 1e+06 0.0001 1e-05 0.1");
    EXPECT_EQ(format(L"%f %g %F", std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()),
              L"inf nan -INF");
    EXPECT_EQ(format(L"%.0f %g %f", 2.5, -0.0, 1e300).substr(0, 6), L"2 -0 1");
    EXPECT_EQ(format(L"%*d|%-*d|%.*f", 4, 1, 4, 2, 1, 0.25), L"   1|2   |0.2");
    EXPECT_EQ(format(L"100%% %q %d", 7), L"100% %q 7");
    EXPECT_EQ(format(L"50%"), L"50%");
}

} // namespace
