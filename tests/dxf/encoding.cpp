#include "dxf/Encoding.h"

#include <gtest/gtest.h>

#include <string>

using qx::dxf::Encoding;

namespace {

TEST(Encoding, decodesByVersionAndCodePage) {
    const struct {
        const char* name;
        const char* version;
        const char* codePage;
        const char* bytes;
        const char* utf8;
    } cases[] = {
        {"Western code page", "AC1015", "ANSI_1252", "\xE9\x80", "é€"},
        {"no code page is the Western one", "AC1018", "", "\xE9", "é"},
        {"GBK, second byte a backslash", "AC1015", "ANSI_936", "\x95\x5C", "昞"},
        {"that backslash begins no escape", "AC1015", "ANSI_936", "\x95\x5CU+4E2D", "昞U+4E2D"},
        {"an escape right behind that backslash", "AC1015", "ANSI_936", "\x95\x5C\\U+4E2D", "昞中"},
        {"the version beats the code page", "AC1021", "ANSI_936", "中文", "中文"},
        {"broken UTF-8", "AC1032", "",
         "a\xFF"
         "b",
         "a\uFFFDb"},
        {"Unicode escape", "AC1015", "ANSI_1252", "\\U+4E2D\\U+6587", "中文"},
        {"in lower case, and in UTF-8", "AC1032", "", "x\\u+4e2dx", "x中x"},
        {"surrogate escapes make one character", "AC1032", "", "\\U+D83D\\U+DE00!", "😀!"},
        {"half a surrogate is no character", "AC1032", "", "\\U+D83D!", "\uFFFD!"},
        {"too few digits stay", "AC1015", "ANSI_1252", "\\U+4E2 \\U+", "\\U+4E2 \\U+"},
        {"GBK by number", "AC1015", "ANSI_1252", "\\M+5D6D0", "中"},
        {"Japanese by number", "AC1015", "ANSI_936", "\\M+182A0a", "あa"},
        {"no such page", "AC1015", "ANSI_1252", "\\M+9D6D0", "\\M+9D6D0"},
        {"other backslashes stay", "AC1015", "ANSI_1252", "a\\Pb\\\\", "a\\Pb\\\\"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(Encoding::of(each.version, each.codePage).toUtf8(each.bytes), each.utf8) << each.name;
}

} // namespace
