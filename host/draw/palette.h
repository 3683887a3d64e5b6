// The colours behind the colour indices 1 to 255: 1 to 9 are fixed, 10 to 249 are 24 hues in five shades,
// each full and pale, 250 to 255 are greys. Colours are 0xRRGGBB.
#pragma once

#include "qxexport.h"

#include <cstdint>

namespace qx::draw {

enum class Ground { dark, light };

/// White, or the near black of a drawing window.
QX_HOST_API std::uint32_t groundColour(Ground ground);

/// Index 7, which stands for whatever contrasts with the ground, is black on the light one and white on the
/// dark one; so is every number that is no index, and on white also 255, which is white. Colours too light to
/// be seen well on white (green, cyan, yellow and their kin, light greys) are darkened there, those too dark
/// to be seen on the dark ground are lightened, keeping their hue.
QX_HOST_API std::uint32_t colourOn(Ground ground, int index);

inline std::uint32_t colourOnWhite(int index) { return colourOn(Ground::light, index); }

} // namespace qx::draw
