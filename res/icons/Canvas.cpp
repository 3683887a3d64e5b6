#include "Canvas.h"

namespace qx::icons {

static std::uint8_t rounded(double value) { return static_cast<std::uint8_t>(value + 0.5); }

Pixel Canvas::at(int x, int y) const {
    const auto& [red, green, blue, alpha] = layers_[index(x, y)];
    if (alpha == 0) return {};
    return {rounded(blue / alpha), rounded(green / alpha), rounded(red / alpha), rounded(alpha * 255)};
}

void Canvas::cover(int x, int y, double share, Colour colour) {
    Layers& below = layers_[index(x, y)];
    const double rest = 1 - share;
    below = {below.red * rest + colour.red * share, below.green * rest + colour.green * share,
             below.blue * rest + colour.blue * share, below.alpha * rest + share};
}

} // namespace qx::icons
