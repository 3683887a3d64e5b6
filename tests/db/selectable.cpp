#include "drawings/DrawingText.h"

using namespace drawings;

namespace {

TEST(Selectable, isWhatIsSeenInModelSpaceAndCanBeMeasured) {
    const struct {
        const char* name;
        std::string snippet;
        bool isSelectable;
    } cases[] = {
        {"plain", "LINE|10 1.0|11 2.0", true},
        {"by its owner in model space", "LINE|330 1F|10 1.0|11 2.0", true},
        {"locked layer", "LINE|8 LOCKED|10 1.0|11 2.0", true},
        {"layer in another case", "LINE|8 locked|10 1.0|11 2.0", true},
        {"unknown layer", "LINE|8 X|10 1.0|11 2.0", true},
        {"layer off", "LINE|8 OFF|10 1.0|11 2.0", false},
        {"layer off, in another case", "LINE|8 oFf|10 1.0|11 2.0", false},
        {"layer frozen", "LINE|8 FROZEN|10 1.0|11 2.0", false},
        {"invisible", "LINE|60 1|10 1.0|11 2.0", false},
        {"said to be visible", "LINE|60 0|10 1.0|11 2.0", true},
        {"paper space by its owner", "LINE|330 1E|10 1.0|11 2.0", false},
        {"paper space by its flag", "LINE|67 1|10 1.0|11 2.0", false},
        {"an owner that is not there, in paper space", "LINE|330 ABC|67 1|10 1.0|11 2.0", false},
        {"reactors are no owners", "LINE|102 {ACAD_REACTORS|330 1E|102 }|330 1F|10 1.0|11 2.0", true},
        {"values that are no numbers", "LINE|10 x|11 2.0", false},
        {"text", "TEXT|10 1.0|40 1.0|1 a", true},
        {"blank text", "TEXT|10 1.0|40 1.0|1  ", true},
        {"polyline", "LWPOLYLINE|90 1|70 0|10 1.0|20 1.0", true},
        {"reference to a missing block", "INSERT|2 B|10 1.0", true},
        {"array of references", "INSERT|2 B|10 1.0|71 3", false},
        {"multiline text", "MTEXT|10 1.0|40 1.0|1 a", true},
        {"ellipse", "ELLIPSE|10 1.0|11 1.0|40 0.5", true},
        {"hatch", "HATCH|10 1.0", false},
        {"proxy", "ACAD_PROXY_ENTITY|90 498", false},
        {"attribute on its own", "ATTRIB|10 1.0|40 1.0|1 a|2 T", false},
    };
    for (const auto& each : cases) {
        const auto drawing = read(DrawingText{.entities = {each.snippet}}.bytes());
        EXPECT_EQ(drawing->isSelectable(drawing->find(0x100)), each.isSelectable) << each.name;
    }
}

TEST(ExtentsAtOpening, areThoseOfTheFileWhateverHappens) {
    const DrawingText text{
        .entities = {"LINE|10 1.0|20 1.0|11 2.0|21 5.0", "POINT|8 OFF|10 99.0|20 0.0",
                     "POINT|67 1|10 99.0|20 0.0", "HATCH|10 99.0", "POINT|8 LOCKED|10 4.0|20 2.0",
                     "INSERT|66 1|2 B|10 3.0|20 3.0", "ATTRIB|10 3.0|20 3.0|40 1.0|1 H|2 T|70 0", "SEQEND",
                     "INSERT|66 1|8 OFF|2 B|10 9.0", "ATTRIB|10 99.0|20 3.0|40 1.0|1 H|2 T|70 0", "SEQEND"},
        .blocks = {{"B", {"LINE|10 0.0|20 0.0|11 5.0|21 0.0"}}}};
    const auto drawing = read(text.bytes());
    const std::string atFirst = shapes::text(drawing->extentsAtOpening());
    EXPECT_EQ(atFirst, "1..8 1..5 0..0");
    const auto expectSame = [&](const char* when) {
        EXPECT_EQ(shapes::text(drawing->extentsAtOpening()), atFirst) << when;
        EXPECT_EQ(drawing->openCount(), 0u);
    };
    step(*drawing, [&] { move(*drawing, 0x100, shift(100, 0)); });
    expectSame("a line moved");
    step(*drawing, [&] { move(*drawing, 0x105, shift(0, 100)); });
    expectSame("a reference moved with its attribute");
    step(*drawing, [&] { erase(*drawing, 0x100), erase(*drawing, 0x105), erase(*drawing, 0x106); });
    expectSame("erased");
    drawing->history().undo();
    expectSame("brought back");
    EXPECT_EQ(shapes::text(read(DrawingText{}.bytes())->extentsAtOpening()), "empty");
}

} // namespace
