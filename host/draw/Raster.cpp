#include "draw/Raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace qx::draw {
namespace {

constexpr int dashOn = 6, dashLength = 10;

Colour mixed(Colour under, Colour over, int opacity) {
    Colour result = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
        const int below = static_cast<int>(under >> shift & 255),
                  above = static_cast<int>(over >> shift & 255);
        result |= static_cast<Colour>(below + (above - below) * opacity / 255) << shift;
    }
    return result;
}

/// Narrows the part [from, to] of a line to where p + t * d lies within [low, high]; false when that is
/// nowhere (Liang and Barsky, 1984).
bool narrow(double p, double d, double low, double high, double& from, double& to) {
    if (d == 0) return p >= low && p <= high;
    double enter = (low - p) / d, leave = (high - p) / d;
    if (enter > leave) std::swap(enter, leave);
    from = std::max(from, enter);
    to = std::min(to, leave);
    return from <= to;
}

} // namespace

PixelRect PixelRect::cutTo(const PixelRect& other) const {
    return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
            std::min(bottom, other.bottom)};
}

Raster::Raster(Colour* pixels, int width, int height)
    : pixels_{pixels}, width_{width}, height_{height}, clip_{0, 0, width, height} {}

void Raster::fill(const PixelRect& rectangle, Colour colour) {
    const PixelRect inside = rectangle.cutTo(clip_);
    if (inside.isEmpty()) return;
    for (int y = inside.top; y < inside.bottom; ++y)
        std::fill_n(pixels_ + index(inside.left, y), inside.width(), colour);
}

void Raster::tint(const PixelRect& rectangle, Colour colour, int opacity) {
    const PixelRect inside = rectangle.cutTo(clip_);
    for (int y = inside.top; y < inside.bottom; ++y)
        for (int x = inside.left; x < inside.right; ++x)
            pixels_[index(x, y)] = mixed(pixels_[index(x, y)], colour, opacity);
}

void Raster::point(const AcGePoint2d& at, Colour colour) {
    const bool isInside =
        at.x >= clip_.left && at.x < clip_.right && at.y >= clip_.top && at.y < clip_.bottom;
    if (isInside) pixels_[index(static_cast<int>(at.x), static_cast<int>(at.y))] = colour;
}

bool Raster::cut(AcGePoint2d& from, AcGePoint2d& to) const {
    // Just inside of the last pixel, so that rounding down never leaves the rectangle.
    constexpr double inner = 1.0 / 1024;
    const AcGeVector2d way = to - from;
    if (clip_.isEmpty() || !std::isfinite(way.x) || !std::isfinite(way.y)) return false;
    double begin = 0, end = 1;
    if (!narrow(from.x, way.x, clip_.left, clip_.right - inner, begin, end)) return false;
    if (!narrow(from.y, way.y, clip_.top, clip_.bottom - inner, begin, end)) return false;
    if (end < 1) to = from + way * end;
    if (begin > 0) from = from + way * begin;
    return true;
}

// Along the longer axis one pixel a step, with 16 bits behind the point on the other one. The ends were cut
// off exactly; what rounding then carries over an edge is held inside.
template <class Plot> void Raster::walk(AcGePoint2d from, AcGePoint2d to, Plot&& plot) {
    if (!cut(from, to)) return;
    const auto column = [&](double x) {
        return std::clamp(static_cast<int>(x), clip_.left, clip_.right - 1);
    };
    const auto row = [&](double y) { return std::clamp(static_cast<int>(y), clip_.top, clip_.bottom - 1); };
    const int x0 = column(from.x), y0 = row(from.y), x1 = column(to.x), y1 = row(to.y);
    const int across = std::abs(x1 - x0), down = std::abs(y1 - y0);
    const int steps = std::max(across, down);
    constexpr int one = 1 << 16;
    const int stepX = steps > 0 ? static_cast<int>((static_cast<std::int64_t>(x1 - x0) * one) / steps) : 0;
    const int stepY = steps > 0 ? static_cast<int>((static_cast<std::int64_t>(y1 - y0) * one) / steps) : 0;
    std::int64_t x = static_cast<std::int64_t>(x0) * one + one / 2,
                 y = static_cast<std::int64_t>(y0) * one + one / 2;
    for (int i = 0; i <= steps; ++i, x += stepX, y += stepY)
        plot(pixels_[index(static_cast<int>(x >> 16), static_cast<int>(y >> 16))]);
}

void Raster::line(const AcGePoint2d& from, const AcGePoint2d& to, Colour colour) {
    walk(from, to, [&](Colour& pixel) { pixel = colour; });
}

void Raster::dashes(const AcGePoint2d& from, const AcGePoint2d& to, Colour colour, int& phase) {
    walk(from, to, [&](Colour& pixel) {
        if (phase < dashOn) pixel = colour;
        phase = (phase + 1) % dashLength;
    });
}

std::vector<PixelRect> Raster::scroll(int right, int down) {
    if (right == 0 && down == 0) return {};
    if (std::abs(right) >= width_ || std::abs(down) >= height_) return {bounds()};
    const std::size_t length = static_cast<std::size_t>(width_ - std::abs(right)) * sizeof(Colour);
    const int from = std::max(-right, 0), to = std::max(right, 0), rows = height_ - std::abs(down);
    for (int i = 0; i < rows; ++i) {
        const int target = down > 0 ? height_ - 1 - i : i;
        std::memmove(pixels_ + index(to, target), pixels_ + index(from, target - down), length);
    }
    std::vector<PixelRect> bare;
    if (down != 0)
        bare.push_back(down > 0 ? PixelRect{0, 0, width_, down}
                                : PixelRect{0, height_ + down, width_, height_});
    if (right != 0)
        bare.push_back(right > 0 ? PixelRect{0, 0, right, height_}
                                 : PixelRect{width_ + right, 0, width_, height_});
    return bare;
}

} // namespace qx::draw
