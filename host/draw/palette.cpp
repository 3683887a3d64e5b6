#include "draw/palette.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qx::draw {
namespace {

using Rgb = std::array<double, 3>; // 0 to 255

constexpr Rgb fixedColours[] = {{255, 0, 0},   {255, 255, 0}, {0, 255, 0},     {0, 255, 255},  {0, 0, 255},
                                {255, 0, 255}, {0, 0, 0},     {128, 128, 128}, {192, 192, 192}};
constexpr double greys[] = {51, 80, 105, 130, 190, 0};

// Indices run 15 degrees of hue per ten; within ten, every second one is the same shade half way to grey.
Rgb hueColour(int index) {
    constexpr double shades[] = {1, 0.65, 0.5, 0.3, 0.15};
    const double hue = (index - 10) / 10 * 15.0; // NOLINT: whole tens only
    const double shade = 255 * shades[index % 10 / 2];
    const bool isPale = index % 2 != 0;
    Rgb result;
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const double away = std::abs(std::remainder(hue - 120.0 * static_cast<double>(channel), 360));
        const double pure = std::clamp(2 - away / 60, 0.0, 1.0);
        result[channel] = shade * (isPale ? (1 + pure) / 2 : pure);
    }
    return result;
}

Rgb colourOf(int index) {
    if (index >= 1 && index <= 9) return fixedColours[index - 1];
    if (index >= 10 && index <= 249) return hueColour(index);
    if (index >= 250 && index <= 255) return {greys[index - 250], greys[index - 250], greys[index - 250]};
    return {0, 0, 0};
}

// Weighted as the eye sees the three channels.
double lightnessOf(const Rgb& colour) { return 0.2126 * colour[0] + 0.7152 * colour[1] + 0.0722 * colour[2]; }

Rgb seenOnWhite(Rgb colour) {
    constexpr double lightest = 0.7 * 255;
    const double lightness = lightnessOf(colour);
    if (lightness > lightest)
        for (double& channel : colour) channel *= lightest / lightness;
    return colour;
}

/// What is black on white because it stands for the contrast, or because it is white.
Rgb contrasting(int index) {
    const bool isIndex = index >= 1 && index <= 254 && index != 7;
    return isIndex ? colourOf(index) : Rgb{255, 255, 255};
}

// Towards white, so that even black has something to be seen by.
Rgb seenOnDark(Rgb colour) {
    constexpr double darkest = 0.3 * 255;
    const double lightness = lightnessOf(colour);
    if (lightness < darkest)
        for (double& channel : colour) channel += (255 - channel) * (darkest - lightness) / (255 - lightness);
    return colour;
}

} // namespace

std::uint32_t groundColour(Ground ground) { return ground == Ground::light ? 0xFFFFFF : 0x1E2228; }

std::uint32_t colourOn(Ground ground, int index) {
    std::uint32_t packed = 0;
    const Rgb seen = ground == Ground::light ? seenOnWhite(colourOf(index)) : seenOnDark(contrasting(index));
    for (const double channel : seen) packed = packed << 8 | static_cast<std::uint8_t>(channel);
    return packed;
}

} // namespace qx::draw
