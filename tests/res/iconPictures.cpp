// What the pictures show at every size: where the guide line lies, and that no straight edge is blurred.
#include "moduleIcons.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace qx::icons;

namespace {

constexpr int sizes[] = {16, 20, 24, 32};

Canvas drawn(const std::string& name, int size) {
    Canvas canvas{size};
    std::ranges::find(moduleIcons(), name, &ModuleIcon::name)->draw(canvas);
    return canvas;
}

/// '.' nothing, 'o' guide line, '#' bar, '?' anything in between.
std::vector<std::string> rows(const Canvas& canvas) {
    std::vector<std::string> text(static_cast<std::size_t>(canvas.size()));
    for (int y = 0; y < canvas.size(); ++y)
        for (int x = 0; x < canvas.size(); ++x) {
            const Pixel pixel = canvas.at(x, y);
            const char solid = pixel.red > 200 && pixel.blue < 50 ? 'o' : '#';
            text[static_cast<std::size_t>(y)] += pixel.alpha == 0 ? '.' : pixel.alpha == 255 ? solid : '?';
        }
    return text;
}

std::vector<std::string> transposed(const std::vector<std::string>& picture) {
    std::vector<std::string> text(picture.size(), std::string(picture.size(), ' '));
    for (std::size_t y = 0; y < text.size(); ++y)
        for (std::size_t x = 0; x < text.size(); ++x) text[x][y] = picture[y][x];
    return text;
}

bool isMirrored(const std::vector<std::string>& picture) {
    return std::ranges::all_of(
        picture, [](const std::string& row) { return std::equal(begin(row), end(row), rbegin(row)); });
}

/// What one meets along a line of the picture that meets the most: "o#" is a guide line, then bars. Empty
/// when no line meets both.
std::string order(const std::vector<std::string>& lines) {
    std::string all;
    for (const std::string& line : lines) {
        std::string met = line;
        std::erase(met, '.');
        met.erase(std::ranges::unique(met).begin(), end(met));
        if (met.size() > std::max<std::size_t>(all.size(), 1)) all = met;
    }
    return all;
}

struct PictureCase {
    const char* name;
    const char* across;     ///< met from left to right
    const char* down;       ///< met from top to bottom
    bool isSameLeftToRight; ///< as in a mirror
    bool isSameTopDown;
};
const PictureCase cases[] = {
    // name                    across  down   symmetric
    {"alignLeft", "o#", "", false, false},
    {"alignRight", "#o", "", false, false},
    {"alignTop", "", "o#", false, false},
    {"alignBottom", "", "#o", false, false},
    {"centreHorizontally", "#o#", "", true, false},
    {"centreVertically", "", "#o#", false, true},
    {"alignCentre", "#o#", "#o#", true, true},
    {"distributeHorizontally", "#o#o#", "", true, true},
    {"distributeVertically", "", "#o#o#", true, true},
};

TEST(IconPictures, TellTheTruthCrisply) {
    for (const auto& [name, across, down, isSameLeftToRight, isSameTopDown] : cases)
        for (const int size : sizes) {
            SCOPED_TRACE(name + std::string{" "} + std::to_string(size));
            const std::vector<std::string> picture = rows(drawn(name, size)), turned = transposed(picture);
            EXPECT_EQ(order(picture), across);
            EXPECT_EQ(order(turned), down);
            EXPECT_EQ(isMirrored(picture), isSameLeftToRight);
            EXPECT_EQ(isMirrored(turned), isSameTopDown);
        }
}

} // namespace
