// A line of text in pieces that a font of one size can show: full-width characters, and those between them.
#pragma once

#include "shape/Primitives.h"

#include <string>
#include <vector>

namespace qx::draw {

/// The height of text is that of its capitals, which take about 0.72 of a font's size. Full-width glyphs fill
/// the whole size, but are to stand as high as the capitals, so they are set larger and narrower than their
/// square.
constexpr double sizeOfCapitals = 1 / 0.72, sizeOfFullWidth = 1.15;

/// Characters that are never drawn.
constexpr bool isControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

/// Positions and widths in ems along the run.
struct TextStretch {
    std::u32string characters;
    double begin = 0, advance = 0;
    bool isFullWidth = false;
};

/// As shown: special codes expanded, control characters dropped, spaces at the ends of a piece left out.
QX_HOST_API std::vector<TextStretch> stretchesOf(const shape::TextRun& run);

} // namespace qx::draw
