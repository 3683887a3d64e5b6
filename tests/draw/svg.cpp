#include "draw/Svg.h"
#include "../os/TemporaryFolder.h"
#include "pathPoints.h"

#include <algorithm>
#include <gtest/gtest.h>

using qx::db::Drawing;

namespace {

/// Groups as pairs "code value" on one line, separated by '|', as the lines of a file.
std::string tags(std::string text) {
    std::string lines;
    std::size_t begin = 0;
    while (begin < text.size()) {
        const std::size_t end = std::min(text.find('|', begin), text.size());
        const std::string pair = text.substr(begin, end - begin);
        const std::size_t gap = pair.find(' ');
        lines += pair.substr(0, gap) + "\n" + (gap == std::string::npos ? "" : pair.substr(gap + 1)) + "\n";
        begin = end + 1;
    }
    return lines;
}

/// A drawing with layers 0 (white), Red&Co, Off, Frozen, Locked (blue), a block "B" with a line, and these
/// entities.
std::unique_ptr<Drawing> drawingWith(const std::string& entities) {
    const std::string head =
        "0 SECTION|2 HEADER|9 $ACADVER|1 AC1021|0 ENDSEC|0 SECTION|2 TABLES|0 TABLE|2 LAYER|70 5|"
        "0 LAYER|5 10|2 0|70 0|62 7|0 LAYER|5 11|2 Red&Co|70 0|62 1|0 LAYER|5 12|2 Off|70 0|62 -2|"
        "0 LAYER|5 13|2 Frozen|70 1|62 3|0 LAYER|5 14|2 Locked|70 4|62 5|0 ENDTAB|"
        "0 TABLE|2 BLOCK_RECORD|70 2|0 BLOCK_RECORD|5 1F|2 *Model_Space|0 BLOCK_RECORD|5 20|2 B|0 ENDTAB|0 "
        "ENDSEC|"
        "0 SECTION|2 BLOCKS|0 BLOCK|5 21|330 1F|2 *Model_Space|10 0|20 0|0 ENDBLK|5 22|"
        "0 BLOCK|5 23|330 20|2 B|10 0|20 0|0 LINE|5 24|330 20|8 Red&Co|62 5|10 0|20 0|11 10|21 0|0 ENDBLK|5 "
        "25|0 ENDSEC|"
        "0 SECTION|2 ENTITIES|";
    auto drawing = Drawing::fromBytes(tags(head + entities + "0 ENDSEC|0 EOF"), "test");
    if (!drawing) ADD_FAILURE() << drawing.error();
    return drawing ? std::move(*drawing) : nullptr;
}

std::string pictureOf(const std::string& entities) { return qx::draw::svgOf(*drawingWith(entities)); }

/// What follows the white ground, without line ends and what paths look like.
std::string shownIn(const Drawing& drawing) {
    std::string svg = qx::draw::svgOf(drawing);
    svg.erase(0, svg.find("fill=\"#fff\"/>") + 13);
    for (auto at = svg.find(" d=\""); at != std::string::npos; at = svg.find(" d=\""))
        svg.erase(at, svg.find('"', at + 4) + 1 - at);
    std::erase(svg, '\n');
    return svg;
}

const std::string place = "|10 0|20 0|11 100|21 75|";

TEST(Svg, ShowsWhatIsVisibleInItsColour) {
    const struct {
        const char* name;
        std::string entities, expected;
    } cases[] = {
        {"by layer", "0 LINE|5 100|8 Locked" + place,
         "<g data-layer=\"Locked\" color=\"#0000ff\"><path/></g>"},
        {"its own", "0 LINE|5 100|8 Locked|62 1" + place,
         "<g data-layer=\"Locked\" color=\"#0000ff\"><path color=\"#ff0000\"/></g>"},
        {"by block, outside of any", "0 LINE|5 100|8 Locked|62 0" + place,
         "<g data-layer=\"Locked\" color=\"#0000ff\"><path color=\"#000000\"/></g>"},
        {"the reference's, not the part's", "0 INSERT|5 100|8 0|62 6|2 B|10 0|20 0|",
         "<g data-layer=\"0\" color=\"#000000\"><path color=\"#ff00ff\"/></g>"},
        {"layers once, escaped",
         "0 LINE|5 100|8 Red&Co" + place + "0 LINE|5 101|8 0" + place + "0 LINE|5 102|8 red&co" + place,
         "<g data-layer=\"Red&amp;Co\" color=\"#ff0000\"><path/><path/></g>"
         "<g data-layer=\"0\" color=\"#000000\"><path/></g>"},
        {"layer off", "0 LINE|5 100|8 Off" + place, ""},
        {"layer frozen", "0 LINE|5 100|8 Frozen" + place, ""},
        {"invisible", "0 LINE|5 100|8 0|60 1" + place, ""},
        {"paper space", "0 LINE|5 100|8 0|67 1" + place, ""},
        {"coordinate that is no number", "0 LINE|5 100|8 0|10 nan|20 0|11 1e400|21 2|", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(shownIn(*drawingWith(c.entities)), c.expected + "</svg>") << c.name;
}

TEST(Svg, LeavesOutWhatWasErased) {
    const auto drawing = drawingWith("0 LINE|5 100|8 0" + place);
    drawing->setLocked(true);
    AcDbObject* object = nullptr;
    ASSERT_EQ(drawing->open(drawing->find(0x100), AcDb::kForWrite, false, object), Acad::eOk);
    object->erase();
    object->close();
    EXPECT_EQ(shownIn(*drawing), "</svg>");
}

TEST(Svg, FitsThePicture) {
    const struct {
        const char* name;
        std::string entities, size, path;
    } cases[] = {
        {"empty", "", "0 0 1600 1200", ""},
        {"wide", "0 LINE|5 1|8 0|10 0|20 0|11 100|21 50|", "0 0 1600 845.283",
         "M45.283 800l1509.434-754.717"},
        {"high", "0 LINE|5 1|8 0|10 0|20 0|11 50|21 100|", "0 0 633.962 1200",
         "M33.962 1166.038l566.038-1132.076"},
        {"level", "0 LINE|5 1|8 0|10 7|20 9|11 57|21 9|", "0 0 1600 90.566", "M45.283 45.283l1509.434 0"},
        {"one point", "0 POINT|5 1|8 0|10 7|20 9|", "0 0 1200 1200", "M600 600m-3 0h6m-3-3v6m0-3"},
        {"far out", "0 LINE|5 1|8 0|10 1e9|20 -1e9|11 1000000050|21 -999999900|", "0 0 633.962 1200",
         "M33.962 1166.038l566.038-1132.076"},
        {"small", "0 LINE|5 1|8 0|10 0|20 0|11 5e-7|21 1e-6|", "0 0 633.962 1200",
         "M33.962 1166.038l566.038-1132.076"},
        {"square and a repeated vertex",
         "0 LWPOLYLINE|5 1|8 0|90 5|70 1|10 0|20 0|10 50|20 0|10 50|20 0|10 50|20 50|10 0|20 50|",
         "0 0 1200 1200", "M33.962 1166.038l1132.076 0l0-1132.076l-1132.076 0l0 1132.076"},
        {"a repeated first vertex", "0 LWPOLYLINE|5 1|8 0|90 3|70 0|10 0|20 0|10 0|20 0|10 50|20 50|",
         "0 0 1200 1200", "M33.962 1166.038l1132.076-1132.076"},
    };
    for (const auto& c : cases) {
        const std::string svg = pictureOf(c.entities);
        EXPECT_NE(svg.find("viewBox=\"" + c.size + "\""), std::string::npos) << c.name << '\n' << svg;
        EXPECT_EQ(pictures::pathIn(svg), c.path) << c.name;
    }
}

// Counts what is open, so that a broken attribute or a missing end shows.
TEST(Svg, IsWellFormedAndInsideItsFrame) {
    for (const char* name : {"siteplan", "floorplan"}) {
        const auto drawing = Drawing::read(std::string{QX_SOURCE_DIR "/samples/"} + name + ".dxf");
        ASSERT_TRUE(drawing) << drawing.error();
        std::string svg = qx::draw::svgOf(**drawing);
        std::ptrdiff_t depth = 0, quotes = std::count(svg.begin(), svg.end(), '"');
        for (std::size_t at = svg.find('<', 5); at != std::string::npos; at = svg.find('<', at + 1)) {
            const std::size_t end = svg.find('>', at);
            depth += svg[at + 1] == '/' ? -1 : svg[end - 1] == '/' ? 0 : 1;
            ASSERT_GE(depth, 0) << svg.substr(at, 80);
        }
        EXPECT_EQ(depth, 0) << name;
        EXPECT_EQ(quotes % 2, 0) << name;
        std::size_t paths = 0;
        for (; svg.find(" d=\"") != std::string::npos; svg.erase(0, svg.find(" d=\"") + 4), ++paths) {
            const pictures::PathPoints path{pictures::pathIn(svg)};
            ASSERT_TRUE(path.isUnderstood) << pictures::pathIn(svg);
            for (const AcGePoint2d& p : path.points)
                ASSERT_TRUE(p.x > 40 && p.x < 1560 && p.y > 40 && p.y < 1160)
                    << name << ' ' << p.x << ' ' << p.y;
        }
        EXPECT_GT(paths, 150u) << name;
    }
}

TEST(Svg, IsWrittenWholeOrNotAtAll) {
    std::string many;
    for (int i = 0; i < 3000; ++i) many += "0 LINE|8 0|10 " + std::to_string(i) + "|20 0|11 5|21 75|";
    const auto drawing = drawingWith(many);
    TemporaryFolder folder;
    const auto written = qx::draw::writeSvg(*drawing, folder / "picture.svg");
    ASSERT_TRUE(written) << written.error();
    EXPECT_TRUE(contentOf(folder / "picture.svg") == qx::draw::svgOf(*drawing));

    const auto refused = qx::draw::writeSvg(*drawing, folder / "none/picture.svg");
    EXPECT_NE(refused.error().find("none/picture.svg"), std::string::npos) << refused.error();
}

} // namespace
