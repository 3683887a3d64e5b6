#include "draw/Svg.h"
#include "drawings/DrawingText.h"
#include "os/TemporaryFolder.h"
#include "pathPoints.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>

using qx::db::Drawing;

namespace {

/// Has the layers Red&Co and Blue besides the usual ones, a block "B" with a line, and these entities.
std::unique_ptr<Drawing> drawingWith(const std::vector<std::string>& entities) {
    return drawings::read({.entities = entities,
                           .blocks = {{"B", {"LINE|5 50|8 Red&Co|62 5|10 0|20 0|11 10|21 0"}}},
                           .version = "AC1021",
                           .layers = {"Red&Co|70 0|62 1", "Blue|70 4|62 5"}});
}

/// What follows the white ground, without line ends and what paths look like.
std::string shownIn(const Drawing& drawing) {
    std::string svg = qx::draw::svgOf(drawing);
    svg.erase(0, svg.find("fill=\"#fff\"/>") + 13);
    for (auto at = svg.find(" d=\""); at != std::string::npos; at = svg.find(" d=\""))
        svg.erase(at, svg.find('"', at + 4) + 1 - at);
    std::erase(svg, '\n');
    return svg;
}

const std::string place = "|10 0|20 0|11 100|21 75";

TEST(Svg, ShowsWhatIsVisibleInItsColour) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"LINE|8 Blue" + place}, "Blue #0000ff /"},
        {{"LINE|8 Blue|62 1" + place}, "Blue #0000ff #ff0000/"},
        {{"LINE|8 Blue|62 0" + place}, "Blue #0000ff #000000/"}, // by block, outside of any
        {{"INSERT|62 6|2 B|10 0|20 0"}, "0 #000000 #ff00ff/"},
        {{"LINE|8 Red&Co" + place, "LINE" + place, "LINE|8 red&co" + place},
         "Red&amp;Co #ff0000 //0 #000000 /"},
        {{"LINE|8 OFF" + place}, ""},
        {{"LINE|8 FROZEN" + place}, ""},
        {{"LINE|60 1" + place}, ""},
        {{"LINE|67 1" + place}, ""},
        {{"LINE|10 nan|20 0|11 1e400|21 2"}, ""},
    };
    // The layer and its colour, and each path with the colour of its own.
    const auto brief = [](std::string svg) {
        svg = std::regex_replace(svg, std::regex{"<g data-layer=\"([^\"]*)\" color=\"([^\"]*)\">"}, "$1 $2 ");
        svg = std::regex_replace(svg, std::regex{"<path( color=\"([^\"]*)\")?/>"}, "$2/");
        return std::regex_replace(svg, std::regex{"</g>"}, "");
    };
    for (const auto& [entities, expected] : cases)
        EXPECT_EQ(brief(shownIn(*drawingWith(entities))), expected + "</svg>") << entities[0];
}

TEST(Svg, FitsThePicture) {
    const struct {
        std::vector<std::string> entities;
        std::string size, path;
    } cases[] = {
        {{}, "1600 1200", ""},
        {{"LINE|10 0|20 0|11 100|21 50"}, "1600 845.283", "M45.283 800l1509.434-754.717"},
        {{"LINE|10 7|20 9|11 57|21 9"}, "1600 90.566", "M45.283 45.283l1509.434 0"},
        {{"POINT|10 7|20 9"}, "1200 1200", "M600 600m-3 0h6m-3-3v6m0-3"},
        {{"LINE|10 1e9|20 -1e9|11 1000000050|21 -999999900"},
         "633.962 1200",
         "M33.962 1166.038l566.038-1132.076"},
        // Vertices that are repeated, also the first one.
        {{"LWPOLYLINE|90 5|70 1|10 0|20 0|10 50|20 0|10 50|20 0|10 50|20 50|10 0|20 50"},
         "1200 1200",
         "M33.962 1166.038l1132.076 0l0-1132.076l-1132.076 0l0 1132.076"},
        {{"LWPOLYLINE|90 3|70 0|10 0|20 0|10 0|20 0|10 50|20 50"},
         "1200 1200",
         "M33.962 1166.038l1132.076-1132.076"},
    };
    for (const auto& c : cases) {
        const std::string svg = qx::draw::svgOf(*drawingWith(c.entities));
        EXPECT_NE(svg.find("viewBox=\"0 0 " + c.size + "\""), std::string::npos) << svg;
        EXPECT_EQ(pictures::pathIn(svg), c.path);
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
    std::vector<std::string> many;
    for (int i = 0; i < 3000; ++i) many.push_back("LINE|10 " + std::to_string(i) + "|20 0|11 5|21 75");
    const auto drawing = drawingWith(many);
    TemporaryFolder folder;
    const auto written = qx::draw::writeSvg(*drawing, folder / "picture.svg");
    ASSERT_TRUE(written) << written.error();
    EXPECT_TRUE(contentOf(folder / "picture.svg") == qx::draw::svgOf(*drawing));

    const auto refused = qx::draw::writeSvg(*drawing, folder / "none/picture.svg");
    EXPECT_NE(refused.error().find("none/picture.svg"), std::string::npos) << refused.error();
}

} // namespace
