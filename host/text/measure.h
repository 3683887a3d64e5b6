// The host's own text metrics: one stroke-like font with fixed advance widths, the same on every machine. All
// lengths in em, one em being the text height; the origin is the left end of the baseline. Style, width
// factor and obliquing are the caller's: it scales and shears the result.
#pragma once

#include "qxexport.h"
#include "qxtextextent.h"

#include <string_view>

namespace qx::text {

/// Measures one line of text as it is shown, special codes already expanded. Controls and marks that combine
/// with their neighbour take no room; a code point without a glyph of its own is measured as a capital
/// letter.
QX_HOST_API TextExtent measure(std::u32string_view shown);

/// The advance of one character.
QX_HOST_API double advanceOf(char32_t character);

/// How far the top of a text leans to the right, in heights, for an obliquing angle: 85 degrees to either
/// side at most.
QX_HOST_API double slantOf(double obliqueDegrees);

} // namespace qx::text
