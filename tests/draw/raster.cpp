#include "draw/Raster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {
using qx::draw::Colour;
using qx::draw::PixelRect;
using qx::draw::Raster;

struct Canvas {
    Canvas(int width, int height)
        : pixels(static_cast<std::size_t>(width * height)), raster{pixels.data(), width, height} {}
    /// A row of text for each row of pixels: '.' for 0, else the colour's last digit.
    std::string shown() const {
        std::string text;
        for (int y = 0; y < raster.bounds().height(); ++y) {
            for (int x = 0; x < raster.bounds().width(); ++x)
                text += raster.at(x, y) == 0 ? '.' : static_cast<char>('0' + raster.at(x, y) % 10);
            text += '/';
        }
        return text;
    }
    std::vector<Colour> pixels;
    Raster raster;
};

constexpr double beyond = std::numeric_limits<double>::infinity();

TEST(Raster, DrawsLinesAsFarAsTheyAreInside) {
    const struct {
        AcGePoint2d from, to;
        const char* shown;
    } cases[] = {
        {{0, 0}, {3, 2}, "1.../.11./...1/"},      {{3, 2}, {0, 0}, "1.../.11./...1/"},
        {{-100, 1}, {100, 1}, "..../1111/..../"}, {{1.5, -1e9}, {1.5, 1e9}, ".1../.1../.1../"},
        {{-4, -4}, {8, 8}, "1.../.1../..1./"},    {{2, 2}, {2, 2}, "..../..../..1./"},
        {{4, 0}, {4, 2}, "..../..../..../"},      {{-1, 5}, {5, 4}, "..../..../..../"},
        {{0, 0}, {beyond, 1}, "..../..../..../"}, {{std::nan(""), 0}, {2, 1}, "..../..../..../"},
    };
    for (const auto& c : cases) {
        Canvas canvas{4, 3};
        canvas.raster.line(c.from, c.to, 1);
        EXPECT_EQ(canvas.shown(), c.shown) << c.from.x << ',' << c.from.y << ' ' << c.to.x << ',' << c.to.y;
    }
}

TEST(Raster, LeavesWhatIsOutsideOfTheClipRectangle) {
    Canvas canvas{6, 4};
    canvas.raster.setClip({1, 1, 4, 3});
    canvas.raster.fill({-9, 0, 99, 2}, 2);
    canvas.raster.line({0, 3}, {5, 0}, 1);
    canvas.raster.point({5, 3}, 1);
    canvas.raster.point({1, 2}, 3);
    EXPECT_EQ(canvas.shown(), "....../.221../.31.../....../");
}

TEST(Raster, CarriesDashesOn) {
    Canvas canvas{8, 3};
    int phase = 0;
    canvas.raster.dashes({0, 0}, {7, 0}, 1, phase);
    canvas.raster.dashes({0, 1}, {7, 1}, 1, phase);
    EXPECT_EQ(canvas.shown(), "111111../..111111/......../");
}

TEST(Raster, ScrollsAndSaysWhatIsBare) {
    const struct {
        int right, down;
        const char* shown;
        std::vector<PixelRect> bare;
    } cases[] = {
        {0, 0, "123/456/789/", {}},
        {1, 0, "112/445/778/", {{0, 0, 1, 3}}},
        {-2, 0, "323/656/989/", {{1, 0, 3, 3}}},
        {0, 2, "123/456/123/", {{0, 0, 3, 2}}},
        {0, -1, "456/789/789/", {{0, 2, 3, 3}}},
        {1, 1, "123/412/745/", {{0, 0, 3, 1}, {0, 0, 1, 3}}},
        {3, 0, "123/456/789/", {{0, 0, 3, 3}}},
        {0, -100, "123/456/789/", {{0, 0, 3, 3}}},
    };
    for (const auto& c : cases) {
        Canvas canvas{3, 3};
        for (Colour i = 0; i < 9; ++i) canvas.pixels[i] = i + 1;
        EXPECT_EQ(canvas.raster.scroll(c.right, c.down), c.bare) << c.right << ' ' << c.down;
        EXPECT_EQ(canvas.shown(), c.shown) << c.right << ' ' << c.down;
    }
}

TEST(Raster, MixesATintIn) {
    Canvas canvas{2, 1};
    canvas.pixels = {0x204060, 0x204060};
    canvas.raster.tint({0, 0, 1, 9}, 0xFF4000, 51);
    EXPECT_EQ(canvas.pixels, (std::vector<Colour>{0x4C404D, 0x204060}));
}

} // namespace
