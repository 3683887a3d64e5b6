#include "draw/SvgPen.h"
#include "draw/svgText.h"
#include "dxf/Encoding.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace qx::draw;
using qx::shape::TextRun;

namespace {

// One picture unit per drawing unit; the world's origin is 800 units to the right and 552 down.
constexpr double width = 1600 / 1.06;
const PictureFrame frame{qx::shape::Box{{-width / 2, -400, 0}, {width / 2, 552 - 0.03 * width, 0}}};

TextRun runOf(std::string_view bytes, const AcGeVector3d& along, const AcGeVector3d& up,
              bool isAsInFile = true) {
    static const auto& utf8 = qx::dxf::Encoding::of("UTF-8");
    return {{0, 0, 0}, along, up, {1, 0, 1, 0, 1, false}, bytes, isAsInFile ? &utf8 : nullptr};
}

std::string drawn(const TextRun& run) {
    SvgPen pen{frame};
    pen.text(run);
    std::string svg;
    pen.putElements(svg, "");
    return svg;
}

TEST(SvgText, StandsAsTheHostMeasures) {
    const AcGeVector3d right{10, 0, 0}, up{0, 10, 0};
    const struct {
        const char* name;
        std::string_view bytes;
        AcGeVector3d along, up;
        const char* expected; ///< what is told of each element: place, size, length and characters
    } cases[] = {
        {"narrow", "123", right * 0.5, up, "matrix(.5 0 0 1 800 552) 13.889 24 123"},
        {"mirrored", "1", -right, up, "matrix(-1 0 0 1 800 552) 13.889 8 1"},
        {"upside down", "1", -right, -up, "matrix(-1 0 0-1 800 552) 13.889 8 1"},
        {"mixed", "1中2", right, up,
         "x=800 y=552 13.889 8 1|matrix(.869565 0 0 1 808 552) 11.5 11.5 中|x=818 y=552 13.889 8 2"},
        {"spaces place what follows", "中 文  ", right, up,
         "matrix(.869565 0 0 1 800 552) 11.5 11.5 中|matrix(.869565 0 0 1 816 552) 11.5 11.5 文"},
        {"nothing but spaces", "   ", right, up, ""},
        {"codes and controls", "%%c\t1\x01", right, up, "x=800 y=552 13.889 16.5 ∅1"},
        {"escapes", "a<b&\"c\">", right, up, "x=800 y=552 13.889 59.5 a&lt;b&amp;&quot;c&quot;&gt;"},
        {"half a surrogate", "\\U+D8001", right, up, "x=800 y=552 13.889 16 \uFFFD1"},
        {"no height", "1", right, up * 0, ""},
    };
    for (const auto& c : cases) {
        std::string told = drawn(runOf(c.bytes, c.along, c.up));
        for (const std::string_view noise : {"<text ", "transform=", "font-size=", "textLength=",
                                             " lengthAdjust=\"spacingAndGlyphs\"", "</text>", "\""})
            for (auto at = told.find(noise); at != std::string::npos; at = told.find(noise))
                told.erase(at, noise.size());
        for (char& each : told)
            if (each == '>') each = ' ';
        if (!told.empty()) told.pop_back();
        std::replace(told.begin(), told.end(), '\n', '|');
        EXPECT_EQ(told, c.expected) << c.name;
    }
}

TEST(SvgText, ReadsNoCodesInWhatIsShown) {
    const TextRun run = runOf("%%c\\U+4E2D中", {10, 0, 0}, {0, 10, 0}, false);
    EXPECT_NE(drawn(run).find(">%%c\\U+4E2D<"), std::string::npos) << drawn(run);
    EXPECT_NE(drawn(run).find(">中<"), std::string::npos) << drawn(run);
}

} // namespace
