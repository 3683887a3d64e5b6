#include "drawings/DrawingText.h"

using namespace drawings;

namespace {

TEST(Selectable, isWhatIsSeenInModelSpaceAndCanBeMeasured) {
    const char* const selectable[] = {
        "LINE|10 1.0|11 2.0",
        "LINE|330 1F|10 1.0|11 2.0",
        "LINE|8 locked|10 1.0|11 2.0",
        "LINE|8 unknown|10 1.0|11 2.0",
        "LINE|60 0|10 1.0|11 2.0",
        "LINE|102 {ACAD_REACTORS|330 1E|102 }|330 1F|10 1.0|11 2.0", // reactors are no owners
        "TEXT|10 1.0|40 1.0|1  ",
        "LWPOLYLINE|90 1|70 0|10 1.0|20 1.0",
        "INSERT|2 missing|10 1.0",
        "INSERT|2 B|10 1.0|71 3",
        "MTEXT|10 1.0|40 1.0|1 a",
        "ELLIPSE|10 1.0|11 1.0|40 0.5",
    };
    const char* const others[] = {
        "LINE|8 oFf|10 1.0|11 2.0",  "LINE|8 FROZEN|10 1.0|11 2.0",  "LINE|60 1|10 1.0|11 2.0",
        "LINE|330 1E|10 1.0|11 2.0", "LINE|67 1|10 1.0|11 2.0",      "LINE|330 ABC|67 1|10 1.0|11 2.0",
        "LINE|10 x|11 2.0",          "VIEWPORT|10 1.0|40 9.0",       "WIPEOUT|10 1.0",
        "ACAD_PROXY_ENTITY|90 498",  "ATTRIB|10 1.0|40 1.0|1 a|2 T",
    };
    const auto isSelectable = [](const char* snippet) {
        const auto drawing = read({.entities = {snippet}});
        return drawing->isSelectable(drawing->find(0x100));
    };
    for (const char* each : selectable) EXPECT_TRUE(isSelectable(each)) << each;
    for (const char* each : others) EXPECT_FALSE(isSelectable(each)) << each;
}

TEST(Selectable, layersHaveNamesWithoutCase) {
    const std::pair<const char*, const char*> same[] = {
        {"Wand \u00C4\u00DE", "wAND \u00E4\u00FE"}, // Latin, with marks of all kinds
        {"\u0106\u0139\u015A\u0178\u017D\u01CD\u1EA4", "\u0107\u013A\u015B\u00FF\u017E\u01CE\u1EA5"},
        {"\uFF21\uFF3A", "\uFF41\uFF5A"}, // as wide as Chinese
        {"\u0391\u0386\u038C\u038F\u03A3\u03A9", "\u03B1\u03AC\u03CC\u03CE\u03C2\u03C9"}, // Greek
        {"\u0410\u042F\u0401\u0490\u04C0\u04D8", "\u0430\u044F\u0451\u0491\u04CF\u04D9"}, // Cyrillic
    };
    const std::pair<const char*, const char*> others[] = {
        {"\u00D7", "\u00F7"}, {"\u0138", "\u0139"}, {"\u0130", "\u0131"}, {"\u4E2D", "\u4E2E"}, {"@", "`"}};
    const auto isFound = [](const std::string& layer, const std::string& named) {
        const DrawingText text{.entities = {"LINE|8 " + named + "|10 1.0|11 2.0"},
                               .version = "AC1032",
                               .layers = {layer + "|70 1|62 7"}};
        const auto drawing = read(text);
        return !drawing->isSelectable(drawing->find(0x100)); // the layer is frozen
    };
    for (const auto& [capital, small] : same) {
        EXPECT_TRUE(isFound(capital, small)) << capital;
        EXPECT_TRUE(isFound(small, capital)) << capital;
    }
    for (const auto& [one, other] : others) EXPECT_FALSE(isFound(one, other)) << one;
}

TEST(ExtentsAtOpening, areThoseOfTheFileWhateverHappens) {
    const DrawingText text{
        .entities = {"LINE|10 1.0|20 1.0|11 2.0|21 5.0", "POINT|8 OFF|10 99.0|20 0.0",
                     "POINT|67 1|10 99.0|20 0.0", "WIPEOUT|10 99.0", "POINT|8 LOCKED|10 4.0|20 2.0",
                     "INSERT|66 1|2 B|10 3.0|20 3.0", "ATTRIB|10 3.0|20 3.0|40 1.0|1 H|2 T|70 0", "SEQEND",
                     "INSERT|66 1|8 OFF|2 B|10 9.0", "ATTRIB|10 99.0|20 3.0|40 1.0|1 H|2 T|70 0", "SEQEND"},
        .blocks = {{"B", {"LINE|10 0.0|20 0.0|11 5.0|21 0.0"}}}};
    const auto drawing = read(text);
    const std::string atFirst = shapes::text(drawing->extentsAtOpening());
    EXPECT_EQ(atFirst, "1..8 1..5 0..0");
    step(*drawing, [&] { move(*drawing, 0x100, shift(100, 0)), move(*drawing, 0x105, shift(0, 100)); });
    EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), atFirst) << "moved, with an attribute";
    step(*drawing, [&] { erase(*drawing, 0x100), erase(*drawing, 0x105), erase(*drawing, 0x106); });
    EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), atFirst) << "erased";
    EXPECT_EQ(drawing->openCount(), 0u);
    EXPECT_EQ(shapes::text(read(DrawingText{})->extentsAtOpening()), "empty");
}

} // namespace
