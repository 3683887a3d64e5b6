#include "draw/palette.h"

#include <gtest/gtest.h>

namespace {

TEST(Palette, GivesTheColoursOfTheIndices) {
    const struct {
        const char* name;
        int index;
        std::uint32_t colour;
    } cases[] = {
        {"yellow, darkened", 2, 0xC0C000},
        {"contrast", 7, 0x000000},
        {"first hue, pale", 11, 0xFF7F7F},
        {"first hue, second shade, pale", 13, 0xA55252},
        {"between green and cyan", 114, 0x007F3F},
        {"last hue, darkest, pale", 249, 0x261317},
        {"darkest grey", 250, 0x333333},
        {"white", 255, 0x000000},
        {"negative", -3, 0x000000},
    };
    for (const auto& c : cases) EXPECT_EQ(qx::draw::colourOnWhite(c.index), c.colour) << c.name;
}

TEST(Palette, StandsOutFromADarkGround) {
    using qx::draw::Ground;
    for (int index = 0; index <= 256; ++index) {
        const std::uint32_t colour = colourOn(Ground::dark, index);
        const double lightness =
            0.2126 * (colour >> 16) + 0.7152 * (colour >> 8 & 255) + 0.0722 * (colour & 255);
        EXPECT_GE(lightness, 74) << index;
    }
    EXPECT_EQ(colourOn(Ground::dark, 7), 0xFFFFFFU);
    EXPECT_EQ(colourOn(Ground::dark, 3), 0x00FF00U);
}

} // namespace
