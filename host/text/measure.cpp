#include "text/measure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace qx::text {
namespace {

/// Ink runs from `bearing` to `advance - bearing`; a glyph with top <= bottom draws nothing.
struct Glyph {
    double advance, bearing, bottom, top;

    constexpr bool isDrawn() const { return top > bottom; }
};

constexpr Glyph nothing{0, 0, 0, 0};
constexpr Glyph fullWidth{1.0, 0.05, -0.1, 1.0};
constexpr Glyph fullWidthSpace{1.0, 0, 0, 0};
constexpr Glyph halfWidth{0.5, 0.05, -0.1, 1.0};
constexpr Glyph otherGlyph{0.8, 0.1, 0, 1.0};

struct GlyphRow {
    std::string_view characters;
    Glyph glyph;
};

// x-height 0.67, descenders -0.25; strokes of thin letters keep the same distance to their neighbours.
constexpr GlyphRow asciiRows[] = {
    {" ", {0.6, 0, 0, 0}},
    {"0123456789", {0.8, 0.1, 0, 1}},
    {"ABCDGHKNOPRSTUVXYZ", {0.85, 0.1, 0, 1}},
    {"EFJL", {0.75, 0.1, 0, 1}},
    {"MW", {0.9, 0.05, 0, 1}},
    {"Q", {0.85, 0.1, -0.1, 1}},
    {"I", {0.55, 0.15, 0, 1}},
    {"acenosuvxz", {0.7, 0.1, 0, 0.67}},
    {"bdhk", {0.7, 0.1, 0, 1}},
    {"gpqy", {0.7, 0.1, -0.25, 0.67}},
    {"mw", {0.9, 0.05, 0, 0.67}},
    {"r", {0.6, 0.1, 0, 0.67}},
    {"ft", {0.6, 0.1, 0, 1}},
    {"il", {0.55, 0.2, 0, 1}},
    {"j", {0.55, 0.15, -0.25, 1}},
    {".", {0.55, 0.225, 0, 0.1}},
    {",", {0.55, 0.2, -0.2, 0.1}},
    {":", {0.55, 0.225, 0, 0.67}},
    {";", {0.55, 0.2, -0.2, 0.67}},
    {"!", {0.55, 0.225, 0, 1}},
    {"'`", {0.55, 0.2, 0.7, 1}},
    {"\"^", {0.7, 0.15, 0.7, 1}},
    {"*", {0.7, 0.1, 0.3, 0.9}},
    {"+<=>~", {0.8, 0.1, 0.15, 0.85}},
    {"-", {0.8, 0.15, 0.45, 0.55}},
    {"_", {0.8, 0.05, -0.25, -0.15}},
    {"/\\()[]{}|", {0.6, 0.1, -0.15, 1.1}},
    {"$", {0.85, 0.1, -0.1, 1.1}},
    {"#%&?@", {0.85, 0.1, 0, 1}},
};

constexpr std::array<Glyph, 128> asciiGlyphs = [] {
    std::array<Glyph, 128> glyphs{}; // controls draw nothing and take no room
    for (const GlyphRow& row : asciiRows)
        for (const char c : row.characters) glyphs[static_cast<unsigned char>(c)] = row.glyph;
    return glyphs;
}();

struct GlyphRange {
    char32_t first, last;
    Glyph glyph;
};

// Ascending, without overlaps; what lies between is drawn as a letter of medium width.
constexpr GlyphRange ranges[] = {
    {0x0080, 0x009F, nothing},                 // controls
    {0x00A0, 0x00A0, {0.6, 0, 0, 0}},          // no-break space
    {0x00AD, 0x00AD, nothing},                 // soft hyphen
    {0x00B0, 0x00B0, {0.55, 0.1, 0.65, 1.0}},  // degree
    {0x00B1, 0x00B1, {0.8, 0.1, 0.0, 0.85}},   // plus-minus
    {0x0300, 0x036F, nothing},                 // combining marks
    {0x1100, 0x115F, fullWidth},               // Hangul letters
    {0x1160, 0x11FF, nothing},                 // Hangul vowels and finals, drawn in the square before them
    {0x2000, 0x200A, {0.5, 0, 0, 0}},          // spaces
    {0x200B, 0x200F, nothing},                 // zero width, directions
    {0x2028, 0x202E, nothing},                 // line ends, directions
    {0x202F, 0x202F, {0.5, 0, 0, 0}},          // narrow space
    {0x2060, 0x206F, nothing},                 // joiners
    {0x2205, 0x2205, {0.85, 0.05, -0.1, 1.1}}, // diameter
    {0x2E80, 0x2FFF, fullWidth},               // radicals
    {0x3000, 0x3000, fullWidthSpace},          // ideographic space
    {0x3001, 0x3029, fullWidth},               // CJK punctuation
    {0x302A, 0x302F, nothing},                 // tone marks
    {0x3030, 0x3098, fullWidth},               // kana
    {0x3099, 0x309A, nothing},                 // kana sound marks, combining
    {0x309B, 0xA4CF, fullWidth},               // kana, enclosed forms, ideographs, Yi
    {0xA960, 0xA97F, fullWidth},               // Hangul letters
    {0xAC00, 0xD7A3, fullWidth},               // Hangul syllables
    {0xF900, 0xFAFF, fullWidth},               // compatibility ideographs
    {0xFE00, 0xFE0F, nothing},                 // variation selectors
    {0xFE10, 0xFE19, fullWidth},               // vertical forms
    {0xFE30, 0xFE6F, fullWidth},               // compatibility forms
    {0xFEFF, 0xFEFF, nothing},                 // byte order mark
    {0xFF01, 0xFF60, fullWidth},               // full-width ASCII
    {0xFF61, 0xFFDC, halfWidth},               // half-width kana and Hangul
    {0xFFE0, 0xFFE6, fullWidth},               // full-width signs
    {0x1F300, 0x1FAFF, fullWidth},             // pictographs
    {0x20000, 0x3FFFD, fullWidth},             // rare ideographs
    {0xE0000, 0xE0FFF, nothing},               // tags, variation selectors
};

const Glyph& glyphOf(char32_t c) {
    if (c < asciiGlyphs.size()) return asciiGlyphs[c];
    const auto range = std::ranges::lower_bound(ranges, c, {}, &GlyphRange::last);
    return range != std::end(ranges) && range->first <= c ? range->glyph : otherGlyph;
}

void addInk(TextExtent& extent, const Glyph& glyph) {
    const double left = extent.advance + glyph.bearing;
    const double right = extent.advance + glyph.advance - glyph.bearing;
    if (extent.blank) {
        extent = {extent.advance, left, right, glyph.bottom, glyph.top, false};
        return;
    }
    extent.inkRight = std::max(extent.inkRight, right);
    extent.inkBottom = std::min(extent.inkBottom, glyph.bottom);
    extent.inkTop = std::max(extent.inkTop, glyph.top);
}

} // namespace

double advanceOf(char32_t character) { return glyphOf(character).advance; }

TextExtent measure(std::u32string_view shown) {
    TextExtent extent;
    for (const char32_t c : shown) {
        const Glyph& glyph = glyphOf(c);
        if (glyph.isDrawn()) addInk(extent, glyph);
        extent.advance += glyph.advance;
    }
    return extent;
}

double slantOf(double obliqueDegrees) {
    constexpr double most = 85, half = 180;
    return std::tan(std::clamp(std::remainder(obliqueDegrees, half), -most, most) * std::numbers::pi / half);
}

} // namespace qx::text
