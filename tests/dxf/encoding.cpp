#include "dxf/Encoding.h"

#include <gtest/gtest.h>

#include <string>

using qx::dxf::Encoding;

namespace {

TEST(Encoding, decodesByCodePage) {
    const struct {
        const char* name;
        const char* codePage;
        const char* bytes;
        const char* utf8;
    } cases[] = {
        {"Western code page", "ANSI_1252", "\xE9\x80", "é€"},
        {"GBK, second byte a backslash", "ANSI_936", "\x95\x5C", "昞"},
        {"that backslash begins no escape", "ANSI_936", "\x95\x5CU+4E2D", "昞U+4E2D"},
        {"an escape right behind that backslash", "ANSI_936", "\x95\x5C\\U+4E2D", "昞中"},
        {"UTF-8", "utf-8", "中文", "中文"},
        {"an unknown page is the Western one", "ANSI_4711", "\xE9", "é"},
        {"broken UTF-8", "UTF-8",
         "a\xFF"
         "b",
         "a\uFFFDb"},
        {"Unicode escape", "ANSI_1252", "\\U+4E2D\\U+6587", "中文"},
        {"in lower case, and in UTF-8", "UTF-8", "x\\u+4e2dx", "x中x"},
        {"surrogate escapes make one character", "UTF-8", "\\U+D83D\\U+DE00!", "😀!"},
        {"half a surrogate is no character", "UTF-8", "\\U+D83D!", "\uFFFD!"},
        {"too few digits stay", "ANSI_1252", "\\U+4E2 \\U+", "\\U+4E2 \\U+"},
        {"GBK by number", "ANSI_1252", "\\M+5D6D0", "中"},
        {"Japanese by number", "ANSI_936", "\\M+182A0a", "あa"},
        {"no such page", "ANSI_1252", "\\M+9D6D0", "\\M+9D6D0"},
        {"other backslashes stay", "ANSI_1252", "a\\Pb\\\\", "a\\Pb\\\\"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(Encoding::of(each.codePage).toUtf8(each.bytes), each.utf8) << each.name;
}

} // namespace
