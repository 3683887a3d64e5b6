// The colours behind the colour indices 1 to 255, for drawing on a white ground: 1 to 9 are fixed, 10 to 249
// are 24 hues in five shades, each full and pale, 250 to 255 are greys.
#pragma once

#include "qxexport.h"

#include <cstdint>

namespace qx::draw {

/// 0xRRGGBB. Index 7, which stands for whatever contrasts with the ground, is black; so are 255, which is
/// white on dark ground, and every number that is no index. Colours too light to be seen well on white
/// (green, cyan, yellow and their kin, light greys) are darkened, keeping their hue.
QX_HOST_API std::uint32_t colourOnWhite(int index);

} // namespace qx::draw
