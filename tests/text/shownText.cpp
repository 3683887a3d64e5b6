#include "text/shownText.h"

#include <gtest/gtest.h>

namespace {

TEST(ShownText, expandsItsCodes) {
    const struct {
        const char* name;
        std::u32string_view raw, shown;
    } cases[] = {
        {"plain", U"abc 100% 中文", U"abc 100% 中文"},
        {"diameter, in either case", U"%%c20 %%C30", U"\u220520 \u220530"},
        {"degree, plus-minus", U"45%%d%%p0.1", U"45\u00B0\u00B10.1"},
        {"percent", U"50%%%", U"50%"},
        {"toggles vanish", U"%%uunder%%U %%oover%%O %%kout%%K", U"under over out"},
        {"character by number", U"%%065%%66x", U"ABx"},
        {"three digits at most", U"%%0651", U"A1"},
        {"drafting signs by number", U"%%127%%128%%129", U"\u00B0\u00B1\u2205"},
        {"number zero is nothing", U"a%%000b", U"ab"},
        {"unknown code stays", U"%%x", U"%%x"},
        {"at the end", U"5%%", U"5%%"},
    };
    for (const auto& c : cases) EXPECT_TRUE(qx::text::shownText(c.raw) == c.shown) << c.name;
}

} // namespace
